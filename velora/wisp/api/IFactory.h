// The ink factory: the top of its chain.
// Room: velora/wisp. As the common IFactory.
#pragma once

#include "velora/wisp/api/IVeltune.h"

// What an ink factory makes beyond the common table, in the order of its slots:
// X(name, interface, class, type id in an image or 0).
#define WISP_OBJECTS(X)                                                                            \
  X(PrintModeMappings, api::IPrintModeMappings, CPrintModeMappings, 0)                             \
  X(AlternateNeutrals, api::IAlternateNeutrals, component_lists::CAlternateNeutrals, 120)          \
  X(AlternateNeutralChannels, api::IAlternateNeutralChannels,                                      \
    component_lists::CAlternateNeutralChannels, 119)                                               \
  X(ChannelMaps, api::IChannelMaps, component_lists::CChannelMaps, 116)                            \
  X(ColorMaps, api::IColorMaps, component_lists::CColorMaps, 117)                                  \
  X(GrayCurves, api::IGrayCurves, component_lists::CGrayCurves, 118)                               \
  X(Nodes_Deltas, api::INodes_Deltas, component_lists::CNodes_Deltas, 114)                         \
  X(Nodes_Neutrals, api::INodes_Neutrals, component_lists::CNodes_Neutrals, 112)                   \
  X(Nodes_Seeds, api::INodes_Seeds, component_lists::CNodes_Seeds, 113)                            \
  X(AlternateNeutral, api::IAlternateNeutral, components::CAlternateNeutral, 28)                   \
  X(AlternateNeutral_Operator_Build_CMYK, api::IAlternateNeutral::IOperator::IBuild_CMYK,          \
    components::CAlternateNeutral::COperator::CBuild_CMYK, 95)                                     \
  X(AlternateNeutralChannel, api::IAlternateNeutralChannel, components::CAlternateNeutralChannel,  \
    27)                                                                                            \
  X(AlternateNeutralChannel_Operator_Build_Monolithic,                                             \
    api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,                                   \
    components::CAlternateNeutralChannel::COperator::CBuild_Monolithic, 94)                        \
  X(ChannelMap, api::IChannelMap, components::CChannelMap, 24)                                     \
  X(ChannelMap_Operator_Build_N_5_9_17, api::IChannelMap::IOperator::IBuild_N_5_9_17,              \
    components::CChannelMap::COperator::CBuild_N_5_9_17, 90)                                       \
  X(ChannelMap_Operator_Build_Monolithic, api::IChannelMap::IOperator::IBuild_Monolithic,          \
    components::CChannelMap::COperator::CBuild_Monolithic, 92)                                     \
  X(ChannelMap_Operator_Modify_Subtract, api::IChannelMap::IOperator::IModify_Subtract,            \
    components::CChannelMap::COperator::CModify_Subtract, 96)                                      \
  X(ColorMap, api::IColorMap, components::CColorMap, 25)                                           \
  X(ColorMap_Operator_Build_CMYK, api::IColorMap::IOperator::IBuild_CMYK,                          \
    components::CColorMap::COperator::CBuild_CMYK, 91)                                             \
  X(GrayCurve, api::IGrayCurve, components::CGrayCurve, 26)                                        \
  X(GrayCurve_Operator_FromData, api::IGrayCurve::IOperator::IFromData,                            \
    components::CGrayCurve::COperator::CFromData, 93)                                              \
  X(Nodes_Complete, api::INodes_Complete, components::CNodes_Complete, 23)                         \
  X(Nodes_Complete_Operator_FromData, api::INodes_Complete::IOperator::IFromData,                  \
    components::CNodes_Complete::COperator::CFromData, 89)                                         \
  X(Nodes_Delta, api::INodes_Delta, components::CNodes_Delta, 22)                                  \
  X(Nodes_Delta_Operator_FromData, api::INodes_Delta::IOperator::IFromData,                        \
    components::CNodes_Delta::COperator::CFromData, 88)                                            \
  X(Nodes_Neutral, api::INodes_Neutral, components::CNodes_Neutral, 20)                            \
  X(Nodes_Neutral_Operator_FromData, api::INodes_Neutral::IOperator::IFromData,                    \
    components::CNodes_Neutral::COperator::CFromData, 86)                                          \
  X(Nodes_Seed, api::INodes_Seed, components::CNodes_Seed, 21)                                     \
  X(Nodes_Seed_Operator_FromData, api::INodes_Seed::IOperator::IFromData,                          \
    components::CNodes_Seed::COperator::CFromData, 87)                                             \
  X(Condition_Colorspace, api::conditions::print_mode::IColorspace,                                \
    conditions::print_mode::CColorspace, 66)                                                       \
  X(Condition_MediaSubtype, api::conditions::print_mode::IMediaSubtype,                            \
    conditions::print_mode::CMediaSubtype, 67)                                                     \
  X(Condition_MediaType, api::conditions::print_mode::IMediaType,                                  \
    conditions::print_mode::CMediaType, 68)                                                        \
  X(Condition_PenSet, api::conditions::print_mode::IPenSet, conditions::print_mode::CPenSet, 69)   \
  X(Condition_Quality, api::conditions::print_mode::IQuality, conditions::print_mode::CQuality,    \
    71)                                                                                            \
  X(ComponentRole, api::properties::IComponentRole, properties::CComponentRole, 33)                \
  X(DeltaRange, api::properties::IDeltaRange, properties::CDeltaRange, 43)                         \
  X(DropsPerLevel, api::properties::IDropsPerLevel, properties::CDropsPerLevel, 35)                \
  X(DropVolumeOffset, api::properties::IDropVolumeOffset, properties::CDropVolumeOffset, 36)       \
  X(LevelCount, api::properties::ILevelCount, properties::CLevelCount, 37)                         \
  X(LossyCompressionLevel, api::properties::ILossyCompressionLevel,                                \
    properties::CLossyCompressionLevel, 38)                                                        \
  X(NodeCount, api::properties::INodeCount, properties::CNodeCount, 39)                            \
  X(NominalDropVolume, api::properties::INominalDropVolume, properties::CNominalDropVolume, 40)    \
  X(Resolution, api::properties::IResolution, properties::CResolution, 41)                         \
  X(Tag_Colorspace, api::tags::IColorspace, tags::CColorspace, 48)                                 \
  X(Tag_MediaSubtype, api::tags::IMediaSubtype, tags::CMediaSubtype, 49)                           \
  X(Tag_MediaType, api::tags::IMediaType, tags::CMediaType, 50)                                    \
  X(Tag_PenSet, api::tags::IPenSet, tags::CPenSet, 51)                                             \
  X(Tag_Quality, api::tags::IQuality, tags::CQuality, 53)                                          \
  X(Array_AlternateNeutral, api::IArray<api::IAlternateNeutral>, CArrayOf<api::IAlternateNeutral>, \
    16)                                                                                            \
  X(Array_AlternateNeutralChannel, api::IArray<api::IAlternateNeutralChannel>,                     \
    CArrayOf<api::IAlternateNeutralChannel>, 15)                                                   \
  X(Array_ChannelMap, api::IArray<api::IChannelMap>, CArrayOf<api::IChannelMap>, 12)               \
  X(Array_ColorMap, api::IArray<api::IColorMap>, CArrayOf<api::IColorMap>, 13)                     \
  X(Array_GrayCurve, api::IArray<api::IGrayCurve>, CArrayOf<api::IGrayCurve>, 14)                  \
  X(Array_Nodes_Complete, api::IArray<api::INodes_Complete>, CArrayOf<api::INodes_Complete>, 11)   \
  X(Array_Nodes_Delta, api::IArray<api::INodes_Delta>, CArrayOf<api::INodes_Delta>, 10)            \
  X(Array_Nodes_Neutral, api::IArray<api::INodes_Neutral>, CArrayOf<api::INodes_Neutral>, 8)       \
  X(Array_Nodes_Seed, api::IArray<api::INodes_Seed>, CArrayOf<api::INodes_Seed>, 9)

namespace velora::v1::wisp::api {

VELORA_PIPELINE_IFACTORY(WISP_OBJECTS)

}  // namespace velora::v1::wisp::api
