// A stored value: a tag, a property, or an element of a condition.
//
// Room: authoring. Nothing fails.
#pragma once

#include <tuple>

#include "authoring/table.h"

namespace velora::authoring {

struct Value {
  int type;  // type id
  int value = 0;
  Bytes bytes = {};  // of the one property that holds bytes in place of a number

  friend bool operator==(const Value& a, const Value& b) {
    return a.type == b.type && a.value == b.value && a.bytes == b.bytes;
  }
  friend bool operator<(const Value& a, const Value& b) {
    return std::tie(a.type, a.value, a.bytes) < std::tie(b.type, b.value, b.bytes);
  }
};

}  // namespace velora::authoring
