#include "tests/support/process_heap.h"
#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/DifferenceColor.h"
#include "velora/frontend/toolkit/DifferenceMono.h"
#include "velora/frontend/toolkit/digest.h"

namespace toolkit_test {
namespace {

struct Result {
  int status;
  Bytes table;
  Bytes digest;
};

// A request for one channel whose reference is 100, whose transform is 3 (colour) or 2 (mono)
// everywhere, whose point 0 has a residue of -5, and whose correction adds 10.
struct Request {
  explicit Request(bool mono, bool compressed = false, const std::string& without = "")
      : mono(mono), raw('P', mono ? 'M' : 'P'), planes(4 * 4913, 100), corrections(4 * 4913, 138) {
    FieldWriter dct, residue;
    dct.Add(12, mono ? 16 : 105);  // twice this, over sqrt(256) or sqrt(4913)
    residue.Add(4, -5);
    for (int i = 1; i < (mono ? 256 : 4913); ++i) dct.Add(0, 0), residue.Add(0, 0);
    widths = dct.widths;
    Bytes plane(4913);
    plane[0] = 133;
    std::vector<PfdPacket> packets;
    const auto add = [&](const std::string& tag, uint8_t value, const Bytes& data) {
      if (tag == without) return;
      const bool compress = compressed && !data.empty();
      packets.push_back({tag + "  ", mono ? "PMK" : "PPY", compress ? uint8_t{1} : value,
                         compress ? Compress(data, data.size()) : data});
    };
    add(mono ? "BCDS" : "CPDS", 2, {});
    add(mono ? "BCDC" : "CPDC", 0, dct.data);
    add(mono ? "BCRS" : "CPRS", 0, mono ? residue.data : plane);
    if (mono) add("BCAC", 0, residue.widths);
    file = PfdFile(mono ? 'K' : 'Y', packets);
    AnyEndian reader(file.data(), static_cast<unsigned int>(file.size()));
    EXPECT_TRUE(raw.readPfd(reader, &ct));
    const uint8_t* cbat = widths.data();
    const uint16_t cb = static_cast<uint16_t>(widths.size());
    const ReferenceTable table = {planes.data(), {cbat, cbat, cbat, cbat}, {cb, cb, cb, cb}};
    if (without != "reference") raw.readReferenceTable(&table, &ct, Axis(), CTR_MEDIA_P);
  }

  ctr_axis_type Axis() const { return mono ? CTR_AXIS_MONO : CTR_AXIS_P; }

  void Correct(const Bytes& expected) {
    key = expected;
    const uint8_t* bytes = key.data();
    const TableCorrections record = {{bytes, bytes, bytes, bytes}, corrections.data()};
    raw.readTableCorrection(&record, &ct, Axis(), CTR_MEDIA_P);
  }

  // On request with an allocation that fails, see process_heap.h.
  Result Run(int nth = 0) {
    Result result;
    const int before = LiveBlocks();
    Capture([&] {
      velora_test::WatchProcessHeap(nth);
      if (mono) {
        const DifferenceMono object('P', &raw, &ct);
        velora_test::EndShortage();
        result.status = object.status;
        if (object.status == 0)
          result.table.assign(object.m_DiffTablePtr, object.m_DiffTablePtr + 256);
        result.digest.assign(object.digest, object.digest + 32);
      } else {
        const DifferenceColor object(ContentKey('Y', 'P', 'P'), &raw, &ct);
        velora_test::EndShortage();
        result.status = object.status;
        const unsigned char* data = object.m_DifferenceData;
        if (object.status == 0) result.table.assign(data, data + 4913);
        result.digest.assign(object.digest, object.digest + 32);
      }
    });
    velora_test::StopWatching();
    EXPECT_EQ(LiveBlocks(), before);
    return result;
  }

  bool mono;
  RawData raw;
  CT_PROCESSING ct = {15, 0, {}, {}};
  Bytes planes, corrections, widths, file, key;
};

// The table that a request gives, moved by `correction`.
Bytes Expected(bool mono, int correction = 0) {
  Bytes table(mono ? 256 : 4913, static_cast<uint8_t>((mono ? 102 : 103) + correction));
  table[0] = static_cast<uint8_t>(table[0] - 5);
  return table;
}

Bytes Digest(const Bytes& table) {
  Bytes digest(32);
  Ctr::ComputeSha256(table.data(), static_cast<unsigned int>(table.size()), digest.data());
  return digest;
}

TEST(Differences, AddTransformAndResidueAndCorrectWhenTheKeyMatches) {
  for (const bool mono : {false, true}) {
    const Bytes plain = Expected(mono), digest = Digest(plain);
    for (const bool compressed : {false, true}) {
      EXPECT_EQ(Request(mono, compressed).Run().table, plain);
      for (const Bytes& key : {digest, Bytes(32)}) {
        Request request(mono, compressed);
        request.Correct(key);
        const Result result = request.Run();
        EXPECT_EQ(result.table, key == digest ? Expected(mono, 10) : plain);
        EXPECT_EQ(result.digest, digest);  // of the table before correction
      }
    }
  }
}

TEST(Differences, EndEarlyWithAStatus) {
  const struct {
    bool mono;
    const char* without;
    int status;
  } rows[] = {
      {false, "CPDS", 164}, {false, "CPRS", 164}, {false, "CPDC", 192}, {false, "reference", 192},
      {true, "BCDS", 164},  {true, "BCRS", 164},  {true, "BCAC", 164},  {true, "reference", 164},
      {true, "BCDC", 0},  // reference and residue are a table
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Request(row.mono, false, row.without).Run().status, row.status) << row.without;
  }
}

TEST(Differences, StayInsideACurveInPlaceOfAPlaneAndAPlaneInPlaceOfACurve) {
  Request color(false);
  Bytes curve(256, 50);
  color.raw.m_aRefPackets[3].data = curve.data();
  color.raw.m_aRefPackets[3].length = 256;
  Bytes expected(4913, 3);
  std::fill_n(expected.begin(), 256, uint8_t{53});
  expected[0] = 48;
  EXPECT_EQ(color.Run().table, expected);

  Request mono(true);
  Bytes widths(2457, 0x11);
  mono.raw.m_aCbatPackets[0].key = ReconKey('C', 'K', 'P', 'P');
  mono.raw.m_aCbatPackets[0].data = widths.data();
  mono.raw.m_aCbatPackets[0].length = 2457;
  EXPECT_EQ(mono.Run().status, 208);
}

// Each allocation fails once, for want of a slot or of memory; whatever was made until then goes
// with the object.
TEST(Differences, SurviveEachFailedAllocation) {
  for (const bool mono : {false, true}) {
    Request request(mono);
    request.Correct(Digest(Expected(mono)));
    const int needed = mono ? 5 : 7;
    for (int free = 0; free <= needed; ++free) {
      CrowdedTracker crowd(free);
      EXPECT_EQ(request.Run().status, free < needed ? 192 : 0) << free;
    }
    int nth = 1;
    while (request.Run(nth).status == 192) {
      ++nth;
    }
    EXPECT_EQ(request.Run(nth).table, Expected(mono, 10));
    EXPECT_EQ(nth > needed, velora_test::CanWatchProcessHeap()) << nth;
  }
}

}  // namespace
}  // namespace toolkit_test
