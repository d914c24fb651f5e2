// The ink layer's instantiations, its factory, and its flat functions.
#include "velora/wisp/core/CFactory.h"

#include "velora/common/core/CFactory.inl"
#include "velora/wisp/core/components.inl"

namespace velora::v1::wisp::core {

VELORA_PIPELINE_FACTORY_BODIES(WISP_OBJECTS)

}  // namespace velora::v1::wisp::core

VELORA_FLAT_FAMILY(_velora_v1, velora::v1::wisp)
