// The one page of differences between the versions: what a layer's images and packs say in numbers.
// Room: velora/common. Constants; nobody owns anything, nothing fails.
//
// Code asks this table for a value or a feature, never for the version. Classes that only one
// pipeline has keep their numbers in the pipeline's own words (velora/fenn/api, velora/wisp/api).
#pragma once

#include "velora/common/Configuration.h"

namespace velora::v1::wisp::api {
class IVeltune;
class IVelcase;
class IPrintModeParameters;
}  // namespace velora::v1::wisp::api

namespace velora::v2::fenn::api {
class IVeltune;
class IVelcase;
class IPrintModeParameters;
}  // namespace velora::v2::fenn::api

namespace velora::common {

// The legal values of an enumeration: [low..high], and one more above a gap.
struct Range {
  int low;
  int high;
  int beyond;  // `low` where there is none

  constexpr bool Contains(int value) const {
    return (value >= low && value <= high) || value == beyond;
  }
};

// Type ids and ranges that both versions share.
struct SharedVocabulary {
  static constexpr int kArray_Property = 4;
  static constexpr int kArray_Tag = 5;
  static constexpr int kArray_ConditionsOperator = 6;
  static constexpr int kArray_RecipeOperator = 7;
  static constexpr int kDefaultCondition = 60;
  static constexpr int kVelcaseVersion_Cyan = 61;
  static constexpr int kVelcaseVersion_Magenta = 62;
  static constexpr int kVelcaseVersion_Yellow = 63;
  static constexpr int kVelcaseVersion_Black = 64;
  static constexpr int kVelcaseVersion_Printer = 65;
  static constexpr int kConditionsOperator_And = 80;
  static constexpr int kConditionsOperator_Or = 81;
  static constexpr int kConditionsOperator_Not = 82;
  static constexpr int kTags = 107;
  static constexpr int kRecipe = 109;

  static constexpr int kFirstComponent = 20;  // components have 10 ids from here
  static constexpr int kComponentTypes = 10;
  static constexpr int kFirstTag = 48;  // tags have 12 ids from here
  static constexpr int kTagTypes = 12;

  static constexpr Range EPlatform = {1, 13, 127};
  static constexpr Range EProductVariant = {0, 5, 0};
  static constexpr Range EComponentVersion = {1, 15, 1};
  static constexpr Range EVariant = {1, 1, 1};
  static constexpr Range EChannel = {0, 127, 0};
  static constexpr Range EVelcaseVersion = {1, 15, 1};
  static constexpr Range EVelcaseSchema = {1, 1, 1};

  // Bounds of a pack's payload.
  static constexpr int kMaxPayload = 409600;
  static constexpr int kMaxUncompressed = 0x400000;
};

template <class Configuration>
struct Vocabulary;

// Version 1: ink.
template <>
struct Vocabulary<v1::wisp::api::Configuration> : SharedVocabulary {
  using IVeltune = v1::wisp::api::IVeltune;
  using IVelcase = v1::wisp::api::IVelcase;
  using IPrintModeParameters = v1::wisp::api::IPrintModeParameters;

  static constexpr int kChannel = 32;
  static constexpr int kComponentVersion = 34;
  static constexpr int kVariant = 42;
  static constexpr int kTag_Platform = 52;
  static constexpr int kTag_SupplyFamily = 54;
  static constexpr int kTag_ProductVariant = 55;
  static constexpr int kCondition_Platform = 70;
  static constexpr int kCondition_SupplyFamily = 72;
  static constexpr int kCondition_ProductVariant = 73;
  static constexpr int kProperties = 106;
  static constexpr int kConditions = 108;

  static constexpr Range ESupplyFamily = {0, 7, 0};

  static constexpr int kVeloraSchema = 1;
  static constexpr bool kHasPipeline = false;         // a byte of the header
  static constexpr bool kChecksChannelFirst = true;   // ahead of the payload
  static constexpr bool kChecksSoughtChannel = true;  // of FindVelcase
  static constexpr bool kCopiesLists = true;          // of a pack that is copied
};

// Version 2: toner.
template <>
struct Vocabulary<v2::fenn::api::Configuration> : SharedVocabulary {
  using IVeltune = v2::fenn::api::IVeltune;
  using IVelcase = v2::fenn::api::IVelcase;
  using IPrintModeParameters = v2::fenn::api::IPrintModeParameters;

  static constexpr int kComponentVersion = 32;
  static constexpr int kChannel = 33;
  static constexpr int kVariant = 34;
  static constexpr int kTag_Platform = 48;
  static constexpr int kTag_SupplyFamily = 49;
  static constexpr int kTag_ProductVariant = 50;
  static constexpr int kCondition_Platform = 66;
  static constexpr int kCondition_SupplyFamily = 67;
  static constexpr int kCondition_ProductVariant = 68;
  static constexpr int kConditions = 106;
  static constexpr int kProperties = 108;

  static constexpr Range ESupplyFamily = {0, 9, 127};

  static constexpr int kVeloraSchema = 2;
  static constexpr bool kHasPipeline = true;
  static constexpr bool kChecksChannelFirst = false;
  static constexpr bool kChecksSoughtChannel = false;
  static constexpr bool kCopiesLists = false;
};

}  // namespace velora::common
