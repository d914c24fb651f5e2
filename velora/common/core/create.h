// Making blank objects of a layer by class.
// Room: velora/common. The caller owns the result's one reference; out of memory raises
// `CException_Memory_AllocationFailed`.
#pragma once

#include "plinth/runtime/api/frame.h"

namespace velora::common::core {

using plinth::v1::api::Defer;
using plinth::v1::api::HandOver;

template <class Configuration, class Class>
Class* Create() {
  return new (plinth::v1::api::Slots<Configuration>().platform, false, true) Class;
}

}  // namespace velora::common::core
