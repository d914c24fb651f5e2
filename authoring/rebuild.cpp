#include "authoring/rebuild.h"

#include <new>
#include <stdexcept>

#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/cbat.h"
#include "velora/frontend/toolkit/transform.h"
#include "velora/frontend/toolkit/zigzag.h"

namespace velora::authoring {
namespace {

BytePacket Packet(ReconKey key, const Bytes& bytes) {
  BytePacket packet(key);
  packet.length = static_cast<short>(bytes.size());
  packet.data = const_cast<unsigned char*>(bytes.data());
  return packet;
}

std::vector<short> ReadFields(char axis, const Bytes& data, const Bytes& widths,
                              unsigned char scalar, int fields) {
  BytePacket data_packet = Packet(ReconKey('d', 'K', 'P', axis), data);
  BytePacket width_packet = Packet(ReconKey('C', 'K', 'P', axis), widths);
  std::vector<short> out(fields);
  int last = 0;
  if (Ctr::CbatReader(&data_packet, &width_packet, scalar, out.data(), &last) != 0) {
    throw std::invalid_argument("the width table is too small");
  }
  return out;
}

}  // namespace

Bytes RebuildPlane(const Bytes& reference, const Bytes& widths, const Packets& packets) {
  if (reference.size() != kPlaneSize || packets.residue.size() != kPlaneSize) {
    throw std::invalid_argument("a plane and its residue have 4913 bytes");
  }
  const std::vector<short> fields =
      ReadFields('P', packets.dct, widths, packets.scalar, kPlaneSize);
  std::vector<int> coefficients(kPlaneSize);
  Ctr::InverseZigzag(coefficients.data(), fields.data());
  std::vector<float> transform(kPlaneSize);
  if (!Ctr::InverseDct3D(coefficients.data(), transform.data())) throw std::bad_alloc();

  std::vector<short> scanned(kPlaneSize), residue(kPlaneSize);
  Ctr::ExpandSignMagnitude(scanned.data(), packets.residue.data(), kPlaneSize);
  Ctr::InverseZigzag(residue.data(), scanned.data());
  Bytes out(kPlaneSize);
  Ctr::AddResidueColor(out.data(), reference.data(), transform.data(), residue.data());
  return out;
}

Bytes RebuildCurve(const Bytes& reference, const Bytes& widths, const Packets& packets) {
  if (reference.size() != kCurveSize) throw std::invalid_argument("a curve has 256 bytes");
  const std::vector<short> residue =
      ReadFields('M', packets.residue, packets.residue_widths, 1, kCurveSize);
  const std::vector<short> fields =
      ReadFields('M', packets.dct, widths, packets.scalar, kCurveSize);
  std::vector<int> coefficients(fields.begin(), fields.end());
  std::vector<float> transform(kCurveSize);
  if (!Ctr::InverseDct1D(coefficients.data(), transform.data())) throw std::bad_alloc();
  Bytes out(kCurveSize);
  Ctr::AddResidueMono(out.data(), reference.data(), transform.data(), residue.data());
  return out;
}

}  // namespace velora::authoring
