// Names each record, class and interface that a caller holds, so that scripts/check-abi finds its
// size and its slots in the debug information of the installed headers.
#include <velora/frontend/door/Velora.h>
#include <velora/frontend/toolkit/DifferenceColor.h>
#include <velora/frontend/toolkit/DifferenceMono.h>
#include <velora/frontend/toolkit/RawData.h>
#include <velora/ink.h>
#include <velora/velora.h>
#include <velora/wisp/api/door.h>

#define PROBE(Name, Type) \
  VELORA_API void Probe##Name(Type*) {}

PROBE(ImagingBlob, ImagingBlob)
PROBE(ReferenceTable, ReferenceTable)
PROBE(TableCorrections, TableCorrections)
PROBE(Reason, velora_reason)
PROBE(PrintMode, tWISPPrintModeMapping)
PROBE(ColorMap, WISPColorMap)
PROBE(GrayCurve, WISPGrayCurve)
PROBE(AlternateNeutral, WISPAlternateNeutral)
PROBE(Velora, Velora)
PROBE(RawData, RawData)
PROBE(Processing, CT_PROCESSING)
PROBE(DifferenceColor, DifferenceColor)
PROBE(DifferenceMono, DifferenceMono)
PROBE(Factory, velora::v1::wisp::api::_factory::IFactory)
PROBE(Veltune, velora::v1::wisp::api::IVeltune)
