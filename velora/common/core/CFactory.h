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

// A pipeline's helper and factory, in its `core`: its classes CVeltune, CVelcase, CPropertiesHelper
// and CSerializerHelper in the common slots, and the rows of its own table.
#define VELORA_PIPELINE_FACTORY(OBJECTS)                                            \
  class CSerializerHelper : public common::core::CSerializerHelper<Configuration> { \
   public:                                                                          \
    CSerializerHelper();                                                            \
    ~CSerializerHelper() override;                                                  \
    plinth::v1::api::ISerializeable* CreateSerializeable(int type) override;        \
  };                                                                                \
  namespace _factory {                                                              \
  class CFactory : public common::core::_factory::CFactory<Configuration>,          \
                   public virtual api::_factory::IFactory {                         \
   public:                                                                          \
    CFactory();                                                                     \
    ~CFactory() override;                                                           \
    api::IVeltune* CreateVeltune() override;                                        \
    api::IVelcase* CreateVelcase() override;                                        \
    api::IPropertiesHelper* CreatePropertiesHelper() override;                      \
    api::ISerializerHelper* CreateSerializerHelper() override;                      \
    OBJECTS(VELORA_SLOT_OVERRIDE)                                                   \
  };                                                                                \
  }

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
  PLINTH_INLINE_CONSTRUCTION(CSerializerHelper);
  plinth::v1::api::ISerializeable* CreateSerializeable(int type) override;
};

namespace _factory {

template <class C>
class CFactory : public plinth::v1::core::_factory::CFactory<C>,
                 public virtual api::_factory::IFactory<C> {
 public:
  using Configuration = C;
  PLINTH_INLINE_CONSTRUCTION(CFactory);
  VELORA_COMMON_OBJECTS(VELORA_SLOT_OVERRIDE)
};

}  // namespace _factory

}  // namespace velora::common::core
