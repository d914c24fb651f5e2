// One build in four steps. Allocations, frees and lines keep their order: the tracker's slots and
// the readers of the log see it. The numbers are those of PrintLine.
#include "velora/frontend/toolkit/DifferenceColor.h"

#include <cstring>

#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/cbat.h"
#include "velora/frontend/toolkit/digest.h"
#include "velora/frontend/toolkit/memory.h"
#include "velora/frontend/toolkit/message.h"
#include "velora/frontend/toolkit/result.h"
#include "velora/frontend/toolkit/transform.h"
#include "velora/frontend/toolkit/zigzag.h"

namespace {

constexpr char kName[] = "DifferenceColor";
constexpr char kFamily = 'C';
// Bytes of a plane, and of a plane of shorts and of words, with room for 4916 elements.
constexpr unsigned int kBytes = 4916;
constexpr unsigned int kShorts = 9832;
constexpr unsigned int kWords = 19664;

template <class Element>
Element* Allocate(int line, const char* format, unsigned int size, char tag = kFamily) {
  return Ctr::AllocArrayWithLine<Element>(kName, line, format, size, tag);
}

}  // namespace

// The blocks of a build. An early end leaves them to the family, `transformed` excepted.
struct DifferenceColor::Work {
  short* residue;
  short* flatDct;
  int* zigzagData;
  float* transformed;  // outside the family
};

DifferenceColor::DifferenceColor(ContentKey key, RawData* pRawData, CT_PROCESSING* pCT)
    : key(key),
      pRawData(pRawData),
      reserved(0),
      m_DifferenceData(nullptr),
      digest(),
      scalar(1),
      status(0),
      pCT(pCT) {
  Ctr::PrintLine(kName, 32, "ENTRY Color=%c, Axis=%c, MediaType=%c", key.getColor(), key.getAxis(),
                 key.getMedium());
  Work work = {};
  status = static_cast<unsigned char>(Build(&work));
  if (status != Ctr::kSuccess) {
    Ctr::DeallocMem(work.transformed);
    return;
  }
  Ctr::PrintLine(kName, 245, "EXIT Color=%c, Axis=%c, MediaType=%c", key.getColor(), key.getAxis(),
                 key.getMedium());
}

DifferenceColor::~DifferenceColor() {
  Ctr::PrintLine("~DifferenceColor", 265, "DifferenceColor::dtor");
  Ctr::DeallocMem(kFamily);
}

int DifferenceColor::Build(Work* work) {
  m_DifferenceData =
      Allocate<unsigned char>(33, "AllocMem m_DifferenceData %d (DifferenceColor)", kBytes);
  if (m_DifferenceData == nullptr) return Ctr::kOutOfMemory;
  work->residue = Allocate<short>(42, "AllocMem residueData %d (DifferenceColor)", kShorts);
  if (work->residue == nullptr) return Ctr::kOutOfMemory;

  const int index = CtrColor::getIndex(key.getColor());
  const BytePacket* scalarPacket = pRawData->getPfdPacket(index, 'S');
  if (scalarPacket == nullptr) return Ctr::kPacketNotFound;
  scalar = static_cast<unsigned char>(scalarPacket->scalar);

  int result = ReadResidue(work, index);
  if (result == Ctr::kSuccess) result = ReadTransform(work, index);
  if (result == Ctr::kSuccess) result = Combine(work, index);
  return result;
}

// The residues of the packet 'R', in natural order.
int DifferenceColor::ReadResidue(Work* work, int index) {
  BytePacket* packet = pRawData->getPfdPacket(index, 'R');
  if (packet == nullptr) return Ctr::kPacketNotFound;
  short* flat = Allocate<short>(69, "AllocMem flatResidue %d (DifferenceColor)", kShorts);
  if (flat == nullptr) return Ctr::kOutOfMemory;
  if (packet->compressed) {
    const int size = packet->getDecompressedSize();
    if (size < 1) return Ctr::kBadSize;
    const unsigned int cb = static_cast<unsigned int>(size);
    unsigned char* bytes =
        Allocate<unsigned char>(86, "AllocMem byteResidue %d (DifferenceColor)", cb);
    if (bytes == nullptr) return Ctr::kOutOfMemory;
    // Missing memory alone ends the build. A broken stream gives its bytes up to there, and zeros.
    if (packet->decompress(bytes, size) == Ctr::kOutOfMemory) return Ctr::kOutOfMemory;
    Ctr::ExpandSignMagnitude(flat, bytes, cb);
    Ctr::PrintLine(kName, 105, "DeallocMem byteResidue (DifferenceColor)");
    Ctr::DeallocMem(bytes);
  } else {
    Ctr::ExpandSignMagnitude(flat, packet->data, packet->getExtent());
  }
  Ctr::InverseZigzag(work->residue, flat);
  Ctr::PrintLine(kName, 110, "DeallocMem flatResidue (DifferenceColor)");
  Ctr::DeallocMem(flat);
  return Ctr::kSuccess;
}

// The transform of the scaled coefficients of the packet 'D'.
int DifferenceColor::ReadTransform(Work* work, int index) {
  BytePacket* dct = pRawData->getPfdPacket(index, 'D');
  BytePacket* cbat = pRawData->getCbatPacket(index);
  if (dct == nullptr || cbat == nullptr) {
    // A missing packet has the code of missing memory; the line says what it is.
    Ctr::PrintLine(kName, 120, "DCT (%p) or CBAT (%p) packet not found", static_cast<void*>(dct),
                   static_cast<void*>(cbat));
    return Ctr::kOutOfMemory;
  }
  work->flatDct = Allocate<short>(126, "AllocMem flatDct %d  (DifferenceColor)", kShorts);
  if (work->flatDct == nullptr) return Ctr::kOutOfMemory;
  int count = 0;
  const int result = Ctr::CbatReader(dct, cbat, scalar, work->flatDct, &count);
  if (result != Ctr::kSuccess) return result;

  work->zigzagData = Allocate<int>(139, "AllocMem zigzagData %d (DifferenceColor)", kWords);
  if (work->zigzagData == nullptr) return Ctr::kOutOfMemory;
  Ctr::InverseZigzag(work->zigzagData, work->flatDct);
  work->transformed =
      Allocate<float>(147, "AllocMem transformedDct %d (DifferenceColor)", kWords, ' ');
  if (work->transformed == nullptr) return Ctr::kOutOfMemory;
  return Ctr::InverseDct3D(work->zigzagData, work->transformed) ? Ctr::kSuccess : Ctr::kOutOfMemory;
}

// Reference plus transform plus residue, then the correction. The exchange layout is that of the
// table itself, so the steps between the two are plain copies.
int DifferenceColor::Combine(Work* work, int index) {
  const BytePacket* packet = pRawData->getRefPacket(index);
  if (packet == nullptr) return Ctr::kPacketNotFound;
  // The coefficients are spent; their block takes the reference.
  unsigned char* reference = reinterpret_cast<unsigned char*>(work->zigzagData);
  Ctr::LoadPlane(reference, packet->data, packet->getExtent());
  unsigned char* cxf = Allocate<unsigned char>(164, "AllocMem cxf %d", kBytes);
  if (cxf == nullptr) return Ctr::kOutOfMemory;
  Ctr::AddResidueColor(m_DifferenceData, reference, work->transformed, work->residue);
  Ctr::ComputeSha256(m_DifferenceData, Ctr::kPlane, digest);

  // The digest is of the finished plane without its correction: that is what a correction is made
  // for.
  const CorrectionPacket& correction = pRawData->m_aCorrections[index];
  if ((pCT->corrections >> index & 1) != 0 && doCorrectionKeysMatch(index) &&
      correction.data != nullptr) {
    unsigned char* corrects = Allocate<unsigned char>(
        206, "AllocMem corrects3d %d(DifferenceColor::performTableCorrection)", kBytes);
    if (corrects == nullptr) {
      Ctr::PrintLine(kName, 211, "Unable to allocate memory for Table Correction. Skipping.");
      return Ctr::kOutOfMemory;
    }
    Ctr::LoadPlane(corrects, correction.data, correction.cbData);
    Ctr::ApplyCorrection(m_DifferenceData, corrects, Ctr::kPlane);
    Ctr::DeallocMem(corrects);
  }
  memcpy(cxf, m_DifferenceData, Ctr::kPlane);

  Ctr::PrintLine(
      kName, 236,
      "DeallocMem transformedDct,zigzagData,flatDct,refData,residueData (DifferenceColor)");
  Ctr::DeallocMem(work->transformed);
  Ctr::DeallocMem(work->zigzagData);
  Ctr::DeallocMem(work->flatDct);
  Ctr::DeallocMem(work->residue);
  memcpy(m_DifferenceData, cxf, Ctr::kPlane);
  Ctr::DeallocMem(cxf);
  return Ctr::kSuccess;
}

bool DifferenceColor::doCorrectionKeysMatch(int colorIndex) {
  // The digest is that of the last build; nothing is computed here.
  if (colorIndex < 0 || colorIndex > 3) return false;
  const unsigned char* expected = pRawData->m_aCorrections[colorIndex].key;
  if (expected == nullptr) return false;
  char text[2 * VELORA_SIZE_KEY + 1];
  Ctr::PrintLine("doCorrectionKeysMatch", 253, "Computed correction key: %s",
                 Ctr::Key2Str(text, digest));
  Ctr::PrintLine("doCorrectionKeysMatch", 254, "Expected correction key: %s",
                 Ctr::Key2Str(text, expected));
  return memcmp(digest, expected, VELORA_SIZE_KEY) == 0;
}
