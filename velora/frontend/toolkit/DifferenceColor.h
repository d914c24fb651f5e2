// One channel of a colour table, decoded directly from a request's PFD packets and reference.
// Room: velora/frontend/toolkit. The table is built in the constructor and lives in the memory
// family 'C', which the destructor frees whole: keep one object alive at a time. RawData and
// CT_PROCESSING are the caller's. Nothing is thrown: the status is the failure.
#pragma once

#include "velora/frontend/toolkit/CT_PROCESSING.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/keys.h"

class VELORA_API DifferenceColor {
 public:
  // Builds the channel of the key's colour, with its correction if the key of that matches.
  DifferenceColor(ContentKey key, RawData* pRawData, CT_PROCESSING* pCT);
  virtual ~DifferenceColor();
  DifferenceColor(const DifferenceColor&) = delete;
  DifferenceColor& operator=(const DifferenceColor&) = delete;

  // True when the digest is the key of this colour index's correction; prints both.
  bool doCorrectionKeysMatch(int colorIndex);

  ContentKey key;
  RawData* pRawData;
  unsigned int reserved;
  unsigned char* m_DifferenceData;        // 4913 points, complete only with a status of 0
  unsigned char digest[VELORA_SIZE_KEY];  // of the table before correction
  unsigned char scalar;
  unsigned char status;  // 0, or a result code
  CT_PROCESSING* pCT;

 private:
  struct Work;

  // The steps, in their order. Each gives a result code; the first that is not 0 ends the build.
  VELORA_HIDDEN int Build(Work* work);
  VELORA_HIDDEN int ReadResidue(Work* work, int index);
  VELORA_HIDDEN int ReadTransform(Work* work, int index);
  VELORA_HIDDEN int Combine(Work* work, int index);
};
