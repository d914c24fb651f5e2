#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "tests/support/data.h"
#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/file.h"

namespace toolkit_test {
namespace {

// Reads a file's bytes into a RawData of medium P, axis K, directly or through a file on disk.
struct Read {
  explicit Read(const Bytes& bytes, char medium = 'P') : raw(medium, 'K'), memory(bytes) {
    memory.shrink_to_fit();
    AnyEndian reader(memory.data(), static_cast<unsigned int>(memory.size()));
    lines = Capture([&] { result = raw.readPfd(reader, &ct); });
  }
  explicit Read(const std::string& path) : raw('P', 'K') {
    lines = Capture([&] { result = raw.readPfd(path.c_str(), &buffer, &ct); });
  }
  ~Read() { free(buffer); }

  CT_PROCESSING ct = {7, 0, {}, {}};
  RawData raw;
  Bytes memory;
  unsigned char* buffer = nullptr;
  bool result = false;
  std::string lines;
};

// A file on disk, as long as it lives.
struct OnDisk {
  explicit OnDisk(const Bytes& bytes) {
    FILE* file = fopen(path.c_str(), "wb");
    fwrite(bytes.data(), 1, bytes.size(), file);
    fclose(file);
  }
  ~OnDisk() { unlink(path.c_str()); }

  const std::string path = velora_test::ScratchPath("file.pfd");
};

TEST(ReadPfd, KeepsThePacketsOfMediumAndAxis) {
  Read read(PfdFile('M', {{"GENxyz", "PKM", 0, {9, 9}},
                          {"CPDS  ", "pkm", 200, {}},
                          {"CPDC  ", "PKM", 0, {1, 2, 3}},
                          {"CPRS  ", "PKC", 1, {6, 7}},  // the file's colour counts, not this one
                          {"CPRS  ", "GKM", 0, {4}},     // another medium
                          {"CPRS  ", "PPM", 0, {5}},     // another axis
                          {"CPCB  ", "PKM", 0, {8}}}));  // has no place
  EXPECT_TRUE(read.result);
  EXPECT_EQ(read.lines, "");
  const PfdHeader& header = read.raw.m_aPfdHeaders[2];
  EXPECT_EQ(header.key, ReconKey('\0', 'M', '*', '*'));
  EXPECT_EQ(Bytes({header.a, header.b[2], header.c[7], header.version[1]}), Bytes({61, 73, 88, 4}));
  EXPECT_EQ(read.raw.getPfdPacket(2, 'S')->scalar, 200);
  EXPECT_EQ(read.raw.getPfdPacket(2, 'S')->key, ReconKey('S', 'M', 'P', 'K'));
  EXPECT_EQ(read.raw.getPfdPacket(2, 'D')->length, 3);
  EXPECT_EQ(read.raw.getPfdPacket(2, 'D')->data[2], 3);
  EXPECT_FALSE(read.raw.getPfdPacket(2, 'D')->compressed);
  EXPECT_EQ(read.raw.getPfdPacket(2, 'R')->data[0], 6);
  EXPECT_TRUE(read.raw.getPfdPacket(2, 'R')->compressed);
  // A channel that is not requested, and a file that is no PFD.
  EXPECT_EQ(Read(PfdFile('Y', {{"CPDC  ", "PKY", 0, {1}}})).raw.m_aPfdPackets[13].data, nullptr);
  EXPECT_FALSE(Read(Bytes(28, 'G')).result);
}

TEST(ReadPfd, GetPfdPacketTellsWhatIsMissing) {
  Read read(PfdFile('K', {{"CPRS  ", "PKK", 0, {}}}));
  const struct {
    int color;
    char code;
    int line;
    const char* message;
  } rows[] = {
      {3, 's', 49, "Error: Delta scalar cannot be null for s30."},
      {1, 'd', 57, "Error: Packet data ptr cannot be null for d11."},
      {0, 'R', 62, "Error: Non-scalar Packet length cannot be zero for R02."},
      {0, 'C', 0, ""},
      {4, 'D', 0, ""},
      {-1, 'D', 0, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Capture([&] { EXPECT_EQ(read.raw.getPfdPacket(row.color, row.code), nullptr); }),
              Line("getPfdPacket", row.line, row.message));
  }
  read.raw.m_aPfdPackets[2].key = ReconKey('r', 'P');
  EXPECT_NE(read.raw.getPfdPacket(0, 'r'), nullptr);  // a mono residue may be empty
}

TEST(ReadPfd, WorkaroundGoesByEntryNumbers) {
  const struct {
    uint8_t version;
    char color;
    size_t entry;
    int line;
  } rows[] = {
      {18, 'K', 9, 0}, {18, 'k', 10, 203}, {18, 'K', 19, 203}, {18, 'K', 20, 0}, {19, 'K', 12, 0},
      {18, 'C', 5, 0}, {18, 'C', 6, 208},  {18, 'Y', 11, 208}, {18, 'Y', 12, 0},
  };
  for (const auto& row : rows) {
    std::vector<PfdPacket> packets(row.entry, {"GENxyz", "PKK", 0, {}});
    packets.push_back({"CPDC  ", std::string("PK") + row.color, 0, {1}});
    const Bytes file = PfdFile('K', packets, row.version);
    const Read plain(file), photo(file, 'C');
    EXPECT_EQ(plain.lines, Line("readPfd", row.line, "Attention: TVN7302 Photo workaround."));
    EXPECT_EQ(plain.raw.m_aPfdPackets[1].data != nullptr, row.line == 0) << row.entry;
    EXPECT_EQ(photo.raw.m_aPfdPackets[1].data != nullptr, row.line != 0) << row.entry;
  }
}

TEST(ValidateWrapper, CodesAndLines) {
  const struct {
    size_t place;  // a byte of the file
    uint8_t value;
    int result;
    int line;
    const char* message;
  } rows[] = {
      {36 + 6, 44, 0, 0, ""},  // equal offsets are in order
      {36 + 6, 43, 160, 143, "Error: TOC entry 1 out of order CPRSab (offset 0x24)."},
      {23, 5, 161, 118, "Error: 0x1005 is not a valid imaging PFD payload tag."},
      {36 + 3, 'X', 162, 134, "Error: CPRX is not a valid packet tag."},
  };
  for (const auto& row : rows) {
    Bytes file = PfdFile('K', {{"CPDC  ", "PKK", 0, {}}, {"CPRSab", "PKK", 0, {}}});
    file[row.place] = row.value;
    AnyEndian reader(file.data(), static_cast<unsigned int>(file.size()));
    EXPECT_EQ(Capture([&] { EXPECT_EQ(RawData::validateWrapper(reader), row.result); }),
              Line("validateWrapper", row.line, row.message));
  }
}

// However a file is cut or lies, nothing behind its end is read; what lies inside is still found.
TEST(ReadPfdFile, PassesOverWhatDoesNotLieInside) {
  const Bytes whole = PfdFile('K', {{"CPDC  ", "PKK", 0, {1, 2, 3}}, {"CPDS  ", "PKK", 7, {}}});
  for (size_t cut = 1; cut <= whole.size(); ++cut) {
    const OnDisk file(Bytes(whole.begin(), whole.begin() + static_cast<long>(cut)));
    const Read read(file.path);
    EXPECT_EQ(read.result, cut >= 28);
    EXPECT_EQ(read.raw.m_aPfdPackets[1].length, cut >= whole.size() - 8 ? 3 : 0);
    EXPECT_EQ(read.raw.m_aPfdPackets[0].scalar, cut == whole.size() ? 7 : 0);
  }
  for (const size_t place : {28 + 7, 44 + 9}) {  // high bytes of the first offset and length
    Bytes bytes = whole;
    bytes[place] = 0xFF;
    const OnDisk file(bytes);
    const Read read(file.path);
    EXPECT_TRUE(read.result);
    EXPECT_EQ(read.raw.m_aPfdPackets[1].data, nullptr);
  }
}

TEST(ReadPfdFile, FilesThatCannotBeRead) {
  const std::string header =
      Line("readPfd", 241, "Error: PFD header invalid.  Are we attempting to read Velcases?");
  const std::string folder = testing::TempDir(), missing = velora_test::ScratchPath("none");
  EXPECT_EQ(Read(missing).lines,
            Line("ReadFile", 704, "Unable to open file " + missing + ".") + header);
  EXPECT_EQ(Read(folder).lines,
            Line("ReadFile", 712, "Error getting length for file " + folder + ".") + header);
  Bytes small(2);
  const OnDisk longer({1, 2, 3});
  const auto nextDescriptor = [] {
    const int next = dup(0);
    close(next);
    return next;
  };
  Capture([&] {
    const int next = nextDescriptor();
    Ctr::ReadFile(small.data(), longer.path.c_str(), 2);
    EXPECT_EQ(nextDescriptor(), next) << "a descriptor was kept";
  });
  EXPECT_EQ(small, Bytes(2)) << "all or nothing";
}

TEST(ReadPfdFile, ASecondFileLeavesNothingOfTheFirst) {
  Read read(PfdFile('K', {{"CPDS  ", "PKK", 7, {}}, {"CPDC  ", "PKK", 0, {1}}}));
  Bytes shorter = PfdFile('K', {{"CPDS  ", "PKK", 9, {}}});
  AnyEndian reader(shorter.data(), static_cast<unsigned int>(shorter.size()));
  EXPECT_TRUE(read.raw.readPfd(reader, &read.ct));
  EXPECT_EQ(read.raw.m_aPfdPackets[0].scalar, 9);
  EXPECT_EQ(read.raw.m_aPfdPackets[1].data, nullptr);
}

}  // namespace
}  // namespace toolkit_test
