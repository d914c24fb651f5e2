// The result codes of the front end; the same numbers serve as status bytes.
// Room: velora/frontend/toolkit.
#pragma once

namespace Ctr {

enum Result : int {
  kSuccess = 0,
  kNullPointer = 129,
  // The record has no width table for a requested channel.
  kNullCbat = 131,
  // Of a PFD: offsets that go back, a tag that is no colour's, an entry's unknown tag.
  kTocOutOfOrder = 160,
  kInvalidPayloadTag = 161,
  kInvalidPacketTag = 162,
  // Also a scalar of 0.
  kPacketNotFound = 164,
  // Also a plane without coefficients or without widths.
  kOutOfMemory = 192,
  kBadSize = 208,         // also: data that is not compressed where it must be
  kOutputMismatch = 209,  // the output buffer does not fit the stream
  kBrokenStream = 211,
};

}  // namespace Ctr
