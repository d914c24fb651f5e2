// The ink factory, and the helper that makes an ink image's objects by type id.
// Room: velora/wisp. Raise as the common ones do.
#pragma once

#include "velora/common/core/CFactory.h"
#include "velora/wisp/api/IFactory.h"
#include "velora/wisp/core/CVelcase.h"
#include "velora/wisp/core/CVeltune.h"
#include "velora/wisp/core/components.h"

namespace velora::v1::wisp::core {

template <class T>
using CArrayOf = plinth::v1::core::CArray<Configuration, T>;

VELORA_PIPELINE_FACTORY(WISP_OBJECTS)

}  // namespace velora::v1::wisp::core
