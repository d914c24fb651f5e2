// What the builders of curves and planes share: from recipe and request to the decoders of the
// front end's toolkit.
// Room: velora/fenn. Buffers live on the frame's collector. A decoder that fails raises
// `CException_General`.
#pragma once

#include <string.h>

#include "velora/fenn/core/components/CPacket.h"
#include "velora/fenn/core/properties.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/cbat.h"
#include "velora/frontend/toolkit/digest.h"

namespace velora::v2::fenn::core::components {

// The bytes of a builder's operands, in the order in which they come off the recipe's end.
struct Packets {
  IArray_uint8* scalar;
  IArray_uint8* cbat;
  IArray_uint8* residue;
  IArray_uint8* dct;
};

// Takes the packet at the recipe's end off the list. Its bytes live until the frame's end.
template <class Class>
IArray_uint8* ResolvePacket(volatile plinth::v1::api::Frame& frame, Operators* operators,
                            IVeltune* veltune) {
  return common::core::ResolveOperand<Configuration, Class>(frame, operators, veltune)
      ->GetArray_uint8_Packet();
}

// A zeroed buffer that ends with the frame.
template <class T>
T* NewBuffer(volatile plinth::v1::api::Frame& frame, unsigned int count) {
  return Defer(frame, new (plinth::v1::api::Slots<Configuration>().platform, true, true) T[count]);
}

// The key of a packet of the request: medium and axis are the print mode's.
inline ReconKey KeyOf(IVeltune* veltune, char tag, char color) {
  const api::IPrintModeMapping* mapping =
      veltune->GetPrintModeMapping(veltune->GetPrintModeParameters());
  return ReconKey(tag, color, CtrMedium::toChar(mapping->GetMediaType()),
                  CtrAxis::toChar(mapping->GetAxisType()));
}

// Points at the array's bytes. A packet's length has 16 bits: a longer one reads cut off. Never
// taken for an LZMA stream.
inline BytePacket PacketOf(ReconKey key, IArray_uint8* array) {
  BytePacket packet(key);
  packet.length = static_cast<short>(array->GetCount());
  packet.data = array->GetElements();
  return packet;
}

// `out` has room for 256 elements, or for 4913 where the key of the widths has another axis than
// 'M'.
inline void ReadCbat(BytePacket* data, BytePacket* widths, unsigned char scalar, short* out) {
  int count = 0;
  if (Ctr::CbatReader(data, widths, scalar, out, &count) != 0) {
    PLINTH_RAISE(CException_General);
  }
}

// A transform fails only for want of memory; a table without it would be a wrong one.
inline void Transform(bool transformed) {
  if (!transformed) {
    PLINTH_RAISE(CException_Memory_AllocationFailed);
  }
}

// The request has a correction with a key waiting for this colour index.
inline bool HasCorrection(IVeltune* veltune, int index) {
  return (veltune->GetCT_PROCESSING()->corrections >> index & 1) != 0 &&
         veltune->GetRawData()->m_aCorrections[index].key != nullptr;
}

// The key is the digest of the uncorrected table: a correction never falls on another.
inline bool DigestMatches(const unsigned char* table, unsigned int size,
                          const CorrectionPacket& correction) {
  unsigned char digest[VELORA_SIZE_KEY];
  Ctr::ComputeSha256(table, size, digest);
  return memcmp(digest, correction.key, sizeof digest) == 0;
}

}  // namespace velora::v2::fenn::core::components
