// The ink factory, and the helper that makes an ink image's objects by type id.
// Room: velora/wisp. Raise as the common ones do.
#pragma once

#include "velora/common/core/CFactory.h"
#include "velora/wisp/api/IFactory.h"
#include "velora/wisp/core/CPrintModeMappings.h"
#include "velora/wisp/core/CPrintModeParameters.h"
#include "velora/wisp/core/CVelcase.h"
#include "velora/wisp/core/CVeltune.h"
#include "velora/wisp/core/component_lists.h"
#include "velora/wisp/core/components/CAlternateNeutral.h"
#include "velora/wisp/core/components/CChannelMap.h"
#include "velora/wisp/core/components/CColorMap.h"
#include "velora/wisp/core/components/CGrayCurve.h"
#include "velora/wisp/core/components/CNodes.h"
#include "velora/wisp/core/conditions.h"
#include "velora/wisp/core/properties.h"
#include "velora/wisp/core/tags.h"

// The classes that the factory makes: its own in place of four common ones, then those beyond them
// in the order of its slots. STORED(name, interface, class), or OTHER for what no image holds.
#define WISP_OBJECTS(STORED, OTHER)                                                               \
  OTHER(Veltune, api::IVeltune, CVeltune)                                                         \
  OTHER(Velcase, api::IVelcase, CVelcase)                                                         \
  OTHER(PropertiesHelper, api::IPropertiesHelper, CPropertiesHelper)                              \
  OTHER(SerializerHelper, api::ISerializerHelper, CSerializerHelper)                              \
  OTHER(PrintModeMappings, api::IPrintModeMappings, CPrintModeMappings)                           \
  STORED(AlternateNeutrals, api::IAlternateNeutrals, component_lists::CAlternateNeutrals)         \
  STORED(AlternateNeutralChannels, api::IAlternateNeutralChannels,                                \
         component_lists::CAlternateNeutralChannels)                                              \
  STORED(ChannelMaps, api::IChannelMaps, component_lists::CChannelMaps)                           \
  STORED(ColorMaps, api::IColorMaps, component_lists::CColorMaps)                                 \
  STORED(GrayCurves, api::IGrayCurves, component_lists::CGrayCurves)                              \
  STORED(Nodes_Deltas, api::INodes_Deltas, component_lists::CNodes_Deltas)                        \
  STORED(Nodes_Neutrals, api::INodes_Neutrals, component_lists::CNodes_Neutrals)                  \
  STORED(Nodes_Seeds, api::INodes_Seeds, component_lists::CNodes_Seeds)                           \
  STORED(AlternateNeutral, api::IAlternateNeutral, components::CAlternateNeutral)                 \
  STORED(AlternateNeutral_Operator_Build_CMYK, api::IAlternateNeutral::IOperator::IBuild_CMYK,    \
         components::CAlternateNeutral::COperator::CBuild_CMYK)                                   \
  STORED(AlternateNeutralChannel, api::IAlternateNeutralChannel,                                  \
         components::CAlternateNeutralChannel)                                                    \
  STORED(AlternateNeutralChannel_Operator_Build_Monolithic,                                       \
         api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,                             \
         components::CAlternateNeutralChannel::COperator::CBuild_Monolithic)                      \
  STORED(ChannelMap, api::IChannelMap, components::CChannelMap)                                   \
  STORED(ChannelMap_Operator_Build_N_5_9_17, api::IChannelMap::IOperator::IBuild_N_5_9_17,        \
         components::CChannelMap::COperator::CBuild_N_5_9_17)                                     \
  STORED(ChannelMap_Operator_Build_Monolithic, api::IChannelMap::IOperator::IBuild_Monolithic,    \
         components::CChannelMap::COperator::CBuild_Monolithic)                                   \
  STORED(ChannelMap_Operator_Modify_Subtract, api::IChannelMap::IOperator::IModify_Subtract,      \
         components::CChannelMap::COperator::CModify_Subtract)                                    \
  STORED(ColorMap, api::IColorMap, components::CColorMap)                                         \
  STORED(ColorMap_Operator_Build_CMYK, api::IColorMap::IOperator::IBuild_CMYK,                    \
         components::CColorMap::COperator::CBuild_CMYK)                                           \
  STORED(GrayCurve, api::IGrayCurve, components::CGrayCurve)                                      \
  STORED(GrayCurve_Operator_FromData, api::IGrayCurve::IOperator::IFromData,                      \
         components::CGrayCurve::COperator::CFromData)                                            \
  STORED(Nodes_Complete, api::INodes_Complete, components::CNodes_Complete)                       \
  STORED(Nodes_Complete_Operator_FromData, api::INodes_Complete::IOperator::IFromData,            \
         components::CNodes_Complete::COperator::CFromData)                                       \
  STORED(Nodes_Delta, api::INodes_Delta, components::CNodes_Delta)                                \
  STORED(Nodes_Delta_Operator_FromData, api::INodes_Delta::IOperator::IFromData,                  \
         components::CNodes_Delta::COperator::CFromData)                                          \
  STORED(Nodes_Neutral, api::INodes_Neutral, components::CNodes_Neutral)                          \
  STORED(Nodes_Neutral_Operator_FromData, api::INodes_Neutral::IOperator::IFromData,              \
         components::CNodes_Neutral::COperator::CFromData)                                        \
  STORED(Nodes_Seed, api::INodes_Seed, components::CNodes_Seed)                                   \
  STORED(Nodes_Seed_Operator_FromData, api::INodes_Seed::IOperator::IFromData,                    \
         components::CNodes_Seed::COperator::CFromData)                                           \
  STORED(Condition_Colorspace, api::conditions::print_mode::IColorspace,                          \
         conditions::print_mode::CColorspace)                                                     \
  STORED(Condition_MediaSubtype, api::conditions::print_mode::IMediaSubtype,                      \
         conditions::print_mode::CMediaSubtype)                                                   \
  STORED(Condition_MediaType, api::conditions::print_mode::IMediaType,                            \
         conditions::print_mode::CMediaType)                                                      \
  STORED(Condition_PenSet, api::conditions::print_mode::IPenSet, conditions::print_mode::CPenSet) \
  STORED(Condition_Quality, api::conditions::print_mode::IQuality,                                \
         conditions::print_mode::CQuality)                                                        \
  STORED(ComponentRole, api::properties::IComponentRole, properties::CComponentRole)              \
  STORED(DeltaRange, api::properties::IDeltaRange, properties::CDeltaRange)                       \
  STORED(DropsPerLevel, api::properties::IDropsPerLevel, properties::CDropsPerLevel)              \
  STORED(DropVolumeOffset, api::properties::IDropVolumeOffset, properties::CDropVolumeOffset)     \
  STORED(LevelCount, api::properties::ILevelCount, properties::CLevelCount)                       \
  STORED(LossyCompressionLevel, api::properties::ILossyCompressionLevel,                          \
         properties::CLossyCompressionLevel)                                                      \
  STORED(NodeCount, api::properties::INodeCount, properties::CNodeCount)                          \
  STORED(NominalDropVolume, api::properties::INominalDropVolume, properties::CNominalDropVolume)  \
  STORED(Resolution, api::properties::IResolution, properties::CResolution)                       \
  STORED(Tag_Colorspace, api::tags::IColorspace, tags::CColorspace)                               \
  STORED(Tag_MediaSubtype, api::tags::IMediaSubtype, tags::CMediaSubtype)                         \
  STORED(Tag_MediaType, api::tags::IMediaType, tags::CMediaType)                                  \
  STORED(Tag_PenSet, api::tags::IPenSet, tags::CPenSet)                                           \
  STORED(Tag_Quality, api::tags::IQuality, tags::CQuality)                                        \
  STORED(Array_AlternateNeutral, api::IArray<api::IAlternateNeutral>,                             \
         CArrayOf<api::IAlternateNeutral>)                                                        \
  STORED(Array_AlternateNeutralChannel, api::IArray<api::IAlternateNeutralChannel>,               \
         CArrayOf<api::IAlternateNeutralChannel>)                                                 \
  STORED(Array_ChannelMap, api::IArray<api::IChannelMap>, CArrayOf<api::IChannelMap>)             \
  STORED(Array_ColorMap, api::IArray<api::IColorMap>, CArrayOf<api::IColorMap>)                   \
  STORED(Array_GrayCurve, api::IArray<api::IGrayCurve>, CArrayOf<api::IGrayCurve>)                \
  STORED(Array_Nodes_Complete, api::IArray<api::INodes_Complete>, CArrayOf<api::INodes_Complete>) \
  STORED(Array_Nodes_Delta, api::IArray<api::INodes_Delta>, CArrayOf<api::INodes_Delta>)          \
  STORED(Array_Nodes_Neutral, api::IArray<api::INodes_Neutral>, CArrayOf<api::INodes_Neutral>)    \
  STORED(Array_Nodes_Seed, api::IArray<api::INodes_Seed>, CArrayOf<api::INodes_Seed>)

namespace velora::v1::wisp::core {

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
  WISP_OBJECTS(VELORA_CREATE_OVERRIDE, VELORA_CREATE_OVERRIDE)
};

}  // namespace _factory

}  // namespace velora::v1::wisp::core
