// The tag types that select a layer's block of runtime pointers.
// Room: plinth/runtime. Empty types; nobody owns anything, nothing fails.
//
// A layer's `Configuration` has no field. Its one effect is to choose the `BootSlots` through which
// code instantiated over it allocates and finds its thread. The flat entries and the front end are
// no layers, but have blocks like them, and so tags of their own.
#pragma once

namespace plinth::v1::api {

// A block is emptied before those that are listed ahead of it.
enum class EBlock { Flat, FrontEnd, Foundation, Ink, Toner };
constexpr int kBlocks = 5;

struct Configuration {
  static constexpr EBlock kBlock = EBlock::Foundation;
};
struct FlatConfiguration {
  static constexpr EBlock kBlock = EBlock::Flat;
};
struct FrontEndConfiguration {
  static constexpr EBlock kBlock = EBlock::FrontEnd;
};

}  // namespace plinth::v1::api
