// The flat table entries and the library's sign of life.
#include <stdio.h>

#include "plinth/runtime/api/boot.h"
#include "velora/frontend/door/ReconstructTable.h"
#include "velora/frontend/door/library.h"
#include "velora/frontend/door/reason.h"

using namespace plinth::v1::api;

int _velora_v2_ReconstructTable_Moth_Posix_Lib(
    BootRecord* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
    ctr_table_type eTableType, ctr_theme_type eThemeType, ctr_media_type eMediaType,
    ctr_axis_type eAxisType, unsigned int nVelcases, const ImagingBlob** apVelcases,
    const ReferenceTable* pReferenceTable, const TableCorrections* pTableCorrections,
    unsigned int cbReconstructedTable, unsigned char* abReconstructedTable) {
  return ReconstructTable(pBootRecord, ePlatform, eSupplyFamily, eProductVariant, eTableType,
                          eThemeType, eMediaType, eAxisType, nVelcases, apVelcases, pReferenceTable,
                          pTableCorrections, cbReconstructedTable, abReconstructedTable);
}

// One whole life: what it finds open stays open, what it opens is closed. The boot record stays
// allocated behind the call.
int _velora_v2_ReconstructTable_Moth_Posix_So(
    int ePlatform, int eSupplyFamily, int eProductVariant, ctr_table_type eTableType,
    ctr_theme_type eThemeType, ctr_media_type eMediaType, ctr_axis_type eAxisType,
    unsigned int nVelcases, const ImagingBlob** apVelcases, const ReferenceTable* pReferenceTable,
    const TableCorrections* pTableCorrections, unsigned int cbReconstructedTable,
    unsigned char* abReconstructedTable) {
  return reason::Through([&] {
    Visit visit = Enter();
    BootRecord* record = Boot(Slots<FlatConfiguration>());
    int result = 0;
    if (record == nullptr ||
        !InitializeLayer(Slots<velora::v2::fenn::api::Configuration>(), record)) {
      reason::RefuseBoot();
    } else {
      result = ServeTable(record, ePlatform, eSupplyFamily, eProductVariant, eTableType, eThemeType,
                          eMediaType, eAxisType, nVelcases, apVelcases, pReferenceTable,
                          pTableCorrections, cbReconstructedTable, abReconstructedTable);
    }
    Leave(visit);
    return result;
  });
}

const char* velora_version(void) { return VELORA_VERSION; }

int _velora_HelloWorld(int n) {
  printf("HelloWorld = %d\n", n);
  return n;
}
