// The sizes of scratch buffer in which both formatting handlers try a text.
// Room: plinth/runtime. Constants; nobody owns anything, nothing fails.
#pragma once

namespace plinth::v1::api::_exports::posix::handler {

constexpr int kScratchStep = 4096;
constexpr int kScratchLimit = 32 * kScratchStep;

}  // namespace plinth::v1::api::_exports::posix::handler
