// The type ids: the number, from 1 to 127, that each stored object carries in an image.
// Room: velora/common. Constants; nobody owns anything, nothing fails.
//
// This is the one place with these numbers. A name is that of the object in its factory: what
// `CreateTag_Platform` makes has the id `kTag_Platform`. The foundation keeps 1 and 2 for arrays of
// bytes and of integers, and 3 for what no image holds (CArray, CSerializer). Components lie in
// [20..29], tags in [48..59].
#pragma once

#include "velora/common/Configuration.h"

// X(name, id), in ascending order. Both versions:
#define VELORA_SHARED_TYPE_IDS(X) \
  X(Array_Property, 4)            \
  X(Array_Tag, 5)                 \
  X(DefaultCondition, 60)         \
  X(VelcaseVersion_Cyan, 61)      \
  X(VelcaseVersion_Magenta, 62)   \
  X(VelcaseVersion_Yellow, 63)    \
  X(VelcaseVersion_Black, 64)     \
  X(VelcaseVersion_Printer, 65)   \
  X(Conditions_Operator_And, 80)  \
  X(Conditions_Operator_Or, 81)   \
  X(Conditions_Operator_Not, 82)  \
  X(Tags, 107)                    \
  X(Recipe, 109)

// Version 1, ink:
#define WISP_TYPE_IDS(X)                                   \
  X(Array_Nodes_Neutral, 8)                                \
  X(Array_Nodes_Seed, 9)                                   \
  X(Array_Nodes_Delta, 10)                                 \
  X(Array_Nodes_Complete, 11)                              \
  X(Array_ChannelMap, 12)                                  \
  X(Array_ColorMap, 13)                                    \
  X(Array_GrayCurve, 14)                                   \
  X(Array_AlternateNeutralChannel, 15)                     \
  X(Array_AlternateNeutral, 16)                            \
  X(Nodes_Neutral, 20)                                     \
  X(Nodes_Seed, 21)                                        \
  X(Nodes_Delta, 22)                                       \
  X(Nodes_Complete, 23)                                    \
  X(ChannelMap, 24)                                        \
  X(ColorMap, 25)                                          \
  X(GrayCurve, 26)                                         \
  X(AlternateNeutralChannel, 27)                           \
  X(AlternateNeutral, 28)                                  \
  X(Channel, 32)                                           \
  X(ComponentRole, 33)                                     \
  X(ComponentVersion, 34)                                  \
  X(DropsPerLevel, 35)                                     \
  X(DropVolumeOffset, 36)                                  \
  X(LevelCount, 37)                                        \
  X(LossyCompressionLevel, 38)                             \
  X(NodeCount, 39)                                         \
  X(NominalDropVolume, 40)                                 \
  X(Resolution, 41)                                        \
  X(Variant, 42)                                           \
  X(DeltaRange, 43)                                        \
  X(Tag_Colorspace, 48)                                    \
  X(Tag_MediaSubtype, 49)                                  \
  X(Tag_MediaType, 50)                                     \
  X(Tag_PenSet, 51)                                        \
  X(Tag_Platform, 52)                                      \
  X(Tag_Quality, 53)                                       \
  X(Tag_SupplyFamily, 54)                                  \
  X(Tag_ProductVariant, 55)                                \
  X(Condition_Colorspace, 66)                              \
  X(Condition_MediaSubtype, 67)                            \
  X(Condition_MediaType, 68)                               \
  X(Condition_PenSet, 69)                                  \
  X(Condition_Platform, 70)                                \
  X(Condition_Quality, 71)                                 \
  X(Condition_SupplyFamily, 72)                            \
  X(Condition_ProductVariant, 73)                          \
  X(Nodes_Neutral_Operator_FromData, 86)                   \
  X(Nodes_Seed_Operator_FromData, 87)                      \
  X(Nodes_Delta_Operator_FromData, 88)                     \
  X(Nodes_Complete_Operator_FromData, 89)                  \
  X(ChannelMap_Operator_Build_N_5_9_17, 90)                \
  X(ColorMap_Operator_Build_CMYK, 91)                      \
  X(ChannelMap_Operator_Build_Monolithic, 92)              \
  X(GrayCurve_Operator_FromData, 93)                       \
  X(AlternateNeutralChannel_Operator_Build_Monolithic, 94) \
  X(AlternateNeutral_Operator_Build_CMYK, 95)              \
  X(ChannelMap_Operator_Modify_Subtract, 96)               \
  X(Properties, 106)                                       \
  X(Conditions, 108)                                       \
  X(Nodes_Neutrals, 112)                                   \
  X(Nodes_Seeds, 113)                                      \
  X(Nodes_Deltas, 114)                                     \
  X(ChannelMaps, 116)                                      \
  X(ColorMaps, 117)                                        \
  X(GrayCurves, 118)                                       \
  X(AlternateNeutralChannels, 119)                         \
  X(AlternateNeutrals, 120)

// Version 2, toner:
#define FENN_TYPE_IDS(X)                                       \
  X(Array_ColorMap, 8)                                         \
  X(Array_GrayCurve, 9)                                        \
  X(Array_ChannelMap, 10)                                      \
  X(Array_Packet_ColorDCT, 11)                                 \
  X(Array_Packet_ColorResidue, 12)                             \
  X(Array_Packet_MonoDCT, 13)                                  \
  X(Array_Packet_MonoResidue, 14)                              \
  X(Array_Packet_MonoCBAT, 15)                                 \
  X(Array_Packet_DeltaScalar, 16)                              \
  X(Array_Packet_Blob, 17)                                     \
  X(ColorMap, 20)                                              \
  X(GrayCurve, 21)                                             \
  X(ChannelMap, 22)                                            \
  X(Packet_ColorDCT, 23)                                       \
  X(Packet_ColorResidue, 24)                                   \
  X(Packet_MonoDCT, 25)                                        \
  X(Packet_MonoResidue, 26)                                    \
  X(Packet_MonoCBAT, 27)                                       \
  X(Packet_DeltaScalar, 28)                                    \
  X(Packet_Blob, 29)                                           \
  X(ComponentVersion, 32)                                      \
  X(Channel, 33)                                               \
  X(Variant, 34)                                               \
  X(ComponentRole, 35)                                         \
  X(Dimensionality, 36)                                        \
  X(Tag_Platform, 48)                                          \
  X(Tag_SupplyFamily, 49)                                      \
  X(Tag_ProductVariant, 50)                                    \
  X(Tag_TableType, 51)                                         \
  X(Tag_ThemeType, 52)                                         \
  X(Tag_MediaType, 53)                                         \
  X(Tag_AxisType, 54)                                          \
  X(Condition_Platform, 66)                                    \
  X(Condition_SupplyFamily, 67)                                \
  X(Condition_ProductVariant, 68)                              \
  X(Condition_TableType, 69)                                   \
  X(Condition_ThemeType, 70)                                   \
  X(Condition_MediaType, 71)                                   \
  X(Condition_AxisType, 72)                                    \
  X(VelcaseVersion_Drum, 73)                                   \
  X(VelcaseVersion_Fuser, 74)                                  \
  X(ColorMap_Operator_Build_RGBtoCMYK, 86)                     \
  X(ColorMap_Operator_Build_RGBtoRGB, 87)                      \
  X(ColorMap_Operator_Build_RGBtoGrayscale, 88)                \
  X(GrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar, 89) \
  X(GrayCurve_Operator_Build_Monolithic, 90)                   \
  X(ChannelMap_Operator_Build_DCT_Residue_DeltaScalar, 91)     \
  X(ChannelMap_Operator_Build_Monolithic, 92)                  \
  X(Packet_ColorDCT_Operator_FromData, 93)                     \
  X(Packet_ColorResidue_Operator_FromData, 94)                 \
  X(Packet_MonoDCT_Operator_FromData, 95)                      \
  X(Packet_MonoResidue_Operator_FromData, 96)                  \
  X(Packet_MonoCBAT_Operator_FromData, 97)                     \
  X(Packet_DeltaScalar_Operator_FromData, 98)                  \
  X(Packet_Blob_Operator_FromData, 99)                         \
  X(Conditions, 106)                                           \
  X(Properties, 108)                                           \
  X(ColorMaps, 112)                                            \
  X(GrayCurves, 113)                                           \
  X(ChannelMaps, 114)                                          \
  X(Packets_ColorDCT, 115)                                     \
  X(Packets_ColorResidue, 116)                                 \
  X(Packets_MonoDCT, 117)                                      \
  X(Packets_MonoResidue, 118)                                  \
  X(Packets_MonoCBAT, 119)                                     \
  X(Packets_DeltaScalar, 120)                                  \
  X(Packets_Blob, 121)

namespace velora::common {

#define VELORA_TYPE_ID(Name, Id) static constexpr int k##Name = Id;
#define VELORA_CASE(Name, Id) case Id:

struct SharedTypeIds {
  VELORA_SHARED_TYPE_IDS(VELORA_TYPE_ID)

  // Made while an image is read, by no factory.
  static constexpr int kArray_Conditions_Operator = 6;
  static constexpr int kArray_Recipe_Operator = 7;

  // The ranges of ids that are asked for as such: components in recipes, tags in lookups.
  static constexpr int kFirstComponent = 20;
  static constexpr int kComponentTypes = 10;
  static constexpr int kFirstTag = 48;
  static constexpr int kTagTypes = 12;
};

template <class Configuration>
struct TypeIds;

template <>
struct TypeIds<v1::wisp::api::Configuration> : SharedTypeIds {
  WISP_TYPE_IDS(VELORA_TYPE_ID)

  // Whether some factory makes an object of this id. Two names with one id do not compile.
  static constexpr bool IsMade(int id) {
    switch (id) {
      VELORA_SHARED_TYPE_IDS(VELORA_CASE)
      WISP_TYPE_IDS(VELORA_CASE)
      return true;
      default:
        return false;
    }
  }
};

template <>
struct TypeIds<v2::fenn::api::Configuration> : SharedTypeIds {
  FENN_TYPE_IDS(VELORA_TYPE_ID)

  // Whether some factory makes an object of this id. Two names with one id do not compile.
  static constexpr bool IsMade(int id) {
    switch (id) {
      VELORA_SHARED_TYPE_IDS(VELORA_CASE)
      FENN_TYPE_IDS(VELORA_CASE)
      return true;
      default:
        return false;
    }
  }
};

#undef VELORA_TYPE_ID
#undef VELORA_CASE

}  // namespace velora::common
