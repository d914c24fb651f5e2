// The result codes of the front end; the same numbers serve as status bytes.
// Room: velora/frontend/toolkit.
#pragma once

namespace Ctr {

enum Result : int {
  kSuccess = 0,
  kNullPointer = 129,
  kNullCbat = 131,
  kTocOutOfOrder = 160,
  kInvalidPayloadTag = 161,
  kInvalidPacketTag = 162,
  kPacketNotFound = 164,
  kOutOfMemory = 192,
  kBadSize = 208,         // also: data that is not compressed where it must be
  kOutputMismatch = 209,  // the output buffer does not fit the stream
  kBrokenStream = 211,
};

}  // namespace Ctr
