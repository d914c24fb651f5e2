// The toner pipeline's page of differences.
// Room: velora/fenn. Constants; see velora/common/Vocabulary.h.
#pragma once

#include "velora/common/Vocabulary.h"

namespace velora::v2::fenn::api {
class IVeltune;
class IVelcase;
class IPrintModeMapping;
class IPrintModeMappings;
class IPrintModeParameters;
}  // namespace velora::v2::fenn::api

namespace velora::common {

template <>
struct Vocabulary<v2::fenn::api::Configuration> : SharedVocabulary {
  using IVeltune = v2::fenn::api::IVeltune;
  using IVelcase = v2::fenn::api::IVelcase;
  using IPrintModeMapping = v2::fenn::api::IPrintModeMapping;
  using IPrintModeMappings = v2::fenn::api::IPrintModeMappings;
  using IPrintModeParameters = v2::fenn::api::IPrintModeParameters;

  static constexpr Range ESupplyFamily = {0, 9, 127};

  static constexpr int kVeloraSchema = 2;
  static constexpr bool kHasPipeline = true;
  static constexpr bool kChecksChannelFirst = false;
  static constexpr bool kChecksSoughtChannel = false;
  static constexpr bool kCopiesLists = false;
};

}  // namespace velora::common
