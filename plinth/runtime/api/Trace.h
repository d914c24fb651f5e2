// What a thread's call noted of itself on its way, for the door to say why it was refused.
// Room: plinth/runtime. One a thread, in static thread-local memory; plain stores that cannot fail.
#pragma once

namespace plinth::v1::api {

struct Trace {
  int cause;     // a VELORA_REASON_ number where the place of the failure knows it; otherwise 0
  int sought;    // the type id of the component that was last looked for
  int found;     // lookups that found something
  int byte;      // of the pack being read: the place that was last looked at
  bool inImage;  // `byte` counts in the inflated image
};

// The calling thread's. It outlives each call, so whoever begins one clears it.
Trace& CurrentTrace();

}  // namespace plinth::v1::api
