// What the ink layer's classes use of the levels below, under short names.
// Room: velora/wisp. Names only.
#pragma once

#include "velora/common/core/CElement.h"
#include "velora/common/core/Create.h"
#include "velora/wisp/api/layer.h"

namespace velora::v1::wisp::core {

using api::Configuration;
using namespace plinth::v1::api::_exports::common::exception;
using common::core::Counted;
using common::core::Create;
using common::core::Defer;
using common::core::HandOver;

}  // namespace velora::v1::wisp::core
