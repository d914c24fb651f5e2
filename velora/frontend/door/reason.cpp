#include "velora/frontend/door/reason.h"

#include "plinth/runtime/api/CException.h"
#include "plinth/runtime/api/Trace.h"

namespace {

using plinth::v1::api::CurrentTrace;

constexpr velora_reason kNone = {VELORA_REASON_NONE, -1, -1, 0, nullptr, nullptr, ""};

// Of the call that runs, and of the last one that ended. In the thread's static block: access
// allocates nothing, so it cannot fail when memory has run out.
[[gnu::tls_model("initial-exec")]] thread_local velora_reason running = kNone;
[[gnu::tls_model("initial-exec")]] thread_local velora_reason last = kNone;

}  // namespace

int velora_last_reason(velora_reason* out) {
  if (out != nullptr) {
    *out = last;
    // Name and text are filled in here: a refusal itself stores numbers, and cannot fail.
    switch (last.number) {
#define VELORA_REASON(Name, Number, Text) \
  case Number:                            \
    out->name = "VELORA_REASON_" #Name;   \
    out->text = Text;                     \
    break;
      VELORA_REASONS(VELORA_REASON)
#undef VELORA_REASON
    }
  }
  return last.number;
}

namespace reason {

void Begin() {
  running = kNone;
  CurrentTrace() = {};
}

void Refuse(velora_reason_number number, int pack) {
  if (running.number == VELORA_REASON_NONE) {
    running.number = number;
    running.pack = pack;
  }
}

bool RefuseTraced(int code, const char* const* kinds) {
  const plinth::v1::api::Trace& trace = CurrentTrace();
  if (code == plinth::v1::api::CException_Memory_AllocationFailed::kCode) {
    Refuse(VELORA_REASON_NO_MEMORY);
    return true;
  }
  if (trace.cause == 0) {
    return false;
  }
  // `kind` belongs to this reason alone, so it is set only where the reason will stay.
  if (running.number == VELORA_REASON_NONE && trace.cause == VELORA_REASON_NO_COMPONENT) {
    running.kind = kinds[trace.sought - kFirstKind];
  }
  Refuse(static_cast<velora_reason_number>(trace.cause));
  return true;
}

void RefuseBoot() {
  Refuse(CurrentTrace().cause == VELORA_REASON_THREAD ? VELORA_REASON_THREAD
                                                      : VELORA_REASON_NO_MEMORY);
}

void RefusePack(int pack, uint32_t size, int code) {
  // A length has 16 bits and a sign.
  constexpr uint32_t kLargest = 32767;
  if (running.number != VELORA_REASON_NONE) {
    return;
  }
  if (code == plinth::v1::api::CException_Memory_AllocationFailed::kCode ||
      CurrentTrace().cause == VELORA_REASON_NO_MEMORY) {
    Refuse(VELORA_REASON_NO_MEMORY);
    return;
  }
  Refuse(size > kLargest                                ? VELORA_REASON_PACK_TOO_LARGE
         : CurrentTrace().cause == VELORA_REASON_FAMILY ? VELORA_REASON_FAMILY
                                                        : VELORA_REASON_PACK_DAMAGED,
         pack);
  // A pack that is too large is not read, so there is no place in it.
  if (running.number != VELORA_REASON_PACK_TOO_LARGE) {
    running.byte = CurrentTrace().byte;
    running.in_image = CurrentTrace().inImage ? 1 : 0;
  }
}

int End(int result) {
  if (result == 0) {
    Refuse(VELORA_REASON_TABLE);
  }
  // A call that was served leaves no reason, whatever it met on its way.
  last = result == 0 ? running : kNone;
  running = kNone;
  return result;
}

int Busy() {
  last = kNone;
  last.number = VELORA_REASON_BUSY;
  return 0;
}

}  // namespace reason
