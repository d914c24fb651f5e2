// The toner layer's instantiations, its factory, and its flat functions.
#include "velora/fenn/core/CFactory.h"

#include "velora/common/core/CFactory.inl"
#include "velora/fenn/core/components.inl"

namespace velora::v2::fenn::core {

VELORA_PIPELINE_FACTORY_BODIES(FENN_OBJECTS)

}  // namespace velora::v2::fenn::core

VELORA_FLAT_FAMILY(_velora_v2, velora::v2::fenn)
