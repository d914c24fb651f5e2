// The getters of the ten lists, from the table of kinds.
#include "velora/fenn/core/CVelcase.h"

namespace velora::v2::fenn::core {

CVelcase::CVelcase() = default;

CVelcase::~CVelcase() = default;

#define FENN_GETTER(Name, List) \
  api::I##List* CVelcase::Get##List() const { return this->GetList<api::I##Name>(); }
FENN_KINDS(FENN_GETTER)
#undef FENN_GETTER

}  // namespace velora::v2::fenn::core
