// The tag types that select a layer's block of runtime pointers.
// Room: plinth/runtime. Empty types; nobody owns anything, nothing fails.
//
// A layer's `Configuration` has no members. Its one effect is to choose the `BootSlots` through
// which code instantiated over it allocates, raises and finds its thread. The flat entries and the
// front end are no layers, but have blocks like them, and so tags of their own.
#pragma once

namespace plinth::v1::api {

struct Configuration {};
struct FlatConfiguration {};
struct FrontEndConfiguration {};

}  // namespace plinth::v1::api
