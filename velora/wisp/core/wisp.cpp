// The ink layer's factory and its instantiations. No other file of the room sees the templates'
// bodies: what the others need of them is made here.
#include "velora/common/core/CBuilt.inl"
#include "velora/common/core/CFactory.inl"
#include "velora/wisp/core/CFactory.h"
#include "velora/wisp/core/Cache.inl"
#include "velora/wisp/core/components/CChannelData.inl"
#include "velora/wisp/core/components/CNodes.inl"
#include "velora/wisp/core/components/CTable.inl"

namespace velora::v1::wisp::core {

CSerializerHelper::CSerializerHelper() = default;

CSerializerHelper::~CSerializerHelper() = default;

// Type ids are 7 bits, and 0 is none. What is not the layer's own is the common helper's, which
// also raises for what nobody knows.
plinth::v1::api::ISerializeable* CSerializerHelper::CreateSerializeable(int type) {
  if (type < 1 || type > 127) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  switch (type) {
    WISP_OBJECTS(VELORA_CREATE_CASE, VELORA_NO_CASE)
    default:
      return common::core::CSerializerHelper<Configuration>::CreateSerializeable(type);
  }
}

namespace _factory {

CFactory::CFactory() = default;

CFactory::~CFactory() = default;

#define WISP_CREATE(Name, Interface, Class) \
  Interface* CFactory::Create##Name() { return this->Create<Class>(); }
WISP_OBJECTS(WISP_CREATE, WISP_CREATE)
#undef WISP_CREATE

}  // namespace _factory

// The caches of the three finished tables.
template class CVeltune::Cache<api::IColorMap>;
template class CVeltune::Cache<api::IGrayCurve>;
template class CVeltune::Cache<api::IAlternateNeutral>;

namespace components {

template class CNodes<api::INodes_Neutral>;
template class CNodes<api::INodes_Seed>;
template class CNodes<api::INodes_Delta>;
template class CNodes<api::INodes_Complete>;
template class CChannelData<api::IChannelMapData>;
template class CChannelData<api::IAlternateNeutralChannelData>;
template class CRecordData<api::IColorMapData>;
template class CRecordData<api::IAlternateNeutralData>;

}  // namespace components

}  // namespace velora::v1::wisp::core

namespace velora::common::core {

namespace wisp_api = v1::wisp::api;
namespace wisp_core = v1::wisp::core;
namespace wisp = v1::wisp::core::components;
using Ink = wisp_api::Configuration;

// The bases of classes with a file of their own.
template class CPropertiesHelper<Ink>;
template class CPrintModeParametersOf<Ink, void(const tWISPPrintModeMapping*)>;
template class CVelcaseOf<Ink, wisp_core::Kinds>;
template class CValue<Ink, CProperty<Ink>, wisp_api::properties::INodeCount,
                      wisp_core::properties::CNodeCount::kSerializeableType>;
template class CStoredArray<Ink, CProperty<Ink>, wisp_api::properties::IDropsPerLevel,
                            wisp_core::properties::CDropsPerLevel::kSerializeableType>;
// Operators that store nothing.
#define WISP_BUILD(Kind, Operator)                                                    \
  template class CProducer<Ink, CBare<Ink, wisp_api::I##Kind::IOperator::I##Operator, \
                                      wisp::C##Kind::COperator::C##Operator::kSerializeableType>>;
WISP_BUILD(ChannelMap, Build_N_5_9_17)
WISP_BUILD(ChannelMap, Modify_Subtract)
WISP_BUILD(ColorMap, Build_CMYK)
WISP_BUILD(AlternateNeutral, Build_CMYK)
#undef WISP_BUILD
// Operators that store bytes.
#define WISP_STORED(Kind, Operator)                                                       \
  template class CStoredArray<Ink, CRecipe<Ink>::COperator,                               \
                              wisp_api::I##Kind::IOperator::I##Operator,                  \
                              wisp::C##Kind::COperator::C##Operator::kSerializeableType>; \
  template class CStoredBytes<Ink, wisp_api::I##Kind::IOperator::I##Operator,             \
                              wisp::C##Kind::COperator::C##Operator::kSerializeableType>; \
  template class CProducer<                                                               \
      Ink, CStoredBytes<Ink, wisp_api::I##Kind::IOperator::I##Operator,                   \
                        wisp::C##Kind::COperator::C##Operator::kSerializeableType>>;
WISP_STORED(ChannelMap, Build_Monolithic)
WISP_STORED(GrayCurve, FromData)
WISP_STORED(AlternateNeutralChannel, Build_Monolithic)
#undef WISP_STORED

template void CVeltune<Ink>::CheckMembers() const;

// The steps of the lookup and of a recipe.
template wisp_api::IProperty* FindProperty<Ink>(wisp_api::IProperties*, int, bool);
#define WISP_LOCATE(Name, List)                                     \
  template wisp_api::I##Name* CVeltune<Ink>::Locate<wisp::C##Name>( \
      wisp_api::I##Name*, wisp_api::I##List*, wisp_api::IPrintModeParameters*);
WISP_KINDS(WISP_LOCATE)
#undef WISP_LOCATE
template wisp_api::IVelcase* CVeltune<Ink>::Init_BuildVelcase_Combined<wisp_core::CVelcase>(
    api::IArray<wisp_api::IVelcase>*);
// The kinds that an operator takes as operands.
#define WISP_OPERAND(Name)                                    \
  template wisp::C##Name* ResolveOperand<Ink, wisp::C##Name>( \
      volatile plinth::v1::api::Frame&, CRecipe<Ink>::Operators*, wisp_api::IVeltune*);
WISP_OPERAND(Nodes_Neutral)
WISP_OPERAND(Nodes_Seed)
WISP_OPERAND(Nodes_Delta)
WISP_OPERAND(ChannelMap)
WISP_OPERAND(AlternateNeutralChannel)
#undef WISP_OPERAND

}  // namespace velora::common::core
