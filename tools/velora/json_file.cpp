#include "tools/velora/json_file.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace velora::tools {
namespace {

// Characters of a text that count the line of what was read last. A number ends only at the
// character behind it, so white space does not count until something follows it.
class CountedText {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountedText(const unsigned char* at, int* line, int* pending)
      : at_(reinterpret_cast<const char*>(at)), line_(line), pending_(pending) {}

  const char& operator*() const { return *at_; }
  CountedText& operator++() {
    if (*at_ == '\n') {
      ++*pending_;
    } else if (*at_ != ' ' && *at_ != '\t' && *at_ != '\r') {
      *line_ += std::exchange(*pending_, 0);
    }
    ++at_;
    return *this;
  }
  CountedText operator++(int) {
    CountedText before = *this;
    ++*this;
    return before;
  }
  bool operator==(const CountedText& other) const { return at_ == other.at_; }
  bool operator!=(const CountedText& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  int* line_;
  int* pending_;
};

std::string Escaped(const std::string& key) {
  std::string escaped;
  for (char c : key) escaped += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
  return escaped;
}

// Builds the document, and keeps the line of each value.
class Builder : public nlohmann::json_sax<Json> {
 public:
  Builder(const Path& path, const int* line, std::map<std::string, int>* lines)
      : path_(path), line_(line), lines_(lines) {}

  Json Result() { return std::move(root_); }

  bool null() override { return Put(Json()); }
  bool boolean(bool value) override { return Put(value); }
  bool number_integer(number_integer_t value) override { return Put(value); }
  bool number_unsigned(number_unsigned_t value) override { return Put(value); }
  bool number_float(number_float_t value, const string_t&) override { return Put(value); }
  bool string(string_t& value) override { return Put(value); }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return Open(Json::object()); }
  bool end_object() override { return Close(); }
  bool start_array(std::size_t) override { return Open(Json::array()); }
  bool end_array() override { return Close(); }

  bool key(string_t& key) override {
    key_ = key;
    const auto [place, is_new] = lines_->emplace(Here(), *line_);
    if (!is_new) {
      throw Refusal(path_.string(), *line_, key,
                    "this key is there twice, first in line " + std::to_string(place->second));
    }
    return true;
  }

  bool parse_error(std::size_t, const std::string&,
                   const nlohmann::detail::exception& error) override {
    // "[…] parse error at line 3, column 5: syntax error while …"
    std::string text = error.what();
    const std::size_t place = text.find("column ");
    const std::size_t reason = text.find(": ", place);
    if (reason != std::string::npos) text = text.substr(reason + 2);
    throw Refusal(path_.string(), *line_, "", "no JSON: " + text);
  }

 private:
  struct Level {
    Json json;
    std::string pointer;
  };

  std::string Here() const {
    if (levels_.empty()) return "";
    const Level& level = levels_.back();
    return level.pointer + '/' +
           (level.json.is_array() ? std::to_string(level.json.size()) : Escaped(key_));
  }

  bool Put(Json value) {
    lines_->emplace(Here(), *line_);
    if (levels_.empty()) {
      root_ = std::move(value);
    } else if (levels_.back().json.is_array()) {
      levels_.back().json.push_back(std::move(value));
    } else {
      levels_.back().json[key_] = std::move(value);
    }
    return true;
  }

  bool Open(Json empty) {
    lines_->emplace(Here(), *line_);
    keys_.push_back(key_);
    levels_.push_back({std::move(empty), Here()});
    return true;
  }

  bool Close() {
    Json json = std::move(levels_.back().json);
    levels_.pop_back();
    key_ = keys_.back();
    keys_.pop_back();
    return Put(std::move(json));
  }

  const Path& path_;
  const int* line_;
  std::map<std::string, int>* lines_;
  Json root_;
  std::string key_;
  std::vector<std::string> keys_;
  std::vector<Level> levels_;
};

// Insertions, deletions, replacements and exchanged neighbours that lead from one word to another.
int EditDistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<int>> rows(a.size() + 1, std::vector<int>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        rows[i][j] = static_cast<int>(i + j);
        continue;
      }
      rows[i][j] = std::min(
          {rows[i - 1][j] + 1, rows[i][j - 1] + 1, rows[i - 1][j - 1] + (a[i - 1] != b[j - 1])});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
      }
    }
  }
  return rows[a.size()][b.size()];
}

std::string Listed(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == names.size() ? " or " : ", ") + ('"' + names[i] + '"');
  }
  return text;
}

}  // namespace

JsonFile::JsonFile(const Path& path) : path_(path) {
  const Bytes text = ReadBytes(path);
  int line = 1, pending = 0;
  Builder builder(path_, &line, &lines_);
  Json::sax_parse(CountedText(text.data(), &line, &pending),
                  CountedText(text.data() + text.size(), &line, &pending), &builder,
                  nlohmann::detail::input_format_t::json, true, true);
  json_ = builder.Result();
  if (!json_.is_object()) throw Refusal(path.string(), 1, "", "no JSON object");
}

int JsonFile::LineOf(const std::string& pointer) const {
  const auto found = lines_.find(pointer);
  return found == lines_.end() ? 0 : found->second;
}

JsonObject::JsonObject(const JsonFile& file) : JsonObject(file, file.json(), "", "") {}

JsonObject::JsonObject(const JsonFile& file, const Json& json, std::string pointer,
                       std::string name)
    : file_(&file), json_(&json), pointer_(std::move(pointer)), name_(std::move(name)) {}

bool JsonObject::Has(const std::string& key) const { return json_->contains(key); }

bool JsonObject::IsText(const std::string& key) const {
  return Has(key) && (*json_)[key].is_string();
}

int JsonObject::LineOf(const std::string& key) const {
  const int line = file_->LineOf(pointer_ + '/' + Escaped(key));
  return line > 0 ? line : file_->LineOf(pointer_);
}

void JsonObject::Refuse(const std::string& key, const std::string& text) const {
  throw Refusal(file_->path().string(), LineOf(key), key, text);
}

void JsonObject::RefuseValue(const std::string& key, const Json& value,
                             const std::string& allowed) const {
  std::string shown = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (shown.size() > 40) shown = shown.substr(0, 37) + "...";
  Refuse(key, shown + "; expected " + allowed);
}

const Json* JsonObject::Find(const std::string& key, const std::string& allowed, bool needed) {
  known_.push_back({key, allowed});
  const auto found = json_->find(key);
  if (found != json_->end()) return &*found;
  if (needed) missing_.push_back({key, allowed});
  return nullptr;
}

int JsonObject::Number(const std::string& key, const Numbers& allowed, std::optional<int> absent) {
  const Json* value = Find(key, allowed.Text(), !absent);
  if (value == nullptr) return absent.value_or(0);
  if (!value->is_number_integer() || !allowed.Contain(value->get<long long>())) {
    RefuseValue(key, *value, allowed.Text());
  }
  return value->get<int>();
}

double JsonObject::Real(const std::string& key, double low, double high, double absent) {
  char allowed[64];
  std::snprintf(allowed, sizeof allowed, "%g to %g", low, high);
  const Json* value = Find(key, allowed, false);
  if (value == nullptr) return absent;
  if (!value->is_number() || value->get<double>() < low || value->get<double>() > high) {
    RefuseValue(key, *value, allowed);
  }
  return value->get<double>();
}

bool JsonObject::Flag(const std::string& key, bool absent) {
  const Json* value = Find(key, "true or false", false);
  if (value == nullptr) return absent;
  if (!value->is_boolean()) RefuseValue(key, *value, "true or false");
  return value->get<bool>();
}

std::string JsonObject::Text(const std::string& key, const std::string& absent) {
  const Json* value = Find(key, "a text", false);
  if (value == nullptr) return absent;
  if (!value->is_string()) RefuseValue(key, *value, "a text");
  return value->get<std::string>();
}

std::string JsonObject::Choice(const std::string& key, const std::vector<std::string>& names,
                               const std::string& absent) {
  const Json* value = Find(key, Listed(names), false);
  if (value == nullptr) return absent;
  if (!value->is_string() ||
      std::count(names.begin(), names.end(), value->get<std::string>()) == 0) {
    RefuseValue(key, *value, Listed(names));
  }
  return value->get<std::string>();
}

Bytes JsonObject::ByteList(const std::string& key, std::size_t most, const Bytes& absent) {
  const std::string allowed = "at most " + std::to_string(most) + " numbers, each 0 to 255";
  const Json* value = Find(key, allowed, false);
  if (value == nullptr) return absent;
  if (!value->is_array() || value->size() > most) RefuseValue(key, *value, allowed);
  Bytes bytes;
  for (const Json& item : *value) {
    if (!item.is_number_integer() || !Numbers::Between(0, 255).Contain(item.get<long long>())) {
      RefuseValue(key, item, allowed);
    }
    bytes.push_back(item.get<unsigned char>());
  }
  return bytes;
}

std::vector<std::string> JsonObject::Texts(const std::string& key, const Numbers& count,
                                           bool needed) {
  const std::string allowed = "a list of " + count.Text() + " texts";
  const Json* value = Find(key, allowed, needed);
  if (value == nullptr) return {};
  const bool fits =
      value->is_array() && count.Contain(static_cast<long long>(value->size())) &&
      std::all_of(value->begin(), value->end(), [](const Json& item) { return item.is_string(); });
  if (!fits) RefuseValue(key, *value, allowed);
  return value->get<std::vector<std::string>>();
}

std::optional<JsonObject> JsonObject::Object(const std::string& key) {
  const Json* value = Find(key, "an object", false);
  if (value == nullptr) return std::nullopt;
  if (!value->is_object()) RefuseValue(key, *value, "an object");
  return JsonObject(*file_, *value, pointer_ + '/' + Escaped(key), key);
}

std::vector<JsonObject> JsonObject::Objects(const std::string& key) {
  const std::string allowed = "a list of objects";
  const Json* value = Find(key, allowed, false);
  std::vector<JsonObject> objects;
  if (value == nullptr) return objects;
  if (!value->is_array()) RefuseValue(key, *value, allowed);
  for (const Json& item : *value) {
    if (!item.is_object()) RefuseValue(key, item, allowed);
    const std::string pointer = pointer_ + '/' + Escaped(key) + '/';
    objects.push_back(JsonObject(*file_, item, pointer + std::to_string(objects.size()), key));
  }
  return objects;
}

void JsonObject::Skip(const std::string& key) { Find(key, "anything", false); }

Bytes JsonObject::File(const std::string& key, const Numbers& sizes, const std::string& custom,
                       bool needed) {
  const bool has_custom = !custom.empty() && !Has(key) && std::filesystem::exists(PathOf(custom));
  const std::string allowed = "a file of " + sizes.Text() + " bytes";
  const Json* value = Find(key, allowed, needed && !has_custom);
  if (value == nullptr) return has_custom ? FileNamed(key, custom, sizes) : Bytes();
  if (!value->is_string()) RefuseValue(key, *value, allowed);
  const auto name = value->get<std::string>();
  if (name.empty() && needed) RefuseValue(key, *value, allowed);
  return name.empty() ? Bytes() : FileNamed(key, name, sizes);
}

Bytes JsonObject::FileNamed(const std::string& key, const std::string& name,
                            const Numbers& sizes) const {
  const Path path = PathOf(name);
  Bytes bytes;
  try {
    bytes = ReadBytes(path);
  } catch (const Refusal& refusal) {
    if (Has(key)) Refuse(key, refusal.what());
    throw;
  }
  if (!sizes.Contain(static_cast<long long>(bytes.size()))) {
    throw Refusal(path.string(),
                  std::to_string(bytes.size()) + " bytes; \"" + key + "\" needs " + sizes.Text());
  }
  return bytes;
}

Path JsonObject::PathOf(const std::string& name) const {
  return file_->path().parent_path() / name;
}

void JsonObject::Finish() const {
  const std::string inside = name_.empty() ? "" : " in \"" + name_ + '"';
  for (const auto& [key, value] : json_->items()) {
    const auto is_key = [&key = key](const Known& known) { return known.key == key; };
    if (std::any_of(known_.begin(), known_.end(), is_key)) continue;
    const auto nearest = std::min_element(
        known_.begin(), known_.end(), [&key = key](const Known& a, const Known& b) {
          return EditDistance(key, a.key) < EditDistance(key, b.key);
        });
    const bool is_near = nearest != known_.end() &&
                         EditDistance(key, nearest->key) <= 2 + static_cast<int>(key.size()) / 6;
    std::vector<std::string> names;
    for (const Known& known : known_) names.push_back(known.key);
    Refuse(key, "unknown key" + inside + "; " +
                    (is_near ? "did you mean \"" + nearest->key + "\" (" + nearest->allowed + ")?"
                             : "expected " + Listed(names)));
  }
  if (missing_.empty()) return;
  throw Refusal(file_->path().string(), file_->LineOf(pointer_), missing_[0].key,
                "this key is missing" + inside + "; expected " + missing_[0].allowed);
}

}  // namespace velora::tools
