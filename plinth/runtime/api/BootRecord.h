// The three objects that every layer shares, and the static block in which a layer keeps them.
// Room: plinth/runtime. A record owns nothing; a block holds one counted reference on each of its
// three objects from the moment the pointer is stored. Failure is a result; nothing here raises.
#pragma once

#include "plinth/runtime/api/Configuration.h"

namespace plinth::v1::api {
class IBootManager;
class CThreadContextManager;
class CPlatform;
}  // namespace plinth::v1::api

// Built by whoever boots; the layers take the three pointers out of it and do not keep it.
struct BootRecord {
  plinth::v1::api::IBootManager* bootManager;
  plinth::v1::api::CThreadContextManager* threadContextManager;
  plinth::v1::api::CPlatform* platform;
};

namespace plinth::v1::api {

struct BootSlots {
  CPlatform* platform;
  IBootManager* bootManager;
  CThreadContextManager* threadContextManager;
  bool bootClaimed;     // a thread has started filling `bootManager`
  bool bootReady;       // `bootManager` is filled
  bool contextReady;    // `threadContextManager` and `platform` are filled
  bool contextClaimed;  // a thread has started filling them
};

template <class Configuration>
struct Block {
  static BootSlots slots;
};

template <class Configuration>
BootSlots Block<Configuration>::slots = {};

// The block of a layer: the one way to the runtime, whatever the layer.
template <class Configuration>
inline BootSlots& Slots() {
  return Block<Configuration>::slots;
}

// The boot manager through which the process-wide objects end: that of the block being cleaned,
// otherwise that of the flat block, the front end or the foundation, whichever is filled first.
IBootManager* ResidentBootManager();

// Fills a block from a record, once: a full block keeps what it has and counts nothing. Threads
// that come while another fills wait in steps of 5 ms. False for a null record, a null pointer in
// it, or a block that was filled without an object.
bool Initialize(BootSlots& slots, const BootRecord* record);

// Forgets the calling thread in the block's thread context manager.
void CleanupThread(BootSlots& slots);

// Drops the block's platform, thread context manager and boot manager in this order, and clears
// its state bytes.
void CleanupProcess(BootSlots& slots);

}  // namespace plinth::v1::api
