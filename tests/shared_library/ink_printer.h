// An ink printer as a program outside the library has it: the door open, and a CVeltune over the
// vector's pack.
// Room: tests. Owns what Open made, until Close; a failure of Open leaves what was made so far to
// Close as well.
#pragma once

#include <string.h>

#include <algorithm>
#include <type_traits>

#include "tests/shared_library/table_call.h"
#include "tests/support/locator.h"
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
    const bool open = factory != nullptr;
    End();
    if (open) {
      ink::Close();
    }
  }
  // What was made, and not the door.
  void End() {
    End(veltune);
    End(velcases);
    End(velcase);
    End(helper);
    End(mappings);
    End(factory);
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

// How a record is asked for.
#define INK_REQUEST(Name)                                                                       \
  inline int Populate(ink::IVeltune* veltune, const Name* input, Name* output) {                \
    return veltune->Populate##Name(3, "path", input, static_cast<int>(sizeof *output), output); \
  }
INK_REQUEST(WISPColorMap)
INK_REQUEST(WISPGrayCurve)
INK_REQUEST(WISPAlternateNeutral)
#undef INK_REQUEST

// A request of the vector, "color", "gray" or "neutral", and the bytes that answer it.
template <class Record>
class VectorRequest {
 public:
  explicit VectorRequest(const std::string& name)
      : expected_(ReadData("vectors/ink/expected-" + name + ".bin")) {
    velora_test::SetLocator(&input_, ReadData("vectors/ink/locator-" + name + ".bin"));
  }
  // The code that ended it.
  int Ask(const InkPrinter& printer) {
    memset(static_cast<void*>(&output_), 0, sizeof output_);
    return ink::Try([&] { size_ = Populate(printer.veltune, &input_, &output_); });
  }
  // Whether the last one is answered, or has written nothing.
  bool Holds(bool answered) {
    if constexpr (std::is_same_v<Record, WISPColorMap>) {
      output_.printModeMapping = 0;  // a mark of the process
    }
    Bytes right(sizeof output_);
    if (answered) {
      std::copy(expected_.begin(), expected_.end(), right.begin());
    }
    return memcmp(&output_, right.data(), right.size()) == 0 &&
           (!answered || size_ == static_cast<int>(expected_.size()));
  }

 private:
  Record input_ = {}, output_ = {};
  Bytes expected_;
  int size_ = 0;
};
