// A stored value: a tag, a property, or an element of a condition.
//
// Room: authoring. Nothing fails.
#pragma once

namespace velora::authoring {

struct Value {
  int type;  // type id
  int value = 0;

  friend bool operator==(const Value& a, const Value& b) {
    return a.type == b.type && a.value == b.value;
  }
  friend bool operator<(const Value& a, const Value& b) {
    return a.type != b.type ? a.type < b.type : a.value < b.value;
  }
};

}  // namespace velora::authoring
