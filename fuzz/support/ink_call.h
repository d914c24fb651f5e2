// Ink requests through the door, held to the promise. The door stays open from run to run, and is
// closed and opened again now and then.
// Room: fuzz. A request owns its bytes; the door's objects live as long as the process.
#pragma once

#include "fuzz/support/packs.h"
#include "velora/wisp/api/door.h"

namespace fuzz {

namespace ink = velora::v1::wisp::api;

struct InkRequest {
  enum Kind { kColor, kGray, kNeutral, kKinds };

  int kind = kColor;
  Bytes locator;
  int claimed = -1;  // given as its length; -1: the truth
  int index = 3;
  int short_of = 0;  // bytes that the output is too small
  bool other_mode = false;
};

struct InkCall {
  int platform = 1;
  int family = 0;
  std::vector<Bytes> packs;
  std::vector<InkRequest> requests;
};

// Opens the packs and makes the requests, each into a record of exact size; answers how many were
// served. A refused one leaves its record alone. Every 64th time, known requests follow.
int Run(const InkCall& call, Bytes* last = nullptr);

// Closes the door until the next run.
void CloseInk();

// The call of tests/data/vectors with the requests of all kinds.
const InkCall& VectorInk();
Bytes VectorLocator(int kind);
// Requests of all kinds to a pack with the tag 50=1 on its tables, as SoundInk makes it.
InkCall PlainRequests(const Bytes& pack);

}  // namespace fuzz
