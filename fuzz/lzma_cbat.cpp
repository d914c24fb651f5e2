// Width tables, fields and LZMA streams as packets have them. The first byte names what is
// compressed, the next four the length of the width table and the scalar; the table is in front.
#include <string.h>

#include <memory>

#include "fuzz/support/promise.h"
#include "fuzz/support/toner_call.h"
#include "velora/frontend/toolkit/cbat.h"

namespace fuzz {

static BytePacket PacketOf(char axis, bool compressed, const Bytes& bytes, unsigned char* block) {
  if (!bytes.empty()) {
    memcpy(block, bytes.data(), bytes.size());
  }
  BytePacket packet(ReconKey('D', 'K', 'P', axis));
  packet.compressed = compressed;
  packet.length = static_cast<short>(bytes.size());
  packet.data = block;
  return packet;
}

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  Input input(data, size);
  const int chosen = input.Byte();
  const int count = input.Short();
  const auto scalar = static_cast<unsigned char>(input.Byte());
  const int room = input.Short();
  Bytes widths = input.Take(static_cast<size_t>(count));
  const Bytes fields = input.Take(65535);
  if ((chosen & 4) != 0) {
    widths.resize((chosen & 8) != 0 ? 128 : 2457, static_cast<unsigned char>(scalar * 17));
  }
  const char axis = (chosen & 8) != 0 ? 'M' : 'P';
  const std::unique_ptr<unsigned char[]> first(new unsigned char[widths.size()]);
  const std::unique_ptr<unsigned char[]> second(new unsigned char[fields.size()]);
  BytePacket widthPacket = PacketOf(axis, (chosen & 1) != 0, widths, first.get());
  BytePacket fieldPacket = PacketOf(axis, (chosen & 2) != 0, fields, second.get());
  const std::unique_ptr<short[]> out(new short[axis == 'M' ? 256 : 4913]());
  const std::unique_ptr<unsigned char[]> bytes(new unsigned char[static_cast<size_t>(room)]);

  const Promise promise;
  int last = 0;
  Ctr::CbatReader(&fieldPacket, &widthPacket, scalar, out.get(), &last);
  Expect(last >= 0 && last < (axis == 'M' ? 256 : 4913), "the last field is reported wrong");
  fieldPacket.getDecompressedSize();
  fieldPacket.decompress(bytes.get(), room);
  promise.Check();

  static unsigned int runs = 0;
  if (runs++ % 256 == 0) {
    const Unobserved unobserved;
    Expect(Run(VectorGray()), "a known call is refused");
  }
  return 0;
}
