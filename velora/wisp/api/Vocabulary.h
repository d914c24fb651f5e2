// The ink pipeline's page of differences.
// Room: velora/wisp. Constants; see velora/common/Vocabulary.h.
#pragma once

#include "velora/common/Vocabulary.h"

namespace velora::v1::wisp::api {
class IVeltune;
class IVelcase;
class IPrintModeMapping;
class IPrintModeMappings;
class IPrintModeParameters;
}  // namespace velora::v1::wisp::api

namespace velora::common {

template <>
struct Vocabulary<v1::wisp::api::Configuration> : SharedVocabulary {
  using IVeltune = v1::wisp::api::IVeltune;
  using IVelcase = v1::wisp::api::IVelcase;
  using IPrintModeMapping = v1::wisp::api::IPrintModeMapping;
  using IPrintModeMappings = v1::wisp::api::IPrintModeMappings;
  using IPrintModeParameters = v1::wisp::api::IPrintModeParameters;

  static constexpr Range ESupplyFamily = {0, 7, 0};

  static constexpr int kVeloraSchema = 1;
  static constexpr bool kHasPipeline = false;
  static constexpr bool kChecksChannelFirst = true;
  static constexpr bool kChecksSoughtChannel = true;
  static constexpr bool kCopiesLists = true;
};

}  // namespace velora::common
