#include <cstdio>
#include <tuple>

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
  std::string lines;
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
    result.lines = Capture([&] {
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
        request.ct.corrections = 0;
        EXPECT_EQ(request.Run().table, plain) << "no correction waits";
      }
    }
  }
}

// The lines of a class, of all that a build prints, as "line: message".
std::string OwnLines(const std::string& all) {
  std::string own;
  for (size_t begin = 0, end; begin < all.size(); begin = end) {
    end = all.find('\n', begin) + 1;
    std::string line = all.substr(begin, end - begin);
    for (const char* function : {"DifferenceColor (line ", "DifferenceMono (line ",
                                 "~DifferenceColor (line ", "doCorrectionKeysMatch (line "}) {
      const std::string start = std::string("[CTR] ") + function;
      if (line.compare(0, start.size(), start) == 0) {
        own += line.substr(start.size(), line.size() - start.size() - 2) + "\n";
      }
    }
  }
  return own;
}

TEST(Differences, SayEachStepWithItsLine) {
  Request color(false, true), mono(true, true), without(false, false, "CPDC");
  const Bytes digest = Digest(Expected(false));
  color.Correct(digest);
  mono.Correct(Digest(Expected(true)));
  char key[2 * VELORA_SIZE_KEY + 1], missing[100];
  Ctr::Key2Str(key, digest.data());
  snprintf(missing, sizeof missing, "120): \"DCT (%p) or CBAT (%p) packet not found\n", nullptr,
           static_cast<void*>(without.raw.getCbatPacket(3)));
  const std::string residue =
      "32): \"ENTRY Color=Y, Axis=P, MediaType=P\n"
      "33): \"AllocMem m_DifferenceData 4916 (DifferenceColor)\n"
      "42): \"AllocMem residueData 9832 (DifferenceColor)\n"
      "69): \"AllocMem flatResidue 9832 (DifferenceColor)\n";
  const std::string flat = "110): \"DeallocMem flatResidue (DifferenceColor)\n";
  const std::string end = "265): \"DifferenceColor::dtor\n";
  const std::string corrected =
      residue +
      "86): \"AllocMem byteResidue 4913 (DifferenceColor)\n"
      "105): \"DeallocMem byteResidue (DifferenceColor)\n" +
      flat +
      "126): \"AllocMem flatDct 9832  (DifferenceColor)\n"
      "139): \"AllocMem zigzagData 19664 (DifferenceColor)\n"
      "147): \"AllocMem transformedDct 19664 (DifferenceColor)\n"
      "164): \"AllocMem cxf 4916\n"
      "253): \"Computed correction key: " +
      key + "\n254): \"Expected correction key: " + key +
      "\n206): \"AllocMem corrects3d 4916(DifferenceColor::performTableCorrection)\n";
  EXPECT_EQ(OwnLines(color.Run().lines),
            corrected +
                "236): \"DeallocMem transformedDct,zigzagData,flatDct,refData,residueData "
                "(DifferenceColor)\n"
                "245): \"EXIT Color=Y, Axis=P, MediaType=P\n" +
                end);
  EXPECT_EQ(OwnLines(without.Run().lines), residue + flat + missing + end);
  // The last allocation is the correction's.
  std::string last;
  for (int nth = 1; velora_test::CanWatchProcessHeap(); ++nth) {
    const Result result = color.Run(nth);
    if (result.status == 0) {
      EXPECT_EQ(
          OwnLines(last),
          corrected + "211): \"Unable to allocate memory for Table Correction. Skipping.\n" + end);
      break;
    }
    last = result.lines;
  }
  EXPECT_EQ(OwnLines(mono.Run().lines),
            "28): \"AllocMem m_DiffTablePtr 256 (DifferenceMono)\n"
            "38): \"AllocMem residueDataPtr 512 (DifferenceMono)\n"
            "72): \"AllocMem dctDataIn 512 (DifferenceMono)\n"
            "101): \"AllocMem dctDataIn32 1024 (DifferenceMono)\n"
            "107): \"AllocMem transformedDct 1024 (DifferenceMono)\n"
            "123): \"DeallocMem transformedDct,dctDataIn32,dctDataIn,residueData "
            "(DifferenceMono)\n");
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
  for (const auto& [mono, compressed, needed] :
       {std::make_tuple(false, false, 7), std::make_tuple(true, false, 5),
        std::make_tuple(false, true, 7), std::make_tuple(true, true, 5)}) {
    Request request(mono, compressed);
    request.Correct(Digest(Expected(mono)));
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
