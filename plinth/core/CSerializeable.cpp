#include "plinth/core/CSerializeable.h"

namespace plinth::v1::core {

void CSerializeable::Init(int type, api::ISerializer*, void*) {
  CObject::Init();
  serializeableType = type;
}

// A live object is deleted by the frame when its reading fails. A blank one is left as far as it
// came, with `valid` unset: its holder, the serializer, ends it.
void CSerializeable::RunInitFrom(const api::ISerializer* serializer,
                                 void (*read)(const void* context), const void* context) {
  const auto init = [&] {
    BeginInit();
    if (serializer == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    read(context);
    valid = true;
  };
  if (valid) {
    InitGuarded([&](volatile api::Frame&) { init(); });
  } else {
    init();
  }
}

void CSerializeable::Sort(bool) {}

int CSerializeable::GetSerializeableType() const { return serializeableType; }

void CSerializeable::Serialize(api::ISerializer*, void*) {}

bool CSerializeable::IsEqualTo(api::ISerializeable*) const { return false; }

bool CSerializeable::IsLessThan(api::ISerializeable*) const { return false; }

void CSerializeable::CheckThis() const { CheckMembers(); }

void CSerializeable::CheckMembers() const {
  if (!valid || serializeableType == 0) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

// The other's type id is this object's, so the caller may cast the result to its own class.
CObject* CSerializeable::Comparable(api::ISerializeable* other) const {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  if (other->GetSerializeableType() != serializeableType) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return other->GetThis_Concrete();
}

}  // namespace plinth::v1::core
