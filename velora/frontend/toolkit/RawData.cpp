// From a caller's records to packets that point into them. The PFD's packets are read in pfd.cpp.
#include "velora/frontend/toolkit/RawData.h"

#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/lzma.h"
#include "velora/frontend/toolkit/memory.h"
#include "velora/frontend/toolkit/message.h"
#include "velora/frontend/toolkit/result.h"

namespace {

constexpr int kColors = 4;

// The place of a colour index in the caller's records, which are in the order C, M, Y, K.
unsigned int CallerSlot(int index) { return static_cast<unsigned int>(index + 3) % kColors; }

int LastIndex(ctr_axis_type axis) { return axis == CTR_AXIS_MONO ? 0 : kColors - 1; }

// Packets have one kind of pointer; nothing writes to a caller's bytes.
unsigned char* Bytes(const uint8_t* data) { return const_cast<unsigned char*>(data); }

// Up to 65535 bytes: the packet's length is signed, and getExtent reads it without its sign.
BytePacket MakePacket(ReconKey key, unsigned char* data, unsigned int cb) {
  BytePacket packet(key);
  packet.length = static_cast<short>(cb);
  packet.data = data;
  packet.compressed = Ctr::HasLzmaMark(data, cb);
  return packet;
}

// A channel's part of planes that a caller hands over in one piece.
struct Plane {
  Plane(const uint8_t* planes, int index, ctr_axis_type axis)
      : data(Bytes(planes)), cb(Ctr::kCurve) {
    if (axis == CTR_AXIS_MONO) return;
    data += CallerSlot(index) * Ctr::kPlane;
    cb = Ctr::kPlane;
  }

  unsigned char* data;
  unsigned int cb;
};

BytePacket* PacketAt(BytePacket (&packets)[kColors], int i) {
  if (i < 0 || i >= kColors || packets[i].length == 0 || packets[i].data == nullptr) {
    return nullptr;
  }
  return &packets[i];
}

}  // namespace

RawData::RawData(char medium, char axis) : m_medium(medium), m_axis(axis) { ClearData(); }

RawData::~RawData() = default;

void* RawData::operator new(std::size_t size) noexcept {
  return Ctr::AllocMemWithLine("operator new", 33, "AllocMem new RawData %d (RawData new)",
                               static_cast<unsigned int>(size), 'X');
}

void RawData::operator delete(void* p) {
  Ctr::PrintLine("operator delete", 38, "DeallocMem delete RawData (RawData delete)");
  Ctr::DeallocMem(p);
}

void RawData::ClearData() {
  for (PfdHeader& header : m_aPfdHeaders) header = PfdHeader();
  for (BytePacket& packet : m_aPfdPackets) packet = BytePacket();
  for (BytePacket& packet : m_aRefPackets) packet = BytePacket();
  for (BytePacket& packet : m_aCbatPackets) packet = BytePacket();
  for (CorrectionPacket& packet : m_aCorrections) packet = CorrectionPacket();
  m_nVelcases = 0;
  for (BytePacket& packet : m_aVelcases) packet = BytePacket();
  for (unsigned int& extent : m_aVelcaseExtents) extent = 0;
}

bool RawData::readVelcases(unsigned int nVelcases, const ImagingBlob** apVelcases) {
  m_nVelcases = 0;
  for (BytePacket& packet : m_aVelcases) packet = BytePacket();
  for (unsigned int& extent : m_aVelcaseExtents) extent = 0;
  if (nVelcases == 0) {
    Ctr::PrintLine("readVelcases", 256, "Error: readVelcases: nVelcases == 0.");
    return false;
  }
  if (nVelcases > m_nVelcases_Max) {
    Ctr::PrintLine("readVelcases", 261, "Error: readVelcases: nVelcases >= m_nVelcases_Max.");
    return false;
  }
  if (apVelcases == nullptr) {
    Ctr::PrintLine("readVelcases", 266, "Error: readVelcases: apVelcases is null.");
    return false;
  }
  for (unsigned int i = 0; i < nVelcases; ++i) {
    const ImagingBlob* blob = apVelcases[i];
    if (blob == nullptr) {
      Ctr::PrintLine("readVelcases", 275, "Error: apVelcases is invalid.");
      return false;
    }
    m_aVelcases[i].key = ReconKey('\0', '\0', '*', '*');
    // Cut to 16 bits; the extent keeps the whole size.
    m_aVelcases[i].length = static_cast<short>(blob->size);
    m_aVelcases[i].data = Bytes(blob->data);
    m_aVelcaseExtents[i] = blob->size;
  }
  // Last: as long as it is 0, no pack can be had.
  m_nVelcases = nVelcases;
  return true;
}

bool RawData::readReferenceTable(const ReferenceTable* pTable, CT_PROCESSING* pCT,
                                 ctr_axis_type axis, ctr_media_type media) {
  if (pTable == nullptr || pTable->data == nullptr) {
    Ctr::PrintLine("readReferenceTable", 300, "Error: Reference table parameters are NULL.");
    // All four, also of channels that were not asked for.
    for (unsigned char& status : pCT->status) status = Ctr::kNullPointer;
    return false;
  }
  for (BytePacket& packet : m_aRefPackets) packet = BytePacket();
  const char axisChar = CtrAxis::toChar(axis);
  const char mediumChar = CtrMedium::toChar(media);
  bool complete = true;
  for (int i = 0; i <= LastIndex(axis); ++i) {
    if ((pCT->channels >> i & 1) == 0) continue;
    const char color = CtrColor::toChar(i);
    const Plane plane(pTable->data, i, axis);
    // The record has no length of the planes: the axis sets it, and the caller vouches for it.
    m_aRefPackets[i] = MakePacket({'F', color, mediumChar, axisChar}, plane.data, plane.cb);
    const unsigned int slot = CallerSlot(i);
    // The reference stays; the missing width table fails the channel.
    if (pTable->apCbat[slot] == nullptr) {
      Ctr::PrintLine("readReferenceTable", 334, "ERROR: NULL CBAT pointer.");
      pCT->status[i] = Ctr::kNullCbat;
      complete = false;
      continue;
    }
    m_aCbatPackets[i] = MakePacket({'C', color, mediumChar, axisChar}, Bytes(pTable->apCbat[slot]),
                                   pTable->acbCbat[slot]);
  }
  return complete;
}

void RawData::readTableCorrection(const TableCorrections* pCorrections, CT_PROCESSING* pCT,
                                  ctr_axis_type axis, ctr_media_type media) {
  if (pCorrections == nullptr) {
    Ctr::PrintLine("readTableCorrection", 359,
                   "INFO: corrections table parameter is NULL. No table corrections will be made.");
    return;
  }
  if (pCorrections->data == nullptr) {
    Ctr::PrintLine("readTableCorrection", 364,
                   "INFO: CorrectionData pointer is NULL. No table corrections will be made.");
    return;
  }
  for (int i = 0; i <= LastIndex(axis); ++i) {
    const char color = CtrColor::toChar(i);
    if ((pCT->channels >> i & 1) == 0) {
      pCT->skipped[i] = 1;
      Ctr::PrintLine("readTableCorrection", 376,
                     "INFO: Processing for %c set to skip. Skipping table correction", color);
      continue;
    }
    if (pCorrections->apKeys[i] == nullptr) {
      pCT->skipped[i] = 1;
      Ctr::PrintLine("readTableCorrection", 384,
                     "INFO: Correction key for %c is NULL. Skipping table correction", color);
      continue;
    }
    // Waiting, not made: the table's digest decides.
    pCT->corrections = static_cast<unsigned char>(pCT->corrections | 1 << i);
    const Plane plane(pCorrections->data, i, axis);
    CorrectionPacket& correction = m_aCorrections[i];
    correction.key = pCorrections->apKeys[i];
    correction.cbKey = VELORA_SIZE_KEY;
    correction.data = plane.data;
    correction.cbData = plane.cb;
    correction.compressed = Ctr::HasLzmaMark(plane.data, plane.cb);
    correction.color = color;
    correction.medium = CtrMedium::toChar(media);
    correction.axis = CtrAxis::toChar(axis);
  }
  // A mono request has no channels but K.
  for (int i = LastIndex(axis) + 1; i < kColors; ++i) pCT->skipped[i] = 1;
}

BytePacket* RawData::getVelcase(unsigned int i) {
  return i < m_nVelcases ? &m_aVelcases[i] : nullptr;
}

unsigned int RawData::getVelcaseExtent(unsigned int i) const {
  return i < m_nVelcases ? m_aVelcaseExtents[i] : 0;
}

BytePacket* RawData::getRefPacket(int i) { return PacketAt(m_aRefPackets, i); }

BytePacket* RawData::getCbatPacket(int i) { return PacketAt(m_aCbatPackets, i); }
