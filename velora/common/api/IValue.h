// One stored value of an enumeration: the interface of every tag, property and operand that has
// one. Room: velora/common. Immutable, unless its own interface has a setter. `Init` from a value
// outside its range raises `CException_Parameter_Invalid`; what is read from an image is not
// checked.
#pragma once

#include "velora/common/api/ISerializeable.h"
#include "velora/common/enumeration.h"

namespace velora::common::api {

// `Base` is the interface of a tag, a property or an operand of a condition. An enumeration `E` has
// `Enum` and `Check`.
template <class Base, class E>
class IValue : public virtual Base {
 public:
  PLINTH_INLINE_CONSTRUCTION(IValue);
  using Enumeration = E;
  using Copied = Base;
  using Base::Init;
  // Raises `CException_Parameter_Invalid` for a value out of range, and is blank then.
  virtual void Init(typename E::Enum value) = 0;
  virtual void Init(Base* other) = 0;  // the copy, of a value of the same type id
  // Out of range where an image had it so.
  virtual typename E::Enum GetValue() const = 0;
};

}  // namespace velora::common::api
