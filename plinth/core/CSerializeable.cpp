#include "plinth/core/CSerializeable.h"

namespace plinth::v1::core {

using api::Configuration;

void CSerializeable::Init(int type, api::ISerializer*, void*) {
  CObject::Init();
  serializeableType = type;
}

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
