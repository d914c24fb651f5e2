// One build, a step after the other. Allocations, frees and lines keep their order: the tracker's
// slots and the readers of the log see it.
#include "velora/frontend/toolkit/DifferenceMono.h"

#include <cstring>

#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/cbat.h"
#include "velora/frontend/toolkit/digest.h"
#include "velora/frontend/toolkit/memory.h"
#include "velora/frontend/toolkit/message.h"
#include "velora/frontend/toolkit/result.h"
#include "velora/frontend/toolkit/transform.h"

namespace {

constexpr char kName[] = "DifferenceMono";
constexpr char kFamily = 'M';
constexpr unsigned int kBytes = Ctr::kCurve;
constexpr unsigned int kShorts = 2 * Ctr::kCurve;
constexpr unsigned int kWords = 4 * Ctr::kCurve;

template <class Element>
Element* Allocate(int line, const char* format, unsigned int size) {
  return Ctr::AllocArrayWithLine<Element>(kName, line, format, size, kFamily);
}

// CbatReader into 256 shorts: a width table that is not one of a curve would overrun them.
int ReadCurve(BytePacket* data, BytePacket* widths, unsigned char scalar, short* out) {
  if (widths->key.getAxis() != 'M') return Ctr::kBadSize;
  int count = 0;
  return Ctr::CbatReader(data, widths, scalar, out, &count);
}

}  // namespace

DifferenceMono::DifferenceMono(char medium, RawData* pRawData, CT_PROCESSING* pCT)
    : key(medium),
      digest(),
      m_DiffTablePtr(nullptr),
      scalar(1),
      pRawData(pRawData),
      status(0),
      pCT(pCT) {
  status = static_cast<unsigned char>(Build());
  if (status == Ctr::kSuccess && (pCT->corrections & 1) != 0) performTableCorrection();
}

DifferenceMono::~DifferenceMono() { Ctr::DeallocMem(kFamily); }

// An early end leaves its blocks to the family.
int DifferenceMono::Build() {
  m_DiffTablePtr =
      Allocate<unsigned char>(28, "AllocMem m_DiffTablePtr %d (DifferenceMono)", kBytes);
  if (m_DiffTablePtr == nullptr) return Ctr::kOutOfMemory;
  short* residue = Allocate<short>(38, "AllocMem residueDataPtr %d (DifferenceMono)", kShorts);
  if (residue == nullptr) return Ctr::kOutOfMemory;

  const BytePacket* reference = pRawData->getRefPacket(0);
  BytePacket* residuePacket = pRawData->getPfdPacket(0, 'r');
  BytePacket* residueCbat = pRawData->getPfdPacket(0, 'c');
  if (reference == nullptr || residuePacket == nullptr || residueCbat == nullptr) {
    return Ctr::kPacketNotFound;
  }
  // A curve without residue has an empty width table; the block's zeros are then the residue.
  if (residueCbat->length != 0) {
    const int result = ReadCurve(residuePacket, residueCbat, 1, residue);
    if (result != Ctr::kSuccess) return result;
  }

  short* dctDataIn = Allocate<short>(72, "AllocMem dctDataIn %d (DifferenceMono)", kShorts);
  if (dctDataIn == nullptr) return Ctr::kOutOfMemory;
  BytePacket* dct = pRawData->getPfdPacket(0, 'd');
  BytePacket* cbat = pRawData->getCbatPacket(0);
  // Without coefficients the transform is one of zeros, and the scalar stays 1.
  if (dct != nullptr && cbat != nullptr) {
    const BytePacket* scalarPacket = pRawData->getPfdPacket(0, 's');
    if (scalarPacket == nullptr) return Ctr::kPacketNotFound;
    scalar = static_cast<unsigned char>(scalarPacket->scalar);
    const int result = ReadCurve(dct, cbat, scalar, dctDataIn);
    if (result != Ctr::kSuccess) return result;
  }
  int* dctDataIn32 = Allocate<int>(101, "AllocMem dctDataIn32 %d (DifferenceMono)", kWords);
  if (dctDataIn32 == nullptr) return Ctr::kOutOfMemory;
  for (unsigned int i = 0; i < Ctr::kCurve; ++i) dctDataIn32[i] = dctDataIn[i];
  float* transformed = Allocate<float>(107, "AllocMem transformedDct %d (DifferenceMono)", kWords);
  if (transformed == nullptr) return Ctr::kOutOfMemory;
  if (!Ctr::InverseDct1D(dctDataIn32, transformed)) return Ctr::kOutOfMemory;

  Ctr::AddResidueMono(m_DiffTablePtr, reference->data, transformed, residue);
  Ctr::PrintLine(kName, 123,
                 "DeallocMem transformedDct,dctDataIn32,dctDataIn,residueData (DifferenceMono)");
  Ctr::DeallocMem(transformed);
  Ctr::DeallocMem(dctDataIn32);
  Ctr::DeallocMem(dctDataIn);
  Ctr::DeallocMem(residue);
  return Ctr::kSuccess;
}

void DifferenceMono::performTableCorrection() {
  const CorrectionPacket& correction = pRawData->m_aCorrections[0];
  // No correction is no failure.
  if (correction.key == nullptr || correction.data == nullptr || m_DiffTablePtr == nullptr) return;
  Ctr::ComputeSha256(m_DiffTablePtr, Ctr::kCurve, digest);
  if (memcmp(digest, correction.key, VELORA_SIZE_KEY) == 0) {
    Ctr::ApplyCorrection(m_DiffTablePtr, correction.data, Ctr::kCurve);
  }
}
