// The ink door in plain functions: sessions over the objects of the ink layer.
#include "velora/ink.h"

#include <limits.h>
#include <stddef.h>
#include <string.h>

#include <cstdlib>

#include "plinth/runtime/api/Trace.h"
#include "plinth/runtime/api/boot.h"
#include "plinth/runtime/posix/CThreadManager_Posix.h"
#include "velora/common/core/PackLayout.h"
#include "velora/frontend/door/reason.h"
#include "velora/wisp/api/door.h"

namespace ink = velora::v1::wisp::api;
using namespace plinth::v1::api;

namespace {

using Layout = velora::common::core::PackLayout<ink::Configuration>;

// By type id, from reason::kFirstKind on.
constexpr const char* kKinds[] = {
    "neutral nodes",    "seed nodes", "delta nodes", "complete nodes",
    "channel map",      "color map",  "gray curve",  "alternate neutral channel",
    "alternate neutral"};

struct Session {
  Session* next;
  uintptr_t handle;    // never used again, so a closed session is known for one
  int thread;          // that opened it
  bool forgetsThread;  // which no one knew before
  bool withPrinter;    // one of the packs is the printer's
  ink::_factory::IFactory* factory;
  ink::ISerializerHelper* helper;
  ink::IArray<ink::IVelcase>* packs;
  ink::IVelcase* pack;  // being read
  ink::IPrintModeMappings* mappings;
  ink::IVeltune* veltune;
};

// All of these are changed inside the door alone.
Session* sessions = nullptr;
uintptr_t lastHandle = 0;
Visit visit = {};  // what the sessions have opened

int ThisThread() { return _exports::posix::CThreadManager_Posix().GetThreadHandle(); }

Session* Find(const velora_ink_session* handle) {
  Session* session = sessions;
  while (session != nullptr && session->handle != reinterpret_cast<uintptr_t>(handle)) {
    session = session->next;
  }
  return session;
}

// The session, if it is one and this thread's.
Session* FindOwn(const velora_ink_session* handle) {
  Session* session = Find(handle);
  if (session == nullptr) {
    reason::Refuse(VELORA_REASON_ARGUMENT);
  } else if (session->thread != ThisThread()) {
    reason::Refuse(VELORA_REASON_THREAD);
    session = nullptr;
  }
  return session;
}

// Opens the ink layer, with a blank session in the list.
Session* Start() {
  Visit found = Enter();
  BootRecord* record = Boot(Slots<FlatConfiguration>());
  // A null record opens nothing.
  const bool open = InitializeLayer(Slots<ink::Configuration>(), record);
  FreeBootRecord(record);
  auto* session = open ? static_cast<Session*>(calloc(1, sizeof(Session))) : nullptr;
  if (session == nullptr) {
    reason::RefuseBoot();
    Leave(found);
    return nullptr;
  }
  // What any session opened stays open until the last one ends.
  for (int i = 0; i < kBlocks; ++i) {
    visit.closes[i] = visit.closes[i] || (found.closes[i] && IsFull(blocks[i]));
  }
  session->next = sessions;
  // A number and no address: a handle is looked up and never followed.
  session->handle = ++lastHandle;
  session->thread = ThisThread();
  session->forgetsThread = found.forgetsThread;
  sessions = session;
  return session;
}

// The thread stays known as long as it has a session.
void ForgetThread(const Session& ended) {
  if (!ended.forgetsThread || ended.thread != ThisThread()) {
    return;
  }
  for (Session* other = sessions; other != nullptr; other = other->next) {
    if (other->thread == ended.thread) {
      other->forgetsThread = true;
      return;
    }
  }
  CleanupThread(Slots<FlatConfiguration>());
}

template <class T>
void Destroy(T* object) {
  if (object != nullptr) {
    object->Destroy();
  }
}

// Users go ahead of what they use: the veltune points into the mappings. Any of them may be null
// where opening failed.
void End(Session* session) {
  Destroy(session->veltune);
  Destroy(session->mappings);
  Destroy(session->pack);
  Destroy(session->packs);
  Destroy(session->helper);
  Destroy(session->factory);
  Session** link = &sessions;
  while (*link != session) {
    link = &(*link)->next;
  }
  *link = session->next;
  ForgetThread(*session);
  free(session);
  if (sessions == nullptr) {
    Leave(visit);
  }
}

// The packs' bytes are not looked at.
bool CheckArguments(const ImagingBlob* const* apPacks, unsigned int nPacks, int platform,
                    int variant, velora_ink_session** session) {
  if (apPacks == nullptr || nPacks < 1 || nPacks > VELORA_MAX_PACKS || session == nullptr ||
      !ink::EPlatform::kRange.Contains(platform) ||
      !ink::EProductVariant::kRange.Contains(variant)) {
    reason::Refuse(VELORA_REASON_ARGUMENT);
    return false;
  }
  for (unsigned int i = 0; i < nPacks; ++i) {
    if (apPacks[i] == nullptr || apPacks[i]->data == nullptr || apPacks[i]->size > INT_MAX) {
      reason::Refuse(VELORA_REASON_ARGUMENT, static_cast<int>(i));
      return false;
    }
  }
  return true;
}

bool ReadPacks(Session& session, const ImagingBlob* const* apPacks, unsigned int nPacks,
               int platform, int variant) {
  constexpr int kRecordType = 1;
  // In force until velora_ink_mode.
  constexpr tWISPPrintModeMapping kMode = {PT_DATA_SOURCE_0, PT_MEDIA_0, PT_QUALITY_0, 0, 1};
  constexpr auto kEndianness = ink::ISerializer::ETargetEndianness::Reversed;
  for (unsigned int i = 0; i < nPacks; ++i) {
    session.withPrinter = session.withPrinter || (apPacks[i]->size >= Layout::kPayloadEnd &&
                                                  apPacks[i]->data[Layout::kChannel] ==
                                                      velora::common::api::kChannel_Printer);
  }
  // The first pack sets the family; each pack, this one too, is compared with it as it is read.
  const int family = apPacks[0]->size > Layout::kFamily ? apPacks[0]->data[Layout::kFamily] : 0;
  int reached = 0;  // packs that are read
  const int code = ink::Try([&] {
    session.factory = static_cast<ink::_factory::IFactory*>(_velora_v1_CreateFactory_Posix_So());
    session.factory->Init();
    session.helper = session.factory->CreateSerializerHelper();
    session.helper->Init();
    session.packs = session.factory->CreateArray_Velcase();
    session.packs->Init(kRecordType, static_cast<int>(nPacks));
    for (unsigned int i = 0; i < nPacks; ++i) {
      session.pack = session.factory->CreateVelcase();
      session.pack->Init(static_cast<int>(apPacks[i]->size),
                         const_cast<unsigned char*>(apPacks[i]->data), session.helper, kEndianness,
                         static_cast<ink::ESupplyFamily::Enum>(family), apPacks[i]->size);
      session.packs->Set(static_cast<int>(i), session.pack);
      // The array holds it from here on.
      session.pack->Destroy();
      session.pack = nullptr;
      reached = static_cast<int>(i) + 1;
    }
    session.mappings = session.factory->CreatePrintModeMappings();
    session.mappings->Init();
    session.veltune = session.factory->CreateVeltune();
    session.veltune->Init(static_cast<ink::EPlatform::Enum>(platform),
                          static_cast<ink::EProductVariant::Enum>(variant), session.packs,
                          session.mappings, &kMode);
  });
  if (code == 0) {
    return true;
  }
  // The body was left while it read a pack.
  if (session.pack != nullptr) {
    reason::RefusePack(reached, 0, code);
  }
  reason::RefuseTraced(code, kKinds);
  reason::Refuse(session.withPrinter ? VELORA_REASON_PACKS_CONFLICT
                                     : VELORA_REASON_NO_PRINTER_PACK);
  return false;
}

// What is different from record to record: the longest locator, the least size of a record, how a
// locator lies in one, how much of such an input is read, and the operation.
template <class Record>
struct Kind;

template <>
struct Kind<WISPColorMap> {
  static constexpr unsigned int kLongest = 0xFFFF;
  static constexpr unsigned int kLeast = VELORA_SIZE_WISP_COLOR_MAP;
  static constexpr auto kPopulate = &ink::IVeltune::PopulateWISPColorMap;
  // A whole one has 116 KiB, most of which a request would only clear.
  static size_t InputSize(unsigned int length) { return offsetof(WISPColorMap, data) + length; }
  static void Place(WISPColorMap* input, const unsigned char* locator, unsigned int length) {
    input->payloadLength = static_cast<uint16_t>(length);
    memcpy(input->data.payload, locator, length);
  }
};

template <>
struct Kind<WISPGrayCurve> {
  static constexpr unsigned int kLongest = VELORA_WISP_MAX_PAYLOAD;
  static constexpr unsigned int kLeast = sizeof(WISPGrayCurve);
  static constexpr auto kPopulate = &ink::IVeltune::PopulateWISPGrayCurve;
  static size_t InputSize(unsigned int) { return sizeof(WISPGrayCurve); }
  static void Place(WISPGrayCurve* input, const unsigned char* locator, unsigned int length) {
    input->payloadLength = length;
    memcpy(input->curve, locator, length);
  }
};

template <>
struct Kind<WISPAlternateNeutral> {
  static constexpr unsigned int kLongest = VELORA_WISP_MAX_PAYLOAD;
  static constexpr unsigned int kLeast = sizeof(WISPAlternateNeutral);
  static constexpr auto kPopulate = &ink::IVeltune::PopulateWISPAlternateNeutral;
  static size_t InputSize(unsigned int) { return sizeof(WISPAlternateNeutral); }
  static void Place(WISPAlternateNeutral* input, const unsigned char* locator,
                    unsigned int length) {
    input->payloadLength = length;
    for (unsigned int i = 0; i < length; ++i) {
      input->nodes[i] = locator[i];
    }
  }
};

template <class Record>
int Serve(Session& session, int index, const char* path, const void* locator, unsigned int length,
          Record* record, unsigned int size) {
  using Asked = Kind<Record>;
  if (index < 0 || index >= ink::ICache<ink::IColorMap>::kMaxIndices || path == nullptr ||
      path[0] == '\0' || locator == nullptr || length < 1 || length > Asked::kLongest ||
      record == nullptr) {
    reason::Refuse(VELORA_REASON_ARGUMENT);
    return 0;
  }
  if (size < Asked::kLeast) {
    reason::Refuse(VELORA_REASON_BUFFER);
    return 0;
  }
  // A record of its own, so that the caller's stays as it was whatever fails.
  auto* input = static_cast<Record*>(calloc(1, Asked::InputSize(length)));
  if (input == nullptr) {
    reason::Refuse(VELORA_REASON_NO_MEMORY);
    return 0;
  }
  Asked::Place(input, static_cast<const unsigned char*>(locator), length);
  int written = 0;
  // The object world counts in int; more than it can count is room enough.
  const int capacity = static_cast<int>(size < INT_MAX ? size : INT_MAX);
  const int code = ink::Try([&] {
    written = (session.veltune->*Asked::kPopulate)(index, path, input, capacity, record);
  });
  free(input);
  if (code == 0) {
    return written;
  }
  // Where nothing was noted: without the printer's pack no condition can be asked; if no lookup
  // found anything, the locator did not read; otherwise what it names does not build.
  if (!reason::RefuseTraced(code, kKinds)) {
    reason::Refuse(!session.withPrinter        ? VELORA_REASON_NO_PRINTER_PACK
                   : CurrentTrace().found == 0 ? VELORA_REASON_LOCATOR
                                               : VELORA_REASON_TABLE);
  }
  return 0;
}

template <class Record>
int Request(velora_ink_session* handle, int index, const char* path, const void* locator,
            unsigned int length, Record* record, unsigned int size) {
  return reason::Through([&] {
    Session* session = FindOwn(handle);
    return session == nullptr ? 0 : Serve(*session, index, path, locator, length, record, size);
  });
}

}  // namespace

// The session is set to null ahead of the door, so also by a call that is refused there.
int velora_ink_open(const ImagingBlob* const* apPacks, unsigned int nPacks, int platform,
                    int variant, velora_ink_session** session) {
  if (session != nullptr) {
    *session = nullptr;
  }
  return reason::Through([&] {
    if (!CheckArguments(apPacks, nPacks, platform, variant, session)) {
      return 0;
    }
    Session* made = Start();
    if (made == nullptr) {
      return 0;
    }
    if (!ReadPacks(*made, apPacks, nPacks, platform, variant)) {
      End(made);
      return 0;
    }
    *session = reinterpret_cast<velora_ink_session*>(made->handle);
    return 1;
  });
}

int velora_ink_mode(velora_ink_session* session, const tWISPPrintModeMapping* mode) {
  return reason::Through([&] {
    Session* own = FindOwn(session);
    if (own == nullptr) {
      return 0;
    }
    if (mode == nullptr) {
      reason::Refuse(VELORA_REASON_ARGUMENT);
      return 0;
    }
    const int code = ink::Try([&] { own->veltune->Update(mode); });
    if (code != 0) {
      reason::RefuseTraced(code, kKinds);
    }
    return code == 0 ? 1 : 0;
  });
}

int velora_ink_color_map(velora_ink_session* session, int index, const char* path,
                         const void* locator, unsigned int length, WISPColorMap* record,
                         unsigned int size) {
  return Request(session, index, path, locator, length, record, size);
}

int velora_ink_gray_curve(velora_ink_session* session, int index, const char* path,
                          const void* locator, unsigned int length, WISPGrayCurve* record,
                          unsigned int size) {
  return Request(session, index, path, locator, length, record, size);
}

int velora_ink_alternate_neutral(velora_ink_session* session, int index, const char* path,
                                 const void* locator, unsigned int length,
                                 WISPAlternateNeutral* record, unsigned int size) {
  return Request(session, index, path, locator, length, record, size);
}

int velora_ink_close(velora_ink_session* session) {
  return reason::Through([&] {
    // Any thread may end a session, so its owner is not asked for.
    Session* ended = Find(session);
    if (ended != nullptr) {
      End(ended);
    } else if (session != nullptr) {
      reason::Refuse(VELORA_REASON_ARGUMENT);
      return 0;
    }
    return 1;
  });
}
