// The toner factory, and the helper that makes a toner image's objects by type id.
// Room: velora/fenn. Raise as the common ones do.
#pragma once

#include "velora/common/core/CFactory.h"
#include "velora/fenn/api/IFactory.h"
#include "velora/fenn/core/CVelcase.h"
#include "velora/fenn/core/CVeltune.h"
#include "velora/fenn/core/components.h"

namespace velora::v2::fenn::core {

template <class T>
using CArrayOf = plinth::v1::core::CArray<Configuration, T>;

VELORA_PIPELINE_FACTORY(FENN_OBJECTS)

}  // namespace velora::v2::fenn::core
