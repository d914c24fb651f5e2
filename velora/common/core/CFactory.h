// The common factory, and the common helper that makes an image's objects by type id.
// Room: velora/common. Both are blank of fields. Raise as IFactory and ISerializerHelper tell.
#pragma once

#include "plinth/core/CFactory.h"
#include "velora/common/api/IFactory.h"
#include "velora/common/core/CConditions.h"
#include "velora/common/core/CList.h"
#include "velora/common/core/CPrintModeParameters.h"
#include "velora/common/core/CRecipe.h"
#include "velora/common/core/CVelcase.h"
#include "velora/common/core/CVeltune.h"
#include "velora/common/core/values.h"

namespace velora::common::core {

template <class C>
using CArray_Velcase = plinth::v1::core::CArray<C, typename Vocabulary<C>::IVelcase>;
template <class C>
using CArray_Property = plinth::v1::core::CArray<C, api::IProperty<C>>;
template <class C>
using CArray_Tag = plinth::v1::core::CArray<C, api::ITag<C>>;
template <class C>
using CArray_Conditions_Operator =
    plinth::v1::core::CArray<C, typename api::IConditions<C>::IOperator>;
template <class C>
using CArray_Recipe_Operator = plinth::v1::core::CArray<C, typename api::IRecipe<C>::IOperator>;
template <class C>
using CLinkedList_Conditions_Operator =
    plinth::v1::core::CLinkedList<C, typename api::IConditions<C>::IOperator>;
template <class C>
using CLinkedList_Recipe_Operator =
    plinth::v1::core::CLinkedList<C, typename api::IRecipe<C>::IOperator>;

template <class C>
class CSerializerHelper : public plinth::v1::core::CObject, public virtual api::ISerializerHelper {
 public:
  using Configuration = C;
  CSerializerHelper();
  ~CSerializerHelper() override;
  plinth::v1::api::ISerializeable* CreateSerializeable(int type) override;
};

namespace _factory {

template <class C>
class CFactory : public plinth::v1::core::_factory::CFactory<C>,
                 public virtual api::_factory::IFactory<C> {
 public:
  using Configuration = C;
  CFactory();
  ~CFactory() override;
#define VELORA_SLOT(Name, Interface, Class, Id) Interface* Create##Name() override;
  VELORA_COMMON_OBJECTS(VELORA_SLOT)
#undef VELORA_SLOT
};

}  // namespace _factory

}  // namespace velora::common::core
