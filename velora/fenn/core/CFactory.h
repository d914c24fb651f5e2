// The toner factory, and the helper that makes a toner image's objects by type id.
// Room: velora/fenn. Raise as the common ones do.
#pragma once

#include "velora/common/core/CFactory.h"
#include "velora/fenn/api/IFactory.h"
#include "velora/fenn/core/CPrintModeMappings.h"
#include "velora/fenn/core/CPrintModeParameters.h"
#include "velora/fenn/core/CVelcase.h"
#include "velora/fenn/core/CVeltune.h"
#include "velora/fenn/core/component_lists.h"
#include "velora/fenn/core/components/CChannelMap.h"
#include "velora/fenn/core/components/CColorMap.h"
#include "velora/fenn/core/components/CGrayCurve.h"
#include "velora/fenn/core/components/CPacket.h"
#include "velora/fenn/core/conditions.h"
#include "velora/fenn/core/properties.h"
#include "velora/fenn/core/tags.h"

// The classes that the factory makes: its own in place of four common ones, then those beyond them
// in the order of its slots. STORED(name, interface, class), or OTHER for what no image holds.
#define FENN_OBJECTS(STORED, OTHER)                                                                \
  OTHER(Veltune, api::IVeltune, CVeltune)                                                          \
  OTHER(Velcase, api::IVelcase, CVelcase)                                                          \
  OTHER(PropertiesHelper, api::IPropertiesHelper, CPropertiesHelper)                               \
  OTHER(SerializerHelper, api::ISerializerHelper, CSerializerHelper)                               \
  OTHER(PrintModeMappings, api::IPrintModeMappings, CPrintModeMappings)                            \
  STORED(GrayCurves, api::IGrayCurves, component_lists::CGrayCurves)                               \
  STORED(Packets_Blob, api::IPackets_Blob, component_lists::CPackets_Blob)                         \
  STORED(Packets_DeltaScalar, api::IPackets_DeltaScalar, component_lists::CPackets_DeltaScalar)    \
  STORED(Packets_MonoCBAT, api::IPackets_MonoCBAT, component_lists::CPackets_MonoCBAT)             \
  STORED(Packets_MonoDCT, api::IPackets_MonoDCT, component_lists::CPackets_MonoDCT)                \
  STORED(Packets_MonoResidue, api::IPackets_MonoResidue, component_lists::CPackets_MonoResidue)    \
  STORED(ChannelMaps, api::IChannelMaps, component_lists::CChannelMaps)                            \
  STORED(ColorMaps, api::IColorMaps, component_lists::CColorMaps)                                  \
  STORED(Packets_ColorDCT, api::IPackets_ColorDCT, component_lists::CPackets_ColorDCT)             \
  STORED(Packets_ColorResidue, api::IPackets_ColorResidue, component_lists::CPackets_ColorResidue) \
  STORED(GrayCurve, api::IGrayCurve, components::CGrayCurve)                                       \
  STORED(GrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar,                                    \
         api::IGrayCurve::IOperator::IBuild_DCT_Residue_CBAT_DeltaScalar,                          \
         components::CGrayCurve::COperator::CBuild_DCT_Residue_CBAT_DeltaScalar)                   \
  STORED(GrayCurve_Operator_Build_Monolithic, api::IGrayCurve::IOperator::IBuild_Monolithic,       \
         components::CGrayCurve::COperator::CBuild_Monolithic)                                     \
  STORED(Packet_Blob, api::IPacket_Blob, components::CPacket_Blob)                                 \
  STORED(Packet_Blob_Operator_FromData, api::IPacket_Blob::IOperator::IFromData,                   \
         components::CPacket_Blob::COperator::CFromData)                                           \
  STORED(Packet_DeltaScalar, api::IPacket_DeltaScalar, components::CPacket_DeltaScalar)            \
  STORED(Packet_DeltaScalar_Operator_FromData, api::IPacket_DeltaScalar::IOperator::IFromData,     \
         components::CPacket_DeltaScalar::COperator::CFromData)                                    \
  STORED(Packet_MonoCBAT, api::IPacket_MonoCBAT, components::CPacket_MonoCBAT)                     \
  STORED(Packet_MonoCBAT_Operator_FromData, api::IPacket_MonoCBAT::IOperator::IFromData,           \
         components::CPacket_MonoCBAT::COperator::CFromData)                                       \
  STORED(Packet_MonoDCT, api::IPacket_MonoDCT, components::CPacket_MonoDCT)                        \
  STORED(Packet_MonoDCT_Operator_FromData, api::IPacket_MonoDCT::IOperator::IFromData,             \
         components::CPacket_MonoDCT::COperator::CFromData)                                        \
  STORED(Packet_MonoResidue, api::IPacket_MonoResidue, components::CPacket_MonoResidue)            \
  STORED(Packet_MonoResidue_Operator_FromData, api::IPacket_MonoResidue::IOperator::IFromData,     \
         components::CPacket_MonoResidue::COperator::CFromData)                                    \
  STORED(ChannelMap, api::IChannelMap, components::CChannelMap)                                    \
  STORED(ChannelMap_Operator_Build_DCT_Residue_DeltaScalar,                                        \
         api::IChannelMap::IOperator::IBuild_DCT_Residue_DeltaScalar,                              \
         components::CChannelMap::COperator::CBuild_DCT_Residue_DeltaScalar)                       \
  STORED(ChannelMap_Operator_Build_Monolithic, api::IChannelMap::IOperator::IBuild_Monolithic,     \
         components::CChannelMap::COperator::CBuild_Monolithic)                                    \
  STORED(ColorMap, api::IColorMap, components::CColorMap)                                          \
  STORED(ColorMap_Operator_Build_RGBtoCMYK, api::IColorMap::IOperator::IBuild_RGBtoCMYK,           \
         components::CColorMap::COperator::CBuild_RGBtoCMYK)                                       \
  STORED(ColorMap_Operator_Build_RGBtoRGB, api::IColorMap::IOperator::IBuild_RGBtoRGB,             \
         components::CColorMap::COperator::CBuild_RGBtoRGB)                                        \
  STORED(ColorMap_Operator_Build_RGBtoGrayscale, api::IColorMap::IOperator::IBuild_RGBtoGrayscale, \
         components::CColorMap::COperator::CBuild_RGBtoGrayscale)                                  \
  STORED(Packet_ColorDCT, api::IPacket_ColorDCT, components::CPacket_ColorDCT)                     \
  STORED(Packet_ColorDCT_Operator_FromData, api::IPacket_ColorDCT::IOperator::IFromData,           \
         components::CPacket_ColorDCT::COperator::CFromData)                                       \
  STORED(Packet_ColorResidue, api::IPacket_ColorResidue, components::CPacket_ColorResidue)         \
  STORED(Packet_ColorResidue_Operator_FromData, api::IPacket_ColorResidue::IOperator::IFromData,   \
         components::CPacket_ColorResidue::COperator::CFromData)                                   \
  STORED(Condition_AxisType, api::conditions::print_mode::IAxisType,                               \
         conditions::print_mode::CAxisType)                                                        \
  STORED(Condition_MediaType, api::conditions::print_mode::IMediaType,                             \
         conditions::print_mode::CMediaType)                                                       \
  STORED(Condition_TableType, api::conditions::print_mode::ITableType,                             \
         conditions::print_mode::CTableType)                                                       \
  STORED(Condition_ThemeType, api::conditions::print_mode::IThemeType,                             \
         conditions::print_mode::CThemeType)                                                       \
  STORED(VelcaseVersion_Drum, api::IVelcaseVersion, conditions::system::CVelcaseVersion_Drum)      \
  STORED(VelcaseVersion_Fuser, api::IVelcaseVersion, conditions::system::CVelcaseVersion_Fuser)    \
  STORED(ComponentRole, api::properties::IComponentRole, properties::CComponentRole)               \
  STORED(Dimensionality, api::properties::IDimensionality, properties::CDimensionality)            \
  STORED(Tag_AxisType, api::tags::IAxisType, tags::CAxisType)                                      \
  STORED(Tag_MediaType, api::tags::IMediaType, tags::CMediaType)                                   \
  STORED(Tag_TableType, api::tags::ITableType, tags::CTableType)                                   \
  STORED(Tag_ThemeType, api::tags::IThemeType, tags::CThemeType)                                   \
  STORED(Array_GrayCurve, api::IArray<api::IGrayCurve>, CArrayOf<api::IGrayCurve>)                 \
  STORED(Array_Packet_Blob, api::IArray<api::IPacket_Blob>, CArrayOf<api::IPacket_Blob>)           \
  STORED(Array_Packet_DeltaScalar, api::IArray<api::IPacket_DeltaScalar>,                          \
         CArrayOf<api::IPacket_DeltaScalar>)                                                       \
  STORED(Array_Packet_MonoCBAT, api::IArray<api::IPacket_MonoCBAT>,                                \
         CArrayOf<api::IPacket_MonoCBAT>)                                                          \
  STORED(Array_Packet_MonoDCT, api::IArray<api::IPacket_MonoDCT>, CArrayOf<api::IPacket_MonoDCT>)  \
  STORED(Array_Packet_MonoResidue, api::IArray<api::IPacket_MonoResidue>,                          \
         CArrayOf<api::IPacket_MonoResidue>)                                                       \
  STORED(Array_ChannelMap, api::IArray<api::IChannelMap>, CArrayOf<api::IChannelMap>)              \
  STORED(Array_ColorMap, api::IArray<api::IColorMap>, CArrayOf<api::IColorMap>)                    \
  STORED(Array_Packet_ColorDCT, api::IArray<api::IPacket_ColorDCT>,                                \
         CArrayOf<api::IPacket_ColorDCT>)                                                          \
  STORED(Array_Packet_ColorResidue, api::IArray<api::IPacket_ColorResidue>,                        \
         CArrayOf<api::IPacket_ColorResidue>)

namespace velora::v2::fenn::core {

template <class T>
using CArrayOf = plinth::v1::core::CArray<Configuration, T>;

// Makes the blank object for a type id that an image names; the reader owns it.
class CSerializerHelper : public common::core::CSerializerHelper<Configuration> {
 public:
  CSerializerHelper();
  ~CSerializerHelper() override;
  plinth::v1::api::ISerializeable* CreateSerializeable(int type) override;
};

namespace _factory {

// Each object is blank and the caller's, by one reference unless its interface has none.
class CFactory : public common::core::_factory::CFactory<Configuration>,
                 public virtual api::_factory::IFactory {
 public:
  CFactory();
  ~CFactory() override;
  FENN_OBJECTS(VELORA_CREATE_OVERRIDE, VELORA_CREATE_OVERRIDE)
};

}  // namespace _factory

}  // namespace velora::v2::fenn::core
