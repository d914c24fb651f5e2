// The recipe of a gray curve, from packets to 256 levels. What decodes is in the toolkit; what is
// here takes the operands off the recipe, finds the reference in the request, and hands over
// buffers of the sizes that the decoders ask for.
#include "velora/fenn/core/components/CGrayCurve.h"

#include "velora/fenn/core/components/decoding.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/cbat.h"
#include "velora/frontend/toolkit/digest.h"
#include "velora/frontend/toolkit/transform.h"

namespace velora::v2::fenn::core::components {

using CBuild_Curve = CGrayCurve::COperator::CBuild_DCT_Residue_CBAT_DeltaScalar;

CBuild_Curve::CBuild_DCT_Residue_CBAT_DeltaScalar() = default;

// The difference to the printer's curve: coefficients times the scalar through the inverse
// transform, plus the reference, held, plus the residue, held; then the correction, if the digest
// of the curve is the correction's key.
Operators* CBuild_Curve::Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) {
  unsigned char* volatile table = nullptr;
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    RawData* rawData = veltune->GetRawData();
    const Packets packets = {
        ResolvePacket<CPacket_DeltaScalar>(frame, operators, veltune),
        ResolvePacket<CPacket_MonoCBAT>(frame, operators, veltune),
        ResolvePacket<CPacket_MonoResidue>(frame, operators, veltune),
        ResolvePacket<CPacket_MonoDCT>(frame, operators, veltune),
    };

    // The residue's widths travel in the pack, those of the coefficients in the printer's record.
    // Both readers write a curve's 256 fields only for the mono axis, a plane's 4913 for another.
    ReconKey key = KeyOf(veltune, 'r', 'K');
    if (key.getAxis() != 'M') {
      PLINTH_RAISE(CException_General);
    }
    BytePacket residuePacket = PacketOf(key, packets.residue);
    key.setTag('c');
    BytePacket cbatPacket = PacketOf(key, packets.cbat);
    short* residue = NewBuffer<short>(frame, Ctr::kCurve);
    ReadCbat(&residuePacket, &cbatPacket, 1, residue);

    key.setTag('d');
    BytePacket dctPacket = PacketOf(key, packets.dct);
    BytePacket* referenceCbat = rawData->getCbatPacket(0);
    if (referenceCbat == nullptr || referenceCbat->key.getAxis() != 'M') {
      PLINTH_RAISE(CException_General);
    }
    short* coefficients = NewBuffer<short>(frame, Ctr::kCurve);
    ReadCbat(&dctPacket, referenceCbat, packets.scalar->Get(0), coefficients);
    // A curve's coefficients come in their natural order; only a plane has a scan order.
    int* spectrum = NewBuffer<int>(frame, Ctr::kCurve);
    for (unsigned int i = 0; i < Ctr::kCurve; ++i) {
      spectrum[i] = coefficients[i];
    }
    float* transform = NewBuffer<float>(frame, Ctr::kCurve);
    Transform(Ctr::InverseDct1D(spectrum, transform));

    BytePacket* reference = rawData->getRefPacket(0);
    if (reference == nullptr || reference->data == nullptr ||
        reference->getExtent() < Ctr::kCurve) {
      PLINTH_RAISE(CException_General);
    }
    // Freed below as long as no data owns it.
    table = new (plinth::v1::api::Slots<Configuration>().platform, true,
                 true) unsigned char[Ctr::kCurve];
    Ctr::AddResidueMono(table, reference->data, transform, residue);
    // A curve is colour index 0, K.
    const CorrectionPacket& correction = rawData->m_aCorrections[0];
    if (HasCorrection(veltune, 0) && correction.data != nullptr &&
        DigestMatches(table, Ctr::kCurve, correction)) {
      Ctr::ApplyCorrection(table, correction.data, Ctr::kCurve);
    }
    this->data.Take(Create<Configuration, CGrayCurveData>());
    this->data->Init(Ctr::kCurve, table, true);
    table = nullptr;
    this->Call_Callback_Resolve_Done();
  }
  // After a raise and after success alike; null by then if the data took it.
  PLINTH_TAIL {
    operator delete[](table, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  PLINTH_END
  return operators;
}

}  // namespace velora::v2::fenn::core::components
