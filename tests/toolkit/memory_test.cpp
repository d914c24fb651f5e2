#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/message.h"

namespace toolkit_test {
namespace {

std::string Format(const char* format, const void* pointer) {
  char text[200];
  snprintf(text, sizeof(text), format, pointer);
  return text;
}

TEST(Tracker, NamesEachBlockAndFreesFamiliesFromTheLastSlot) {
  void* blocks[3];
  std::string lines = Capture([&] { blocks[0] = Ctr::AllocMem(7); }, true);
  EXPECT_EQ(lines, Line("AllocMem", 50, Format("AllocMem(7). Pointer %p. Slot 0", blocks[0])));
  lines = Capture([&] { blocks[1] = Ctr::AllocMem(8, 'Q'); }, true);
  EXPECT_EQ(lines,
            Line("AllocMem", 54, Format("AllocMem(8). Pointer %p. Tag Q. Slot 1", blocks[1])));
  Capture([&] { blocks[2] = Ctr::AllocMem(9, 'Q'); });
  lines = Capture([] { Ctr::DeallocMem('q'), Ctr::DeallocMem('Q'); }, true);
  const char* freed = "DEBUG: Ctr::DeallocMem Q-tagged (%p) (#";
  EXPECT_EQ(lines, Line("DeallocMem", 107, Format(freed, blocks[2]) + "2).") +
                       Line("DeallocMem", 107, Format(freed, blocks[1]) + "1)."));
  lines = Capture([&] { Ctr::DeallocMem(blocks[0]), Ctr::DeallocMem(nullptr); }, true);
  EXPECT_EQ(lines, Line("DeallocMem", 89, Format("DEBUG: Ctr::DeallocMem(%p) (#0).", blocks[0])));
  EXPECT_EQ(LiveBlocks(), 0);

  int own = 5;
  const char* unknown = "WARNING: Ctr::DeallocMem(%p) Memory tracker cannot find allocated memory.";
  EXPECT_EQ(Capture([&] { Ctr::DeallocMem(&own); }, true),
            Line("DeallocMem", 81, Format(unknown, &own)));
}

TEST(Tracker, The41stBlockFailsAndIsNotConstructed) {
  const std::string size = std::to_string(sizeof(RawData));
  const std::string line =
      Line("operator new", 33, "AllocMem new RawData " + size + " (RawData new)");
  RawData* raw = nullptr;
  {
    CrowdedTracker crowd(0);
    EXPECT_EQ(Capture([&] { EXPECT_EQ(new RawData('P', 'M'), nullptr); }, true),
              line + Line("AllocMem", 41, "ERROR: AllocMem(" + size + "). Memory tracker full."));
  }
  EXPECT_EQ(Capture([&] { raw = new RawData('P', 'M'); }), line);
  EXPECT_EQ(Capture([&] { delete raw; }),
            Line("operator delete", 38, "DeallocMem delete RawData (RawData delete)"));
  EXPECT_EQ(LiveBlocks(), 0);
}

TEST(Message, LongOnesArePrintedWhole) {
  for (const size_t length : {1022, 1023, 1024, 5000}) {
    const std::string text(length, 'x');
    EXPECT_EQ(Capture([&] { Ctr::PrintLine("f", 1, "%s!", text.c_str()); }),
              Line("f", 1, text + "!"));
  }
}

}  // namespace
}  // namespace toolkit_test
