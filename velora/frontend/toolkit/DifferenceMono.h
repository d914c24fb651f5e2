// The mono curve, decoded directly from a request's PFD packets and reference.
// Room: velora/frontend/toolkit. The table is built in the constructor and lives in the memory
// family 'M', which the destructor frees whole: keep one object alive at a time. RawData and
// CT_PROCESSING are the caller's. Nothing is thrown: the status is the failure.
#pragma once

#include "velora/frontend/toolkit/CT_PROCESSING.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/keys.h"

class VELORA_API DifferenceMono {
 public:
  // Builds the curve, with its correction if the key of that matches. Without coefficients the
  // curve is reference plus residue.
  DifferenceMono(char medium, RawData* pRawData, CT_PROCESSING* pCT);
  virtual ~DifferenceMono();
  DifferenceMono(const DifferenceMono&) = delete;
  DifferenceMono& operator=(const DifferenceMono&) = delete;

  // Computes the digest, and corrects the curve if it is the correction's key.
  void performTableCorrection();

  ContentKey key;
  unsigned char digest[VELORA_SIZE_KEY];  // of the curve before correction
  unsigned char* m_DiffTablePtr;          // 256 points, complete only with a status of 0
  unsigned char scalar;
  RawData* pRawData;
  unsigned char status;  // 0, or a result code
  CT_PROCESSING* pCT;

 private:
  // A result code.
  VELORA_HIDDEN int Build();
};
