// The names under which the ink pipeline has what both pipelines share.
// Room: velora/wisp. Names only; see velora/common/api.
#pragma once

#include "velora/common/api/layer.h"
#include "velora/wisp/api/Vocabulary.h"

namespace velora::v1::wisp::api {

// The common names, for this pipeline's layer.
using common::api::IArray;
using common::api::IArray_int32;
using common::api::IArray_uint8;
using common::api::ILinkedList;
using common::api::ISerializer;
using common::api::ISerializerHelper;
#define WISP_NAME(Name) using Name = common::api::Name<Configuration>;
VELORA_LAYER_NAMES(WISP_NAME)
#undef WISP_NAME
using TypeIds = common::TypeIds<Configuration>;

}  // namespace velora::v1::wisp::api
