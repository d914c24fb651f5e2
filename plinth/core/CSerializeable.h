// The base of all objects that an image can hold: the type id, and defaults that do nothing.
// Room: plinth/core. Raises as CObject does, and `CException_This_Invalid` for the type id 0.
#pragma once

#include "plinth/core/CObject.h"
#include "plinth/core/api/ISerializeable.h"

namespace plinth::v1::core {

class CSerializeable : public CObject, public virtual api::ISerializeable {
 public:
  [[gnu::always_inline]] explicit CSerializeable(int type = 0) : serializeableType(type) {}
  PLINTH_INLINE_DESTRUCTION(CSerializeable);
  using CObject::Init;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Sort(bool deduplicate) override;
  int GetSerializeableType() const final;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(api::ISerializeable* other) const override;
  bool IsLessThan(api::ISerializeable* other) const override;
  void CheckThis() const override;

 protected:
  // For an Init that reads: BeginInit, a null serializer raises, then `body()`, then `valid`. A
  // blank object takes no frame: readers make many, and what one has taken ends with it when the
  // reader ends what could not be read.
  template <class Body>
  void InitFrom(const api::ISerializer* serializer, const Body& body) {
    RunInitFrom(
        serializer, [](const void* context) { (*static_cast<const Body*>(context))(); }, &body);
  }

  // `valid` and a type id, without a virtual call.
  void CheckMembers() const;

  // For comparisons of containers: null or another type id is the caller's fault and raises
  // `CException_Parameter_Invalid`; otherwise the other's concrete part.
  CObject* Comparable(api::ISerializeable* other) const;

  // 0: none. Given at `Init`, or fixed by the class, which passes it to the constructor.
  int serializeableType;

 private:
  void RunInitFrom(const api::ISerializer* serializer, void (*read)(const void* context),
                   const void* context);
};

}  // namespace plinth::v1::core
