// The table call: checks a request, points at its bytes, and hands it to the facade.
// Room: velora/frontend/door. Owns nothing behind the call; the caller owns packs, references,
// corrections and buffer. Each failure is a 0 with at least one line on standard error.
#pragma once

#include "velora/velora.h"

// As _velora_v2_ReconstructTable_Moth_Posix_Lib in velora.h.
VELORA_API int ReconstructTable(
    BootRecord* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
    ctr_table_type eTableType, ctr_theme_type eThemeType, ctr_media_type eMediaType,
    ctr_axis_type eAxisType, unsigned int nVelcases, const ImagingBlob** apVelcases,
    const ReferenceTable* pReferenceTable, const TableCorrections* pTableCorrections,
    unsigned int cbReconstructedTable, unsigned char* abReconstructedTable);
