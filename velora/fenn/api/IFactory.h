// The toner factory: the top of its chain.
// Room: velora/fenn. As the common IFactory.
#pragma once

#include "velora/fenn/api/IVeltune.h"
#include "velora/fenn/api/conditions.h"
#include "velora/fenn/api/properties.h"
#include "velora/fenn/api/tags.h"

namespace velora::v2::fenn::api {

using IVelcaseVersion = common::api::conditions::IVelcaseVersion<Configuration>;

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
  virtual IGrayCurves* CreateGrayCurves() = 0;
  virtual IPackets_Blob* CreatePackets_Blob() = 0;
  virtual IPackets_DeltaScalar* CreatePackets_DeltaScalar() = 0;
  virtual IPackets_MonoCBAT* CreatePackets_MonoCBAT() = 0;
  virtual IPackets_MonoDCT* CreatePackets_MonoDCT() = 0;
  virtual IPackets_MonoResidue* CreatePackets_MonoResidue() = 0;
  virtual IChannelMaps* CreateChannelMaps() = 0;
  virtual IColorMaps* CreateColorMaps() = 0;
  virtual IPackets_ColorDCT* CreatePackets_ColorDCT() = 0;
  virtual IPackets_ColorResidue* CreatePackets_ColorResidue() = 0;
  // Components, each before its operators.
  virtual IGrayCurve* CreateGrayCurve() = 0;
  virtual IGrayCurve::IOperator::IBuild_DCT_Residue_CBAT_DeltaScalar*
  CreateGrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar() = 0;
  virtual IGrayCurve::IOperator::IBuild_Monolithic* CreateGrayCurve_Operator_Build_Monolithic() = 0;
  virtual IPacket_Blob* CreatePacket_Blob() = 0;
  virtual IPacket_Blob::IOperator::IFromData* CreatePacket_Blob_Operator_FromData() = 0;
  virtual IPacket_DeltaScalar* CreatePacket_DeltaScalar() = 0;
  virtual IPacket_DeltaScalar::IOperator::IFromData*
  CreatePacket_DeltaScalar_Operator_FromData() = 0;
  virtual IPacket_MonoCBAT* CreatePacket_MonoCBAT() = 0;
  virtual IPacket_MonoCBAT::IOperator::IFromData* CreatePacket_MonoCBAT_Operator_FromData() = 0;
  virtual IPacket_MonoDCT* CreatePacket_MonoDCT() = 0;
  virtual IPacket_MonoDCT::IOperator::IFromData* CreatePacket_MonoDCT_Operator_FromData() = 0;
  virtual IPacket_MonoResidue* CreatePacket_MonoResidue() = 0;
  virtual IPacket_MonoResidue::IOperator::IFromData*
  CreatePacket_MonoResidue_Operator_FromData() = 0;
  virtual IChannelMap* CreateChannelMap() = 0;
  virtual IChannelMap::IOperator::IBuild_DCT_Residue_DeltaScalar*
  CreateChannelMap_Operator_Build_DCT_Residue_DeltaScalar() = 0;
  virtual IChannelMap::IOperator::IBuild_Monolithic*
  CreateChannelMap_Operator_Build_Monolithic() = 0;
  virtual IColorMap* CreateColorMap() = 0;
  virtual IColorMap::IOperator::IBuild_RGBtoCMYK* CreateColorMap_Operator_Build_RGBtoCMYK() = 0;
  virtual IColorMap::IOperator::IBuild_RGBtoRGB* CreateColorMap_Operator_Build_RGBtoRGB() = 0;
  virtual IColorMap::IOperator::IBuild_RGBtoGrayscale*
  CreateColorMap_Operator_Build_RGBtoGrayscale() = 0;
  virtual IPacket_ColorDCT* CreatePacket_ColorDCT() = 0;
  virtual IPacket_ColorDCT::IOperator::IFromData* CreatePacket_ColorDCT_Operator_FromData() = 0;
  virtual IPacket_ColorResidue* CreatePacket_ColorResidue() = 0;
  virtual IPacket_ColorResidue::IOperator::IFromData*
  CreatePacket_ColorResidue_Operator_FromData() = 0;
  // Operands of conditions.
  virtual conditions::print_mode::IAxisType* CreateCondition_AxisType() = 0;
  virtual conditions::print_mode::IMediaType* CreateCondition_MediaType() = 0;
  virtual conditions::print_mode::ITableType* CreateCondition_TableType() = 0;
  virtual conditions::print_mode::IThemeType* CreateCondition_ThemeType() = 0;
  virtual IVelcaseVersion* CreateVelcaseVersion_Drum() = 0;
  virtual IVelcaseVersion* CreateVelcaseVersion_Fuser() = 0;
  // Properties.
  virtual properties::IComponentRole* CreateComponentRole() = 0;
  virtual properties::IDimensionality* CreateDimensionality() = 0;
  // Tags.
  virtual tags::IAxisType* CreateTag_AxisType() = 0;
  virtual tags::IMediaType* CreateTag_MediaType() = 0;
  virtual tags::ITableType* CreateTag_TableType() = 0;
  virtual tags::IThemeType* CreateTag_ThemeType() = 0;
  // Arrays, which the lists take.
  virtual IArray<IGrayCurve>* CreateArray_GrayCurve() = 0;
  virtual IArray<IPacket_Blob>* CreateArray_Packet_Blob() = 0;
  virtual IArray<IPacket_DeltaScalar>* CreateArray_Packet_DeltaScalar() = 0;
  virtual IArray<IPacket_MonoCBAT>* CreateArray_Packet_MonoCBAT() = 0;
  virtual IArray<IPacket_MonoDCT>* CreateArray_Packet_MonoDCT() = 0;
  virtual IArray<IPacket_MonoResidue>* CreateArray_Packet_MonoResidue() = 0;
  virtual IArray<IChannelMap>* CreateArray_ChannelMap() = 0;
  virtual IArray<IColorMap>* CreateArray_ColorMap() = 0;
  virtual IArray<IPacket_ColorDCT>* CreateArray_Packet_ColorDCT() = 0;
  virtual IArray<IPacket_ColorResidue>* CreateArray_Packet_ColorResidue() = 0;
};

}  // namespace _factory

}  // namespace velora::v2::fenn::api
