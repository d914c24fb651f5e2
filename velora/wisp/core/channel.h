// The description of an ink in the caller's records.
// Room: velora/wisp. A required property that is not there raises `CException_General`, a
// resolution out of range `CException_Parameter_Invalid`, more drops than a record has room for
// `CException_This_Invalid`.
#pragma once

#include "velora/wisp/core/words.h"

namespace velora::v1::wisp::core {

// Fills a zeroed record from the properties of a component.
void FillChannel(api::IProperties* properties, WISPColorMapChannel* channel);

}  // namespace velora::v1::wisp::core
