// The object world as the facade uses it: brought up and taken down around each call.
// Room: velora/frontend/door. The library owns factory and mappings while it is up. Failures are
// results with a line on standard error.
#pragma once

#include "velora/fenn/api/IFactory.h"

class RawData;
struct CT_PROCESSING;

// Null while the library is down. One call at a time uses them, inside the door.
extern velora::v2::fenn::api::_factory::IFactory* g_pFactory;
extern velora::v2::fenn::api::IPrintModeMappings* g_pPrintModeMappings;

// The table call behind the door, with ReconstructTable's arguments.
int ServeTable(BootRecord* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
               ctr_table_type eTableType, ctr_theme_type eThemeType, ctr_media_type eMediaType,
               ctr_axis_type eAxisType, unsigned int nVelcases, const ImagingBlob** apVelcases,
               const ReferenceTable* pReferenceTable, const TableCorrections* pTableCorrections,
               unsigned int cbReconstructedTable, unsigned char* abReconstructedTable);

// Fills the front end's block, from the given boot or by a boot of its own, and makes factory and
// mappings. A failure leaves nothing open that was not.
bool initLibrary(void* pBootRecord);

// Releases all of that, and leaves open what initLibrary found open. Harmless when the library is
// down.
void releaseLibrary();

// Says why a request fails with an exception of this code, as far as reasons know nothing yet.
void RefuseRequest(int code, int ePlatform, int eSupplyFamily, int eProductVariant,
                   ctr_theme_type eThemeType, ctr_media_type eMediaType, ctr_axis_type eAxisType,
                   unsigned int nVelcases, RawData* pRawData);

// Reads the packs and makes the object of one request, with a reference for the caller; null, with
// a line, on any failure.
velora::v2::fenn::api::IVeltune* createVeltune(int ePlatform, int eSupplyFamily,
                                               int eProductVariant, ctr_table_type eTableType,
                                               ctr_theme_type eThemeType, ctr_media_type eMediaType,
                                               ctr_axis_type eAxisType, unsigned int nVelcases,
                                               RawData* pRawData, CT_PROCESSING* pCT);
