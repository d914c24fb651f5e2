// Bodies of CFactory.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CFactory.inl"
#include "velora/common/core/CFactory.h"
#include "velora/common/core/CPrintModeParameters.inl"
#include "velora/common/core/CVelcaseOf.inl"
#include "velora/common/core/CVeltune.inl"

namespace velora::common::core {

// What a row of a table of objects makes, for those that an image can hold; null for the others.
template <class Class>
plinth::v1::api::ISerializeable* AsSerializeable(Class* object) {
  if constexpr (std::is_base_of_v<plinth::v1::api::ISerializeable, Class>) {
    return object;
  } else {
    return nullptr;
  }
}

template <class C>
CSerializerHelper<C>::CSerializerHelper() = default;

template <class C>
CSerializerHelper<C>::~CSerializerHelper() = default;

template <class C>
plinth::v1::api::ISerializeable* CSerializerHelper<C>::CreateSerializeable(int type) {
  if (type < 1 || type > 127) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  if (type == plinth::v1::core::CSerializer<C>::kRecordType) {
    PLINTH_RAISE(CException_NotImplemented);
  }
#define VELORA_ROW(Name, Interface, Class, Id)                    \
  if (Id != 0 && type == Id) {                                    \
    return AsSerializeable(core::Create<Configuration, Class>()); \
  }
  VELORA_COMMON_OBJECTS(VELORA_ROW)
  VELORA_ROW(, , plinth::v1::core::CArray_uint8<C>, 1)
  VELORA_ROW(, , plinth::v1::core::CArray_int32<C>, 2)
  VELORA_ROW(, , CArray_Conditions_Operator<C>, Vocabulary<C>::kArray_ConditionsOperator)
  VELORA_ROW(, , CArray_Recipe_Operator<C>, Vocabulary<C>::kArray_RecipeOperator)
#undef VELORA_ROW
  PLINTH_RAISE(CException_Parameter_Invalid);
}

namespace _factory {

template <class C>
CFactory<C>::CFactory() = default;

template <class C>
CFactory<C>::~CFactory() = default;

#define VELORA_SLOT(Name, Interface, Class, Id)  \
  template <class C>                             \
  auto CFactory<C>::Create##Name()->Interface* { \
    return this->template Create<Class>();       \
  }
VELORA_COMMON_OBJECTS(VELORA_SLOT)
#undef VELORA_SLOT

}  // namespace _factory

}  // namespace velora::common::core
