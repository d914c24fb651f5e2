// The tag types of the two velora layers.
// Room: velora/common. Empty types; see plinth/runtime/api/Configuration.h for what they select.
#pragma once

#include "plinth/runtime/api/Configuration.h"

namespace velora::v1::wisp::api {
struct Configuration {
  static constexpr auto kBlock = plinth::v1::api::EBlock::Ink;
};
}  // namespace velora::v1::wisp::api

namespace velora::v2::fenn::api {
struct Configuration {
  static constexpr auto kBlock = plinth::v1::api::EBlock::Toner;
};
}  // namespace velora::v2::fenn::api

// One set of templates under the names of both versions.
namespace velora::common::api {}
namespace velora::common::core {}
namespace velora::v1 {
namespace common = ::velora::common;
}
namespace velora::v2 {
namespace common = ::velora::common;
}
