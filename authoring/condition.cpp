#include "authoring/condition.h"

#include <cctype>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "velora/common/Vocabulary.h"

namespace velora::authoring {
namespace {

using Shared = common::SharedTypeIds;
constexpr int kAlways = Shared::kDefaultCondition;
constexpr int kAnd = Shared::kConditions_Operator_And;
constexpr int kOr = Shared::kConditions_Operator_Or;
constexpr int kNot = Shared::kConditions_Operator_Not;

int OperandsOf(int type) { return type == kAnd || type == kOr ? 2 : type == kNot ? 1 : 0; }

// How strongly an element binds: a weaker one is put in brackets.
int BindingOf(int type) { return type == kOr ? 0 : type == kAnd ? 1 : type == kNot ? 2 : 3; }

std::string TextOf(const Value& value, const TypeNames& names) {
  switch (value.type) {
    case kAlways:
      return "always";
    case kAnd:
      return "and";
    case kOr:
      return "or";
    case kNot:
      return "not";
    default:
      return names.NameOf(value.type) + " = " + std::to_string(value.value);
  }
}

// Reads an expression: or binds weakest, then and, then not.
class Parser {
 public:
  Parser(const std::string& text, const TypeNames& names) : text_(text), names_(names) {
    Advance();
  }

  Condition Whole() {
    Condition condition = Either();
    if (!token_.empty()) Fail("an operator");
    return condition;
  }

 private:
  Condition Either() {
    Condition condition = Both();
    while (Take("or")) condition = condition || Both();
    return condition;
  }

  Condition Both() {
    Condition condition = Single();
    while (Take("and")) condition = condition && Single();
    return condition;
  }

  Condition Single() {
    if (Take("not")) return !Single();
    if (Take("always")) return Condition();
    if (Take("(")) {
      Condition condition = Either();
      if (!Take(")")) Fail("a closing bracket");
      return condition;
    }
    const std::string name = token_;
    if (name.empty() || !std::isalpha(static_cast<unsigned char>(name[0]))) Fail("a name");
    Advance();
    if (!Take("=")) Fail("'='");
    const std::string number = token_;
    if (number.empty() || number.size() > 8 ||
        number.find_first_not_of("0123456789") != std::string::npos) {
      Fail("a number");
    }
    Advance();
    return Condition::Is(names_.TypeOf(Role::kCondition, name), std::stoi(number));
  }

  bool Take(const char* token) {
    if (token_ != token) return false;
    Advance();
    return true;
  }

  // The next run of letters, digits and underscores, or the next other character.
  void Advance() {
    const auto is_word = [](char c) {
      return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
    };
    while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_]))) ++at_;
    const std::size_t start = at_;
    while (at_ < text_.size() && is_word(text_[at_])) ++at_;
    if (at_ == start && at_ < text_.size()) ++at_;
    token_ = text_.substr(start, at_ - start);
  }

  [[noreturn]] void Fail(const std::string& expected) const {
    throw std::invalid_argument("condition \"" + text_ + "\": expected " + expected + " before " +
                                (token_.empty() ? "the end" : "'" + token_ + "'"));
  }

  const std::string& text_;
  const TypeNames& names_;
  std::size_t at_ = 0;
  std::string token_;
};

Condition Joined(const Condition& a, const Condition& b, int type) {
  std::vector<Value> postfix = a.postfix();
  postfix.insert(postfix.end(), b.postfix().begin(), b.postfix().end());
  postfix.push_back({type});
  return Condition(std::move(postfix));
}

}  // namespace

Condition::Condition() : postfix_{{kAlways}} {}

Condition operator&&(const Condition& a, const Condition& b) { return Joined(a, b, kAnd); }

Condition operator||(const Condition& a, const Condition& b) { return Joined(a, b, kOr); }

Condition operator!(const Condition& a) { return Joined(a, Condition(std::vector<Value>()), kNot); }

bool Condition::IsSound() const {
  int height = 0;
  for (const Value& value : postfix_) {
    height -= OperandsOf(value.type);
    if (height++ < 0) return false;
  }
  return height == 1;
}

bool Condition::SharesAResult() const {
  if (!IsSound()) return false;
  std::vector<std::size_t> starts;  // of the expressions that wait for an operator
  for (std::size_t i = 0; i < postfix_.size(); ++i) {
    const int operands = OperandsOf(postfix_[i].type);
    if (operands == 0) starts.push_back(i);
    if (operands < 2) continue;
    const std::size_t right = starts.back();
    starts.pop_back();
    const int type = postfix_[i - 1].type;
    if (OperandsOf(type) == 0) continue;
    for (std::size_t left = starts.back(); left < right; ++left) {
      if (postfix_[left].type == type) return true;
    }
  }
  return false;
}

std::string Condition::Text(const TypeNames& names) const {
  if (!IsSound()) {
    std::string text = "malformed:";
    for (const Value& value : postfix_) text += ' ' + TextOf(value, names);
    return text;
  }
  struct Part {
    std::string text;
    int binding;
    std::string In(int binding_around) const {
      return binding < binding_around ? '(' + text + ')' : text;
    }
  };
  std::vector<Part> parts;
  for (const Value& value : postfix_) {
    const int binding = BindingOf(value.type);
    std::string text = TextOf(value, names);
    if (OperandsOf(value.type) >= 1) {
      const Part right = std::move(parts.back());
      parts.pop_back();
      // A chain to the right keeps its brackets: read again, it must give the same list.
      text += ' ' + right.In(OperandsOf(value.type) == 2 ? binding + 1 : binding);
      if (OperandsOf(value.type) == 2) {
        text = parts.back().In(binding) + ' ' + text;
        parts.pop_back();
      }
    }
    parts.push_back({std::move(text), binding});
  }
  return parts.back().text;
}

Condition Condition::Parse(const std::string& text, const TypeNames& names) {
  return Parser(text, names).Whole();
}

}  // namespace velora::authoring
