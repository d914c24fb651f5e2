// The toner layer's factory and its instantiations. No other file of the room sees the templates'
// bodies: what the others need of them is made here.
#include "velora/common/core/CBuilt.inl"
#include "velora/common/core/CFactory.inl"
#include "velora/fenn/core/CFactory.h"
#include "velora/fenn/core/components/CColorMap.inl"
#include "velora/fenn/core/components/CMonolithic.inl"
#include "velora/fenn/core/components/CPacket.inl"
#include "velora/fenn/core/components/CTableData.inl"

namespace velora::v2::fenn::core {

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
    FENN_OBJECTS(VELORA_CREATE_CASE, VELORA_NO_CASE)
    default:
      return common::core::CSerializerHelper<Configuration>::CreateSerializeable(type);
  }
}

namespace _factory {

CFactory::CFactory() = default;

CFactory::~CFactory() = default;

#define FENN_CREATE(Name, Interface, Class) \
  Interface* CFactory::Create##Name() { return this->Create<Class>(); }
FENN_OBJECTS(FENN_CREATE, FENN_CREATE)
#undef FENN_CREATE

}  // namespace _factory

namespace components {

template class CTableData<api::IGrayCurveData>;

}  // namespace components

}  // namespace velora::v2::fenn::core

namespace plinth::v1::core {

using Toner = velora::v2::fenn::api::Configuration;

template class CArrayBody<Toner, velora::common::api::ITag<Toner>>;
template class CArrayBody<Toner, velora::common::api::IProperty<Toner>>;

}  // namespace plinth::v1::core

namespace velora::common::core {

namespace fenn_api = v2::fenn::api;
namespace fenn_core = v2::fenn::core;
namespace fenn = v2::fenn::core::components;
using Toner = fenn_api::Configuration;

// The bases of classes with a file of their own.
template class CPropertiesHelper<Toner>;
template class CPrintModeParametersOf<Toner, void(ctr_table_type, ctr_theme_type, ctr_media_type,
                                                  ctr_axis_type)>;
template class CVelcaseOf<Toner, fenn_core::Kinds>;
// Operators that store nothing; those of colour maps are templates, made where the factory names
// them.
#define FENN_PRODUCER(Kind, Operator)                                              \
  template class CProducer<Toner,                                                  \
                           CBare<Toner, fenn_api::I##Kind::IOperator::I##Operator, \
                                 fenn::C##Kind::COperator::C##Operator::kSerializeableType>>;
FENN_PRODUCER(GrayCurve, Build_DCT_Residue_CBAT_DeltaScalar)
FENN_PRODUCER(ChannelMap, Build_DCT_Residue_DeltaScalar)
#undef FENN_PRODUCER

template int CVelcase<Toner>::GetPipeline() const;

template void CVeltune<Toner>::CheckMembers() const;

// The steps of the lookup and of a recipe.
template fenn_api::IProperty* FindProperty<Toner>(fenn_api::IProperties*, int, bool);
#define FENN_LOCATE(Name, List)                                       \
  template fenn_api::I##Name* CVeltune<Toner>::Locate<fenn::C##Name>( \
      fenn_api::I##Name*, fenn_api::I##List*, fenn_api::IPrintModeParameters*);
FENN_KINDS(FENN_LOCATE)
#undef FENN_LOCATE
template fenn_api::IVelcase* CVeltune<Toner>::Init_BuildVelcase_Combined<fenn_core::CVelcase>(
    api::IArray<fenn_api::IVelcase>*);
// The kinds that an operator of another file takes as operands.
#define FENN_OPERAND(Name)                                      \
  template fenn::C##Name* ResolveOperand<Toner, fenn::C##Name>( \
      volatile plinth::v1::api::Frame&, CRecipe<Toner>::Operators*, fenn_api::IVeltune*);
FENN_OPERAND(Packet_ColorDCT)
FENN_OPERAND(Packet_ColorResidue)
FENN_OPERAND(Packet_MonoDCT)
FENN_OPERAND(Packet_MonoResidue)
FENN_OPERAND(Packet_MonoCBAT)
FENN_OPERAND(Packet_DeltaScalar)
#undef FENN_OPERAND

}  // namespace velora::common::core
