// The ink pack.
// Room: velora/wisp. Owns what the common pack owns; raises as it does.
#pragma once

#include "velora/common/core/CVelcase.h"
#include "velora/wisp/api/IVelcase.h"

namespace velora::v1::wisp::core {

using api::Configuration;

#define WISP_KIND(Name, List) , api::I##Name
using Kinds = common::core::KindsOf<api::IVelcase WISP_KINDS(WISP_KIND)>;
#undef WISP_KIND

class CVelcase : public common::core::CVelcaseOf<Configuration, Kinds> {
 public:
  CVelcase();
  ~CVelcase() override;
#define WISP_GETTER(Name, List) api::I##List* Get##List() const override;
  WISP_KINDS(WISP_GETTER)
#undef WISP_GETTER
};

}  // namespace velora::v1::wisp::core
