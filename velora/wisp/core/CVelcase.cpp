// The getters of the eight lists, from the table of kinds.
#include "velora/wisp/core/CVelcase.h"

namespace velora::v1::wisp::core {

CVelcase::CVelcase() = default;

CVelcase::~CVelcase() = default;

#define WISP_GETTER(Name, List) \
  api::I##List* CVelcase::Get##List() const { return this->GetList<api::I##Name>(); }
WISP_KINDS(WISP_GETTER)
#undef WISP_GETTER

}  // namespace velora::v1::wisp::core
