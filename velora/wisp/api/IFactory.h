// The ink factory: the top of its chain.
// Room: velora/wisp. As the common IFactory.
#pragma once

#include "velora/wisp/api/IVeltune.h"
#include "velora/wisp/api/conditions.h"
#include "velora/wisp/api/properties.h"
#include "velora/wisp/api/tags.h"

namespace velora::v1::wisp::api {

namespace _factory {

// The operations are slots in this order, on which callers outside of the library rely.
class IFactory : public virtual common::api::_factory::IFactory<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IFactory);
  // In place of the common ones.
  IVeltune* CreateVeltune() override = 0;
  IVelcase* CreateVelcase() override = 0;
  IPropertiesHelper* CreatePropertiesHelper() override = 0;
  // Not counted: the caller ends it with `Destroy`.
  virtual IPrintModeMappings* CreatePrintModeMappings() = 0;
  // Lists of components.
  virtual IAlternateNeutrals* CreateAlternateNeutrals() = 0;
  virtual IAlternateNeutralChannels* CreateAlternateNeutralChannels() = 0;
  virtual IChannelMaps* CreateChannelMaps() = 0;
  virtual IColorMaps* CreateColorMaps() = 0;
  virtual IGrayCurves* CreateGrayCurves() = 0;
  virtual INodes_Deltas* CreateNodes_Deltas() = 0;
  virtual INodes_Neutrals* CreateNodes_Neutrals() = 0;
  virtual INodes_Seeds* CreateNodes_Seeds() = 0;
  // Components, each before its operators.
  virtual IAlternateNeutral* CreateAlternateNeutral() = 0;
  virtual IAlternateNeutral::IOperator::IBuild_CMYK*
  CreateAlternateNeutral_Operator_Build_CMYK() = 0;
  virtual IAlternateNeutralChannel* CreateAlternateNeutralChannel() = 0;
  virtual IAlternateNeutralChannel::IOperator::IBuild_Monolithic*
  CreateAlternateNeutralChannel_Operator_Build_Monolithic() = 0;
  virtual IChannelMap* CreateChannelMap() = 0;
  virtual IChannelMap::IOperator::IBuild_N_5_9_17* CreateChannelMap_Operator_Build_N_5_9_17() = 0;
  virtual IChannelMap::IOperator::IBuild_Monolithic*
  CreateChannelMap_Operator_Build_Monolithic() = 0;
  virtual IChannelMap::IOperator::IModify_Subtract* CreateChannelMap_Operator_Modify_Subtract() = 0;
  virtual IColorMap* CreateColorMap() = 0;
  virtual IColorMap::IOperator::IBuild_CMYK* CreateColorMap_Operator_Build_CMYK() = 0;
  virtual IGrayCurve* CreateGrayCurve() = 0;
  virtual IGrayCurve::IOperator::IFromData* CreateGrayCurve_Operator_FromData() = 0;
  virtual INodes_Complete* CreateNodes_Complete() = 0;
  virtual INodes_Complete::IOperator::IFromData* CreateNodes_Complete_Operator_FromData() = 0;
  virtual INodes_Delta* CreateNodes_Delta() = 0;
  virtual INodes_Delta::IOperator::IFromData* CreateNodes_Delta_Operator_FromData() = 0;
  virtual INodes_Neutral* CreateNodes_Neutral() = 0;
  virtual INodes_Neutral::IOperator::IFromData* CreateNodes_Neutral_Operator_FromData() = 0;
  virtual INodes_Seed* CreateNodes_Seed() = 0;
  virtual INodes_Seed::IOperator::IFromData* CreateNodes_Seed_Operator_FromData() = 0;
  // Operands of conditions.
  virtual conditions::print_mode::IColorspace* CreateCondition_Colorspace() = 0;
  virtual conditions::print_mode::IMediaSubtype* CreateCondition_MediaSubtype() = 0;
  virtual conditions::print_mode::IMediaType* CreateCondition_MediaType() = 0;
  virtual conditions::print_mode::IPenSet* CreateCondition_PenSet() = 0;
  virtual conditions::print_mode::IQuality* CreateCondition_Quality() = 0;
  // Properties.
  virtual properties::IComponentRole* CreateComponentRole() = 0;
  virtual properties::IDeltaRange* CreateDeltaRange() = 0;
  virtual properties::IDropsPerLevel* CreateDropsPerLevel() = 0;
  virtual properties::IDropVolumeOffset* CreateDropVolumeOffset() = 0;
  virtual properties::ILevelCount* CreateLevelCount() = 0;
  virtual properties::ILossyCompressionLevel* CreateLossyCompressionLevel() = 0;
  virtual properties::INodeCount* CreateNodeCount() = 0;
  virtual properties::INominalDropVolume* CreateNominalDropVolume() = 0;
  virtual properties::IResolution* CreateResolution() = 0;
  // Tags.
  virtual tags::IColorspace* CreateTag_Colorspace() = 0;
  virtual tags::IMediaSubtype* CreateTag_MediaSubtype() = 0;
  virtual tags::IMediaType* CreateTag_MediaType() = 0;
  virtual tags::IPenSet* CreateTag_PenSet() = 0;
  virtual tags::IQuality* CreateTag_Quality() = 0;
  // Arrays, which the lists take.
  virtual IArray<IAlternateNeutral>* CreateArray_AlternateNeutral() = 0;
  virtual IArray<IAlternateNeutralChannel>* CreateArray_AlternateNeutralChannel() = 0;
  virtual IArray<IChannelMap>* CreateArray_ChannelMap() = 0;
  virtual IArray<IColorMap>* CreateArray_ColorMap() = 0;
  virtual IArray<IGrayCurve>* CreateArray_GrayCurve() = 0;
  virtual IArray<INodes_Complete>* CreateArray_Nodes_Complete() = 0;
  virtual IArray<INodes_Delta>* CreateArray_Nodes_Delta() = 0;
  virtual IArray<INodes_Neutral>* CreateArray_Nodes_Neutral() = 0;
  virtual IArray<INodes_Seed>* CreateArray_Nodes_Seed() = 0;
};

}  // namespace _factory

}  // namespace velora::v1::wisp::api
