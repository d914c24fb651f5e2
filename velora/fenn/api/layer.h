// The names under which the toner pipeline has what both pipelines share.
// Room: velora/fenn. Names only; see velora/common/api.
#pragma once

#include "velora/common/api/layer.h"
#include "velora/fenn/api/Vocabulary.h"

namespace velora::v2::fenn::api {

using common::api::IArray;
using common::api::IArray_int32;
using common::api::IArray_uint8;
using common::api::ILinkedList;
using common::api::ISerializer;
using common::api::ISerializerHelper;
#define FENN_NAME(Name) using Name = common::api::Name<Configuration>;
VELORA_LAYER_NAMES(FENN_NAME)
#undef FENN_NAME
using TypeIds = common::TypeIds<Configuration>;

}  // namespace velora::v2::fenn::api
