// The steps of a table call: check the arguments, point RawData at them, choose a method of the
// facade, give everything back.
#include "velora/frontend/door/ReconstructTable.h"

#include <new>

#include "velora/frontend/door/Velora.h"
#include "velora/frontend/door/library.h"
#include "velora/frontend/door/reason.h"
#include "velora/frontend/toolkit/CT_PROCESSING.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/memory.h"
#include "velora/frontend/toolkit/message.h"

namespace {

constexpr char kName[] = "ReconstructTable";
constexpr unsigned int kAxisMono = CTR_AXIS_MONO;

// The request as the front end's records, and what must be given back.
struct Request {
  RawData* pRawData;
  CT_PROCESSING* pCT;
};

// In the order of their lines; only the first failure is printed.
bool CheckArguments(ctr_table_type eTableType, unsigned int nVelcases,
                    const ImagingBlob** apVelcases, const ReferenceTable* pReferenceTable,
                    unsigned int cb, const unsigned char* ab) {
  if (nVelcases == 0) {
    Ctr::PrintLine(kName, 56, "Error: nVelcases == 0");
  } else if (nVelcases > RawData::m_nVelcases_Max) {
    Ctr::PrintLine(kName, 57, "Error: nVelcases (%u) > RawData::m_nVelcases_Max (%u)", nVelcases,
                   RawData::m_nVelcases_Max);
  } else if (apVelcases == nullptr) {
    Ctr::PrintLine(kName, 58, "Error: apVelcases is null");
  } else if (cb == 0) {
    Ctr::PrintLine(kName, 59, "Error: cbReconstructedTable == 0 is null");
  } else if (ab == nullptr) {
    Ctr::PrintLine(kName, 60, "Error: abReconstructedTable is null");
  } else if (eTableType < CTR_TABLE_FUSER_BLOB && pReferenceTable == nullptr) {
    Ctr::PrintLine(kName, 66, "Error: pReferenceTable is null");
  } else {
    return true;
  }
  reason::Refuse(VELORA_REASON_ARGUMENT);
  return false;
}

// Null in either is left alone.
void ReleaseRequest(const Request& request) {
  Ctr::DeallocMem(request.pCT);
  delete request.pRawData;
}

// Points the records at the caller's bytes. On failure nothing is left to release.
bool ReadRequest(Request& request, ctr_table_type eTableType, ctr_media_type eMediaType,
                 ctr_axis_type eAxisType, unsigned int nVelcases, const ImagingBlob** apVelcases,
                 const ReferenceTable* pReferenceTable, const TableCorrections* pTableCorrections) {
  request.pCT = nullptr;
  request.pRawData = new RawData(CtrMedium::toChar(eMediaType), CtrAxis::toChar(eAxisType));
  if (request.pRawData == nullptr) {
    Ctr::PrintLine(kName, 72, "Error: Could not allocate memory for pRawData");
    reason::Refuse(VELORA_REASON_NO_MEMORY);
    return false;
  }
  if (!request.pRawData->readVelcases(nVelcases, apVelcases)) {
    Ctr::PrintLine(kName, 77, "Error: readVelcases failed");
    // All else was tested above, so one of the pointers is null; this finds it for the reason.
    int pack = 0;
    while (apVelcases[pack] != nullptr) {
      ++pack;
    }
    reason::Refuse(VELORA_REASON_ARGUMENT, pack);
    ReleaseRequest(request);
    return false;
  }
  request.pCT = static_cast<CT_PROCESSING*>(Ctr::AllocMem(sizeof(CT_PROCESSING)));
  if (request.pCT == nullptr) {
    Ctr::PrintLine(kName, 81, "Error: Could not allocate memory for pCT_PROCESSING");
    reason::Refuse(VELORA_REASON_NO_MEMORY);
    ReleaseRequest(request);
    return false;
  }
  *request.pCT = CT_PROCESSING();
  // Mono is K alone.
  request.pCT->channels = eAxisType == kAxisMono ? 1 : 15;
  // A blob has no reference; an unknown type is refused by Choose.
  if (eTableType < CTR_TABLE_FUSER_BLOB) {
    if (!request.pRawData->readReferenceTable(pReferenceTable, request.pCT, eAxisType,
                                              eMediaType)) {
      Ctr::PrintLine(kName, 106, "Error: Reference table read error");
      reason::Refuse(VELORA_REASON_REFERENCE);
      ReleaseRequest(request);
      return false;
    }
    request.pRawData->readTableCorrection(pTableCorrections, request.pCT, eAxisType, eMediaType);
  }
  return true;
}

// One facade method for each kind of table, and the line that says that it failed.
bool Choose(Velora* pVelora, ctr_table_type eTableType, ctr_theme_type eThemeType,
            ctr_axis_type eAxisType, unsigned int cb, unsigned char* ab) {
  struct Row {
    bool (Velora::*method)(unsigned int cb, unsigned char* ab);
    const char* message;
    int line;
  };
  static constexpr Row kGrayCurve = {&Velora::reconstructGrayCurve,
                                     "Error: reconstructGrayCurve failed", 150};
  static constexpr Row kCmyk = {&Velora::reconstructColorTable_RGBtoCMYK,
                                "Error: reconstructColorTable_RGBtoCMYK failed", 156};
  static constexpr Row kGrayscale = {&Velora::reconstructColorTable_RGBtoGrayscale,
                                     "Error: reconstructColorTable_RGBtoGrayscale failed", 135};
  static constexpr Row kRgb = {&Velora::reconstructColorTable_RGBtoRGB,
                               "Error: reconstructColorTable_RGBtoRGB failed", 141};
  static constexpr Row kFuserBlob = {&Velora::getFuserBlobData, "Error: getFuserBlobData failed",
                                     162};
  const Row* row = nullptr;
  // As a number, since a caller's value may be none of the enumeration's.
  switch (static_cast<unsigned int>(eTableType)) {
    case CTR_TABLE_CMYK:
      row = eAxisType == kAxisMono ? &kGrayCurve : &kCmyk;
      break;
    case CTR_TABLE_RGB:
      row = eThemeType == CTR_THEME_GRAYSCALE ? &kGrayscale : &kRgb;
      break;
    case CTR_TABLE_FUSER_BLOB:
      row = &kFuserBlob;
      break;
    default:
      Ctr::PrintLine(kName, 165, "Error: eTableType (%d) invalid", static_cast<int>(eTableType));
      reason::Refuse(VELORA_REASON_ARGUMENT);
      return false;
  }
  if ((pVelora->*row->method)(cb, ab)) {
    return true;
  }
  Ctr::PrintLine(kName, row->line, "%s", row->message);
  return false;
}

}  // namespace

int ServeTable(BootRecord* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
               ctr_table_type eTableType, ctr_theme_type eThemeType, ctr_media_type eMediaType,
               ctr_axis_type eAxisType, unsigned int nVelcases, const ImagingBlob** apVelcases,
               const ReferenceTable* pReferenceTable, const TableCorrections* pTableCorrections,
               unsigned int cbReconstructedTable, unsigned char* abReconstructedTable) {
  Request request;
  if (!CheckArguments(eTableType, nVelcases, apVelcases, pReferenceTable, cbReconstructedTable,
                      abReconstructedTable) ||
      !ReadRequest(request, eTableType, eMediaType, eAxisType, nVelcases, apVelcases,
                   pReferenceTable, pTableCorrections)) {
    return 0;
  }
  bool done = false;
  // From the tracker, whose failure prints its own line.
  void* memory = Ctr::AllocMem(sizeof(Velora));
  if (memory != nullptr) {
    Velora* pVelora = ::new (memory)
        Velora(pBootRecord, ePlatform, eSupplyFamily, eProductVariant, eTableType, eThemeType,
               eMediaType, eAxisType, nVelcases, request.pRawData, request.pCT);
    done = Choose(pVelora, eTableType, eThemeType, eAxisType, cbReconstructedTable,
                  abReconstructedTable);
    pVelora->~Velora();
    Ctr::DeallocMem(memory);
  } else {
    reason::Refuse(VELORA_REASON_NO_MEMORY);
  }
  ReleaseRequest(request);
  return done ? 1 : 0;
}

int ReconstructTable(BootRecord* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
                     ctr_table_type eTableType, ctr_theme_type eThemeType,
                     ctr_media_type eMediaType, ctr_axis_type eAxisType, unsigned int nVelcases,
                     const ImagingBlob** apVelcases, const ReferenceTable* pReferenceTable,
                     const TableCorrections* pTableCorrections, unsigned int cbReconstructedTable,
                     unsigned char* abReconstructedTable) {
  return reason::Through([&] {
    return ServeTable(pBootRecord, ePlatform, eSupplyFamily, eProductVariant, eTableType,
                      eThemeType, eMediaType, eAxisType, nVelcases, apVelcases, pReferenceTable,
                      pTableCorrections, cbReconstructedTable, abReconstructedTable);
  });
}
