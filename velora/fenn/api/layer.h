// The names under which the toner pipeline has what both pipelines share.
// Room: velora/fenn. Names only; see velora/common/api.
#pragma once

#include "velora/common/api/IFactory.h"
#include "velora/fenn/api/Vocabulary.h"

namespace velora::v2::fenn::api {

using common::api::IArray;
using common::api::IArray_int32;
using common::api::IArray_uint8;
using common::api::ILinkedList;
using common::api::ISerializer;
using common::api::ISerializerHelper;
using EPlatform = common::api::EPlatform<Configuration>;
using ESupplyFamily = common::api::ESupplyFamily<Configuration>;
using EProductVariant = common::api::EProductVariant<Configuration>;
using EVelcaseSchema = common::api::EVelcaseSchema<Configuration>;
using EVelcaseVersion = common::api::EVelcaseVersion<Configuration>;
using EChannel = common::api::EChannel<Configuration>;
using ITag = common::api::ITag<Configuration>;
using ITags = common::api::ITags<Configuration>;
using IProperty = common::api::IProperty<Configuration>;
using IProperties = common::api::IProperties<Configuration>;
using IConditions = common::api::IConditions<Configuration>;
using IRecipe = common::api::IRecipe<Configuration>;
using IComponent = common::api::IComponent<Configuration>;
using TypeIds = common::TypeIds<Configuration>;

}  // namespace velora::v2::fenn::api
