// The object world of a table call. The door lets in one call at a time, so the globals need no
// lock.
#include "plinth/runtime/api/boot.h"
#include "velora/common/core/Create.h"
#include "velora/common/core/PackLayout.h"
#include "velora/frontend/door/library.h"
#include "velora/frontend/door/reason.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/message.h"

namespace fenn = velora::v2::fenn::api;

fenn::_factory::IFactory* g_pFactory = nullptr;
fenn::IPrintModeMappings* g_pPrintModeMappings = nullptr;

namespace {

using namespace plinth::v1::api;

using Layout = velora::common::core::PackLayout<fenn::Configuration>;

constexpr char kInitLibrary[] = "initLibrary";

// What the library has opened, to be closed when it goes down.
Visit visit = {};

// Fills the front end's block, from the given boot if there is one, and opens the layers.
bool OpenLayers(BootRecord* given) {
  BootSlots& frontEnd = Slots<FrontEndConfiguration>();
  // A given boot must be whole: one that lacks an object is refused.
  if (given != nullptr &&
      (!Initialize(frontEnd, given) || !Initialize(Slots<Configuration>(), given))) {
    Ctr::PrintLine(kInitLibrary, 178, "Could not initialize Plinth library");
    reason::Refuse(VELORA_REASON_ARGUMENT);
    return false;
  }
  // A given boot has filled the block; this one then only makes the thread known.
  BootRecord* record = Boot(frontEnd);
  const bool open = Initialize(Slots<Configuration>(), record) &&
                    Initialize(Slots<fenn::Configuration>(), record);
  FreeBootRecord(record);
  if (!open) {
    reason::RefuseBoot();
    Ctr::PrintLine(kInitLibrary, 186, "Could not initialize Velora library");
  }
  return open;
}

// Both or neither: a raise in between ends what was made.
bool MakeFactory() {
  fenn::_factory::IFactory* volatile factory = nullptr;
  fenn::IPrintModeMappings* volatile mappings = nullptr;
  volatile bool made = false;
  PLINTH_FRAME(FrontEndConfiguration) {
    factory = static_cast<fenn::_factory::IFactory*>(_velora_v2_CreateFactory_Posix_Lib());
    factory->Init();
    mappings = factory->CreatePrintModeMappings();
    mappings->Init();
    g_pFactory = factory;
    g_pPrintModeMappings = mappings;
    made = true;
  }
  PLINTH_CATCH {
    Ctr::PrintLine(kInitLibrary, 240, "Exception");
    reason::Refuse(VELORA_REASON_NO_MEMORY);
    if (mappings != nullptr) {
      mappings->Destroy();
    }
    if (factory != nullptr) {
      factory->Destroy();
    }
  }
  PLINTH_END
  return made;
}

}  // namespace

bool initLibrary(void* pBootRecord) {
  // Ahead of all that opens, so that Leave closes what a failed start has opened.
  visit = Enter();
  if (OpenLayers(static_cast<BootRecord*>(pBootRecord)) && MakeFactory()) {
    return true;
  }
  Leave(visit);
  return false;
}

void releaseLibrary() {
  // Mappings and factory are objects of the layers, so they end ahead of them.
  if (g_pPrintModeMappings != nullptr) {
    g_pPrintModeMappings->Destroy();
    g_pPrintModeMappings = nullptr;
  }
  if (g_pFactory != nullptr) {
    g_pFactory->Destroy();
    g_pFactory = nullptr;
  }
  Leave(visit);
}

void RefuseRequest(int code, int ePlatform, int eSupplyFamily, int eProductVariant,
                   ctr_theme_type eThemeType, ctr_media_type eMediaType, ctr_axis_type eAxisType,
                   unsigned int nVelcases, RawData* pRawData) {
  // By type id, from reason::kFirstKind on.
  static constexpr const char* kKinds[] = {
      "color map",     "gray curve",        "channel map",  "color coefficients",
      "color residue", "mono coefficients", "mono residue", "mono widths",
      "scalar",        "fuser blob"};
  const bool inRange = fenn::EPlatform::kRange.Contains(ePlatform) &&
                       fenn::ESupplyFamily::kRange.Contains(eSupplyFamily) &&
                       fenn::EProductVariant::kRange.Contains(eProductVariant) &&
                       eThemeType <= CTR_THEME_10 && eMediaType <= CTR_MEDIA_H &&
                       eAxisType <= CTR_AXIS_MONO;
  if (!inRange) {
    reason::Refuse(VELORA_REASON_ARGUMENT);
    return;
  }
  bool withPrinter = false;
  for (unsigned int i = 0; i < nVelcases; ++i) {
    const BytePacket* packet = pRawData->getVelcase(i);
    // A pack too short for its header is not looked into.
    withPrinter =
        withPrinter || (packet != nullptr && packet->length >= Layout::kPayloadEnd &&
                        packet->data[Layout::kChannel] == velora::common::api::kChannel_Printer);
  }
  if (code != CException_Memory_AllocationFailed::kCode && !withPrinter) {
    reason::Refuse(VELORA_REASON_NO_PRINTER_PACK);
  }
  reason::RefuseTraced(code, kKinds);
}

fenn::IVeltune* createVeltune(int ePlatform, int eSupplyFamily, int eProductVariant,
                              ctr_table_type eTableType, ctr_theme_type eThemeType,
                              ctr_media_type eMediaType, ctr_axis_type eAxisType,
                              unsigned int nVelcases, RawData* pRawData, CT_PROCESSING* pCT) {
  if (g_pFactory == nullptr || g_pPrintModeMappings == nullptr) {
    return nullptr;
  }
  fenn::IVeltune* volatile veltune = nullptr;
  volatile unsigned int reached = 0;  // packs that are read
  PLINTH_FRAME(FrontEndConfiguration) {
    constexpr int kRecordType = 3;
    constexpr auto kEndianness = fenn::ISerializer::ETargetEndianness::Reversed;
    fenn::ISerializerHelper* helper = Defer(frame, g_pFactory->CreateSerializerHelper());
    helper->Init();
    fenn::IArray<fenn::IVelcase>* packs = Defer(frame, g_pFactory->CreateArray_Velcase());
    packs->Init(kRecordType, static_cast<int>(nVelcases));
    for (unsigned int i = 0; i < nVelcases; ++i) {
      const BytePacket* packet = pRawData->getVelcase(i);
      if (packet == nullptr) {
        PLINTH_RAISE(CException_General);
      }
      fenn::IVelcase* pack = Defer(frame, g_pFactory->CreateVelcase());
      // The length has 16 bits and a sign; the extent says how far the pack's bytes may be read.
      pack->Init(packet->length, packet->data, helper, kEndianness,
                 static_cast<fenn::ESupplyFamily::Enum>(eSupplyFamily),
                 pRawData->getVelcaseExtent(i));
      packs->Set(static_cast<int>(i), pack);
      reached = i + 1;
    }
    veltune = g_pFactory->CreateVeltune();
    veltune->Init(static_cast<fenn::EPlatform::Enum>(ePlatform),
                  static_cast<fenn::EProductVariant::Enum>(eProductVariant), packs,
                  g_pPrintModeMappings, eTableType, eThemeType, eMediaType, eAxisType, pRawData,
                  pCT);
  }
  PLINTH_CATCH {
    Ctr::PrintLine("createVeltune", 376, "Exception");
    // The first reason stays: a pack that does not read, then what is wrong with the request, then
    // packs that do not go together.
    const int code = frame.exception->code;
    if (fenn::ESupplyFamily::kRange.Contains(eSupplyFamily) && reached < nVelcases) {
      reason::RefusePack(static_cast<int>(reached), pRawData->getVelcaseExtent(reached), code);
    }
    RefuseRequest(code, ePlatform, eSupplyFamily, eProductVariant, eThemeType, eMediaType,
                  eAxisType, nVelcases, pRawData);
    reason::Refuse(VELORA_REASON_PACKS_CONFLICT);
    if (veltune != nullptr) {
      veltune->Destroy();
      veltune = nullptr;
    }
  }
  PLINTH_END
  return veltune;
}
