// An ink printer as a program outside the library has it: the door open, and a CVeltune over the
// vector's pack.
// Room: tests. Owns what Open made, until Close; a failure of Open leaves what was made so far to
// Close as well.
#pragma once

#include <string.h>

#include "tests/shared_library/table_call.h"
#include "velora/wisp/api/door.h"

namespace ink = velora::v1::wisp::api;

struct InkPrinter {
  static constexpr auto kPlatform = ink::EPlatform::Enum(2);
  static constexpr auto kFamily = ink::ESupplyFamily::Enum(3);
  static constexpr tWISPPrintModeMapping kMode = {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1};

  // The code of what failed; -1 when the door stays shut.
  int Open(const Bytes& pack) {
    factory = ink::Open();
    return factory == nullptr ? -1 : ink::Try([this, &pack] { Make(pack); });
  }
  void Make(const Bytes& pack) {
    helper = factory->CreateSerializerHelper();
    helper->Init();
    velcase = factory->CreateVelcase();
    velcase->Init(static_cast<int>(pack.size()), const_cast<unsigned char*>(pack.data()), helper,
                  ink::ISerializer::ETargetEndianness::Reversed, kFamily,
                  static_cast<unsigned int>(pack.size()));
    velcases = factory->CreateArray_Velcase();
    velcases->Init(1, 1);
    velcases->Set(0, velcase);
    mappings = factory->CreatePrintModeMappings();
    mappings->Init();
    veltune = factory->CreateVeltune();
    veltune->Init(kPlatform, ink::EProductVariant::Enum(0), velcases, mappings, &kMode);
  }
  void Close() {
    End(veltune);
    End(velcases);
    End(velcase);
    End(helper);
    End(mappings);
    if (factory != nullptr) {
      End(factory);
      ink::Close();
    }
  }

  ink::_factory::IFactory* factory = nullptr;
  ink::ISerializerHelper* helper = nullptr;
  ink::IVelcase* velcase = nullptr;
  ink::IArray<ink::IVelcase>* velcases = nullptr;
  ink::IPrintModeMappings* mappings = nullptr;
  ink::IVeltune* veltune = nullptr;

 private:
  template <class T>
  static void End(T*& object) {
    if (object != nullptr) {
      object->Destroy();
      object = nullptr;
    }
  }
};

// A record's locator, and its request.
inline void SetLocator(WISPColorMap* record, const Bytes& locator) {
  record->payloadLength = static_cast<uint16_t>(locator.size());
  memcpy(record->data.payload, locator.data(), locator.size());
}
inline void SetLocator(WISPGrayCurve* record, const Bytes& locator) {
  record->payloadLength = static_cast<uint32_t>(locator.size());
  memcpy(record->curve, locator.data(), locator.size());
}
inline void SetLocator(WISPAlternateNeutral* record, const Bytes& locator) {
  record->payloadLength = static_cast<uint32_t>(locator.size());
  for (size_t i = 0; i < locator.size(); ++i) {
    record->nodes[i] = locator[i];
  }
}
#define INK_REQUEST(Name)                                                                       \
  inline int Populate(ink::IVeltune* veltune, const Name* input, Name* output) {                \
    return veltune->Populate##Name(3, "path", input, static_cast<int>(sizeof *output), output); \
  }
INK_REQUEST(WISPColorMap)
INK_REQUEST(WISPGrayCurve)
INK_REQUEST(WISPAlternateNeutral)
#undef INK_REQUEST
