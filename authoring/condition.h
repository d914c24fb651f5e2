// When a component is valid: a boolean expression, built with C++ operators or read from a text,
// and held as the postfix list that a pack stores.
//
// Room: authoring. Values only. A text that is no expression raises std::invalid_argument.
#pragma once

#include <string>
#include <vector>

#include "authoring/value.h"

namespace velora::authoring {

class TypeNames;

class Condition {
 public:
  // Always valid. A component with a real condition is preferred to one with this.
  Condition();
  // A postfix list as a pack has it. It may be no sound expression.
  explicit Condition(std::vector<Value> postfix) : postfix_(std::move(postfix)) {}
  // The operand of this type id has this value.
  static Condition Is(int type, int value) { return Condition({{type, value}}); }

  friend Condition operator&&(const Condition& a, const Condition& b);
  friend Condition operator||(const Condition& a, const Condition& b);
  friend Condition operator!(const Condition& a);

  const std::vector<Value>& postfix() const { return postfix_; }

  // Whether each operator finds its operands and one result is left.
  bool IsSound() const;

  // Whether an And or Or finds one operator on its right that it meets on its left again. A pack
  // stores equal operators once, so what the left side leaves there would count for both.
  bool SharesAResult() const;

  // Infix: "Platform = 3 and not (VelcaseVersion_Cyan = 2 or ThemeType = 1)"; "always". A list that
  // is not sound is shown as it is stored, behind the word "malformed:".
  std::string Text(const TypeNames& names) const;
  static Condition Parse(const std::string& text, const TypeNames& names);

 private:
  std::vector<Value> postfix_;
};

}  // namespace velora::authoring
