// The toner factory: the top of its chain.
// Room: velora/fenn. As the common IFactory.
#pragma once

#include "velora/fenn/api/IVeltune.h"

// What a toner factory makes beyond the common table, in the order of its slots:
// X(name, interface, class, type id in an image or 0).
#define FENN_OBJECTS(X)                                                                            \
  X(PrintModeMappings, api::IPrintModeMappings, CPrintModeMappings, 0)                             \
  X(GrayCurves, api::IGrayCurves, component_lists::CGrayCurves, 113)                               \
  X(Packets_Blob, api::IPackets_Blob, component_lists::CPackets_Blob, 121)                         \
  X(Packets_DeltaScalar, api::IPackets_DeltaScalar, component_lists::CPackets_DeltaScalar, 120)    \
  X(Packets_MonoCBAT, api::IPackets_MonoCBAT, component_lists::CPackets_MonoCBAT, 119)             \
  X(Packets_MonoDCT, api::IPackets_MonoDCT, component_lists::CPackets_MonoDCT, 117)                \
  X(Packets_MonoResidue, api::IPackets_MonoResidue, component_lists::CPackets_MonoResidue, 118)    \
  X(ChannelMaps, api::IChannelMaps, component_lists::CChannelMaps, 114)                            \
  X(ColorMaps, api::IColorMaps, component_lists::CColorMaps, 112)                                  \
  X(Packets_ColorDCT, api::IPackets_ColorDCT, component_lists::CPackets_ColorDCT, 115)             \
  X(Packets_ColorResidue, api::IPackets_ColorResidue, component_lists::CPackets_ColorResidue, 116) \
  X(GrayCurve, api::IGrayCurve, components::CGrayCurve, 21)                                        \
  X(GrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar,                                         \
    api::IGrayCurve::IOperator::IBuild_DCT_Residue_CBAT_DeltaScalar,                               \
    components::CGrayCurve::COperator::CBuild_DCT_Residue_CBAT_DeltaScalar, 89)                    \
  X(GrayCurve_Operator_Build_Monolithic, api::IGrayCurve::IOperator::IBuild_Monolithic,            \
    components::CGrayCurve::COperator::CBuild_Monolithic, 90)                                      \
  X(Packet_Blob, api::IPacket_Blob, components::CPacket_Blob, 29)                                  \
  X(Packet_Blob_Operator_FromData, api::IPacket_Blob::IOperator::IFromData,                        \
    components::CPacket_Blob::COperator::CFromData, 99)                                            \
  X(Packet_DeltaScalar, api::IPacket_DeltaScalar, components::CPacket_DeltaScalar, 28)             \
  X(Packet_DeltaScalar_Operator_FromData, api::IPacket_DeltaScalar::IOperator::IFromData,          \
    components::CPacket_DeltaScalar::COperator::CFromData, 98)                                     \
  X(Packet_MonoCBAT, api::IPacket_MonoCBAT, components::CPacket_MonoCBAT, 27)                      \
  X(Packet_MonoCBAT_Operator_FromData, api::IPacket_MonoCBAT::IOperator::IFromData,                \
    components::CPacket_MonoCBAT::COperator::CFromData, 97)                                        \
  X(Packet_MonoDCT, api::IPacket_MonoDCT, components::CPacket_MonoDCT, 25)                         \
  X(Packet_MonoDCT_Operator_FromData, api::IPacket_MonoDCT::IOperator::IFromData,                  \
    components::CPacket_MonoDCT::COperator::CFromData, 95)                                         \
  X(Packet_MonoResidue, api::IPacket_MonoResidue, components::CPacket_MonoResidue, 26)             \
  X(Packet_MonoResidue_Operator_FromData, api::IPacket_MonoResidue::IOperator::IFromData,          \
    components::CPacket_MonoResidue::COperator::CFromData, 96)                                     \
  X(ChannelMap, api::IChannelMap, components::CChannelMap, 22)                                     \
  X(ChannelMap_Operator_Build_DCT_Residue_DeltaScalar,                                             \
    api::IChannelMap::IOperator::IBuild_DCT_Residue_DeltaScalar,                                   \
    components::CChannelMap::COperator::CBuild_DCT_Residue_DeltaScalar, 91)                        \
  X(ChannelMap_Operator_Build_Monolithic, api::IChannelMap::IOperator::IBuild_Monolithic,          \
    components::CChannelMap::COperator::CBuild_Monolithic, 92)                                     \
  X(ColorMap, api::IColorMap, components::CColorMap, 20)                                           \
  X(ColorMap_Operator_Build_RGBtoCMYK, api::IColorMap::IOperator::IBuild_RGBtoCMYK,                \
    components::CColorMap::COperator::CBuild_RGBtoCMYK, 86)                                        \
  X(ColorMap_Operator_Build_RGBtoRGB, api::IColorMap::IOperator::IBuild_RGBtoRGB,                  \
    components::CColorMap::COperator::CBuild_RGBtoRGB, 87)                                         \
  X(ColorMap_Operator_Build_RGBtoGrayscale, api::IColorMap::IOperator::IBuild_RGBtoGrayscale,      \
    components::CColorMap::COperator::CBuild_RGBtoGrayscale, 88)                                   \
  X(Packet_ColorDCT, api::IPacket_ColorDCT, components::CPacket_ColorDCT, 23)                      \
  X(Packet_ColorDCT_Operator_FromData, api::IPacket_ColorDCT::IOperator::IFromData,                \
    components::CPacket_ColorDCT::COperator::CFromData, 93)                                        \
  X(Packet_ColorResidue, api::IPacket_ColorResidue, components::CPacket_ColorResidue, 24)          \
  X(Packet_ColorResidue_Operator_FromData, api::IPacket_ColorResidue::IOperator::IFromData,        \
    components::CPacket_ColorResidue::COperator::CFromData, 94)                                    \
  X(Condition_AxisType, api::conditions::print_mode::IAxisType, conditions::print_mode::CAxisType, \
    72)                                                                                            \
  X(Condition_MediaType, api::conditions::print_mode::IMediaType,                                  \
    conditions::print_mode::CMediaType, 71)                                                        \
  X(Condition_TableType, api::conditions::print_mode::ITableType,                                  \
    conditions::print_mode::CTableType, 69)                                                        \
  X(Condition_ThemeType, api::conditions::print_mode::IThemeType,                                  \
    conditions::print_mode::CThemeType, 70)                                                        \
  X(VelcaseVersion_Drum, api::IVelcaseVersion, conditions::system::CVelcaseVersion_Drum, 73)       \
  X(VelcaseVersion_Fuser, api::IVelcaseVersion, conditions::system::CVelcaseVersion_Fuser, 74)     \
  X(ComponentRole, api::properties::IComponentRole, properties::CComponentRole, 35)                \
  X(Dimensionality, api::properties::IDimensionality, properties::CDimensionality, 36)             \
  X(Tag_AxisType, api::tags::IAxisType, tags::CAxisType, 54)                                       \
  X(Tag_MediaType, api::tags::IMediaType, tags::CMediaType, 53)                                    \
  X(Tag_TableType, api::tags::ITableType, tags::CTableType, 51)                                    \
  X(Tag_ThemeType, api::tags::IThemeType, tags::CThemeType, 52)                                    \
  X(Array_GrayCurve, api::IArray<api::IGrayCurve>, CArrayOf<api::IGrayCurve>, 9)                   \
  X(Array_Packet_Blob, api::IArray<api::IPacket_Blob>, CArrayOf<api::IPacket_Blob>, 17)            \
  X(Array_Packet_DeltaScalar, api::IArray<api::IPacket_DeltaScalar>,                               \
    CArrayOf<api::IPacket_DeltaScalar>, 16)                                                        \
  X(Array_Packet_MonoCBAT, api::IArray<api::IPacket_MonoCBAT>, CArrayOf<api::IPacket_MonoCBAT>,    \
    15)                                                                                            \
  X(Array_Packet_MonoDCT, api::IArray<api::IPacket_MonoDCT>, CArrayOf<api::IPacket_MonoDCT>, 13)   \
  X(Array_Packet_MonoResidue, api::IArray<api::IPacket_MonoResidue>,                               \
    CArrayOf<api::IPacket_MonoResidue>, 14)                                                        \
  X(Array_ChannelMap, api::IArray<api::IChannelMap>, CArrayOf<api::IChannelMap>, 10)               \
  X(Array_ColorMap, api::IArray<api::IColorMap>, CArrayOf<api::IColorMap>, 8)                      \
  X(Array_Packet_ColorDCT, api::IArray<api::IPacket_ColorDCT>, CArrayOf<api::IPacket_ColorDCT>,    \
    11)                                                                                            \
  X(Array_Packet_ColorResidue, api::IArray<api::IPacket_ColorResidue>,                             \
    CArrayOf<api::IPacket_ColorResidue>, 12)

namespace velora::v2::fenn::api {

using IVelcaseVersion = common::api::conditions::IVelcaseVersion<Configuration>;

VELORA_PIPELINE_IFACTORY(FENN_OBJECTS)

}  // namespace velora::v2::fenn::api
