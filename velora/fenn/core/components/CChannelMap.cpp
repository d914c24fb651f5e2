// The recipe of a plane, from packets to 4913 values in an array of 4916: see CGrayCurve.cpp.
#include "velora/fenn/core/components/CChannelMap.h"

#include "velora/fenn/core/components/decoding.h"
#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/transform.h"
#include "velora/frontend/toolkit/zigzag.h"

namespace velora::v2::fenn::core::components {

namespace {

// A plane's buffers have room for 4916 elements: the points and three more, which stay 0.
constexpr unsigned int kRoom = Ctr::kPlane + 3;

}  // namespace

CChannelMapData::CChannelMapData() = default;

CChannelMapData::~CChannelMapData() = default;

void CChannelMapData::Init() { PLINTH_RAISE(CException_WrongInitMethod); }

void CChannelMapData::Init(IArray_uint8* newArray) {
  BeginInit();
  if (newArray == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  array.Share(newArray);
  valid = true;
}

void CChannelMapData::Init(api::IChannelMapData* other) {
  BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Init(other->GetArray_uint8_Reconstructed_CXF());
}

IArray_uint8* CChannelMapData::GetArray_uint8_Reconstructed_CXF() const {
  CheckThis();
  return array.Get();
}

void CChannelMapData::CheckThis() const {
  if (!valid || !array) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

void CChannelMapData::Reset() {
  plinth::v1::core::CObject::Reset();
  array.Forget();
}

void CChannelMapData::Delete() {
  array.Drop();
  plinth::v1::core::CObject::Delete();
}

using CBuild_Plane = CChannelMap::COperator::CBuild_DCT_Residue_DeltaScalar;

CBuild_Plane::CBuild_DCT_Residue_DeltaScalar() = default;

// The difference to the printer's plane of this colour. Unlike a curve's, the transform is rounded
// before the reference is added, the residue is plain bytes, and both come in scan order.
Operators* CBuild_Plane::Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) {
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    RawData* rawData = veltune->GetRawData();
    CPropertiesHelper* helper = Defer(frame, Create<Configuration, CPropertiesHelper>());
    static_cast<plinth::v1::core::CObject*>(helper)->Init();
    // From the recipe's end: each call takes its packet off the list.
    IArray_uint8* scalarPacket = ResolvePacket<CPacket_DeltaScalar>(frame, operators, veltune);
    IArray_uint8* residuePacket = ResolvePacket<CPacket_ColorResidue>(frame, operators, veltune);
    IArray_uint8* dctArray = ResolvePacket<CPacket_ColorDCT>(frame, operators, veltune);

    short* scanned = NewBuffer<short>(frame, kRoom);
    short* residue = NewBuffer<short>(frame, kRoom);
    Ctr::ExpandSignMagnitude(scanned, residuePacket->GetElements(),
                             static_cast<unsigned int>(residuePacket->GetCount()));
    Ctr::InverseZigzag(residue, scanned);

    // By which the caller's records are asked; any channel but C, M and Y counts as black.
    const int index = helper->GetColorIndex(properties);
    BytePacket dctPacket =
        PacketOf(KeyOf(veltune, 'D', helper->GetColorChar(properties)), dctArray);
    BytePacket* referenceCbat = rawData->getCbatPacket(index);
    // The widths are the printer's, not the pack's: no request without them.
    if (referenceCbat == nullptr) {
      PLINTH_RAISE(CException_General);
    }
    short* coefficients = NewBuffer<short>(frame, kRoom);
    ReadCbat(&dctPacket, referenceCbat, scalarPacket->Get(0), coefficients);
    int* spectrum = NewBuffer<int>(frame, kRoom);
    Ctr::InverseZigzag(spectrum, coefficients);
    float* transform = NewBuffer<float>(frame, kRoom);
    Transform(Ctr::InverseDct3D(spectrum, transform));

    BytePacket* reference = rawData->getRefPacket(index);
    if (reference == nullptr || reference->data == nullptr) {
      PLINTH_RAISE(CException_General);
    }
    unsigned char* referencePlane = NewBuffer<unsigned char>(frame, kRoom);
    Ctr::LoadPlane(referencePlane, reference->data, reference->getExtent());

    using Bytes = plinth::v1::core::CArray_uint8;
    IArray_uint8* plane = Defer<IArray_uint8>(frame, Create<Configuration, Bytes>());
    plane->Init(static_cast<int>(kRoom));
    unsigned char* points = plane->GetElements();
    Ctr::AddResidueColor(points, referencePlane, transform, residue);
    // The key is over the 4913 points alone.
    const CorrectionPacket& correction = rawData->m_aCorrections[index];
    if (HasCorrection(veltune, index) && DigestMatches(points, Ctr::kPlane, correction)) {
      unsigned char* correctionPlane = NewBuffer<unsigned char>(frame, kRoom);
      Ctr::LoadPlane(correctionPlane, correction.data, correction.cbData);
      Ctr::ApplyCorrection(points, correctionPlane, Ctr::kPlane);
    }
    this->data.Take(Create<Configuration, CChannelMapData>());
    this->data->Init(plane);
    this->Call_Callback_Resolve_Done();
  }
  PLINTH_END
  return operators;
}

}  // namespace velora::v2::fenn::core::components
