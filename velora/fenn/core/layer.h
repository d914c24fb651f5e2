// What the toner layer's classes use of the levels below, under short names.
// Room: velora/fenn. Names only.
#pragma once

#include "velora/common/core/CElement.h"
#include "velora/common/core/Create.h"
#include "velora/fenn/api/layer.h"

namespace velora::v2::fenn::core {

using api::Configuration;
using namespace plinth::v1::api::_exports::common::exception;
using common::core::Counted;
using common::core::Create;
using common::core::Defer;
using common::core::HandOver;

}  // namespace velora::v2::fenn::core
