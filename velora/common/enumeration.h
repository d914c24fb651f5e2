// Enumerations: a nested `Enum` without enumerator names, and a `Check` of its range.
// Room: velora/common. The numbers come from the data and mean nothing but equality here, save the
// channels below. `Check` raises `CException_Parameter_Invalid`; values read from an image are not
// checked.
#pragma once

#include "plinth/runtime/api/raise.h"
#include "velora/common/Vocabulary.h"

// The inside of an enumeration, over its range.
#define VELORA_ENUM(...)                                             \
  enum Enum : int {};                                                \
  static constexpr ::velora::common::Range kRange = __VA_ARGS__;     \
  static void Check(Enum value) {                                    \
    if (!kRange.Contains(value)) {                                   \
      PLINTH_RAISE(::plinth::v1::api::CException_Parameter_Invalid); \
    }                                                                \
  }

// An enumeration over the layer's range of the same name.
#define VELORA_ENUMERATION(Name)                                   \
  template <class Configuration>                                   \
  struct Name {                                                    \
    VELORA_ENUM(::velora::common::Vocabulary<Configuration>::Name) \
  };

namespace velora::common::api {

VELORA_ENUMERATION(EPlatform)
VELORA_ENUMERATION(ESupplyFamily)
VELORA_ENUMERATION(EProductVariant)
VELORA_ENUMERATION(EComponentVersion)
VELORA_ENUMERATION(EChannel)
VELORA_ENUMERATION(EVariant)
VELORA_ENUMERATION(EVelcaseVersion)
VELORA_ENUMERATION(EVelcaseSchema)

// The channels that the code knows.
enum EKnownChannel {
  kChannel_Black = 0,
  kChannel_Cyan = 13,
  kChannel_Magenta = 21,
  kChannel_Yellow = 29,
  kChannel_Drum = 100,
  kChannel_Fuser = 126,
  kChannel_Printer = 127
};

// The index of a colour in the caller's records. 0 to 3 for black, cyan, magenta, yellow;
// `otherwise` for any other channel.
constexpr int GetColorIndex(int channel, int otherwise) {
  switch (channel) {
    case kChannel_Black:
      return 0;
    case kChannel_Cyan:
      return 1;
    case kChannel_Magenta:
      return 2;
    case kChannel_Yellow:
      return 3;
    default:
      return otherwise;
  }
}

}  // namespace velora::common::api
