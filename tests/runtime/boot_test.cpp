// Process boot and clean-up, through the flat functions: what exists, who counts, what is refused.
#include "plinth/runtime/api/boot.h"

#include "plinth/runtime/api/flat.h"
#include "plinth/runtime/api/handler/IHandler_Memory.h"
#include "plinth/runtime/posix/CBootManager_Posix.h"
#include "tests/support/runtime_fixture.h"

namespace velora_test {
namespace {

using _exports::posix::CBootManager_Posix;

class BootTest : public ::testing::Test {
 protected:
  ~BootTest() override {
    FreeBootRecord(record);
    CleanupProcess(Slots<Configuration>());
    CleanupProcess(flat);
  }

  BootSlots& flat = Slots<FlatConfiguration>();
  BootRecord* record = Boot(flat);
};

TEST_F(BootTest, RoundsOfBootAndCleanupEachServeACall) {
  for (int round = 0; round < 3; ++round) {
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(_plinth_v1_Initialize_Posix_So(nullptr), 0);
    EXPECT_EQ(record->platform->refCount, 1) << "the block in which it was made";
    ASSERT_NE(_plinth_v1_Initialize_Posix_So(record), 0);
    EXPECT_EQ(record->platform->refCount, 2) << "the flat block was full already";
    EXPECT_EQ(static_cast<CBootManager_Posix*>(record->bootManager)->GetRefCount(), 2);
    EXPECT_EQ(CodeOf([this] { record->platform->memory->Allocate(0, false, true); }), 3000);
    FreeBootRecord(record);
    _plinth_v1_Cleanup_Thread_Posix_So();
    EXPECT_EQ(flat.threadContextManager->GetJumpManager(), nullptr);
    _plinth_v1_Cleanup_Process_Posix_So();
    EXPECT_EQ(flat.bootManager, nullptr);
    EXPECT_EQ(Slots<Configuration>().platform, nullptr);
    record = Boot(flat);
  }
}

// A process has one boot: an empty block takes the objects of a full one.
TEST_F(BootTest, ObjectsLiveAsLongAsOneBlockHoldsThem) {
  ASSERT_NE(_plinth_v1_Initialize_Posix_So(record), 0);
  FreeBootRecord(record);
  CleanupProcess(flat);
  const BootSlots& foundation = Slots<Configuration>();
  EXPECT_EQ(foundation.platform->refCount, 1);
  EXPECT_EQ(CodeOf([] { PLINTH_RAISE(CException_General); }), 1);

  CJumpManager* const known = JumpManager();
  record = Boot(flat);
  ASSERT_TRUE(IsFull(flat));
  EXPECT_EQ(flat.bootManager, foundation.bootManager);
  EXPECT_EQ(flat.threadContextManager, foundation.threadContextManager);
  EXPECT_EQ(flat.platform, foundation.platform);
  EXPECT_EQ(flat.platform->refCount, 2);
  EXPECT_EQ(JumpManager(), known);
}

}  // namespace
}  // namespace velora_test
