// The toner pack.
// Room: velora/fenn. Owns what the common pack owns; raises as it does.
#pragma once

#include "velora/common/core/CVelcase.h"
#include "velora/fenn/api/IVelcase.h"

namespace velora::v2::fenn::core {

using api::Configuration;

#define FENN_KIND(Name, List) , api::I##Name
using Kinds = common::core::KindsOf<api::IVelcase FENN_KINDS(FENN_KIND)>;
#undef FENN_KIND

class CVelcase : public common::core::CVelcaseOf<Configuration, Kinds> {
 public:
  CVelcase();
  ~CVelcase() override;
  int GetPipeline() const override { return common::core::CVelcase<Configuration>::GetPipeline(); }
#define FENN_GETTER(Name, List) api::I##List* Get##List() const override;
  FENN_KINDS(FENN_GETTER)
#undef FENN_GETTER
};

}  // namespace velora::v2::fenn::core
