// Process boot and clean-up, through the flat functions: what stands, who counts, what is refused.
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
    FreeBootRecord(flat, record);
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
    FreeBootRecord(flat, record);
    _plinth_v1_Cleanup_Thread_Posix_So();
    EXPECT_EQ(flat.threadContextManager->GetJumpManager(), nullptr);
    _plinth_v1_Cleanup_Process_Posix_So();
    EXPECT_EQ(flat.bootManager, nullptr);
    EXPECT_EQ(Slots<Configuration>().platform, nullptr);
    record = Boot(flat);
  }
}

TEST_F(BootTest, ObjectsLiveAsLongAsOneBlockHoldsThem) {
  ASSERT_NE(_plinth_v1_Initialize_Posix_So(record), 0);
  FreeBootRecord(flat, record);
  CleanupProcess(flat);
  EXPECT_EQ(Slots<Configuration>().platform->refCount, 1);
  EXPECT_EQ(CodeOf([] { PLINTH_RAISE(CException_General); }), 1);

  // The next call's objects are others; the foundation keeps those it has.
  record = Boot(flat);
  ASSERT_NE(_plinth_v1_Initialize_Posix_So(record), 0);
  EXPECT_NE(Slots<Configuration>().platform, flat.platform);
  EXPECT_EQ(flat.platform->refCount, 1);
  ASSERT_TRUE(ShareThread(Slots<Configuration>(), flat));
  EXPECT_EQ(JumpManager<Configuration>(), JumpManager<FlatConfiguration>());
  EXPECT_EQ(JumpManager<Configuration>()->refCount, 2);
  EXPECT_EQ(CodeOf([] { Raise<FlatConfiguration, CException_This_Invalid>(); }), 4000)
      << "frames of both blocks meet on one stack";
  _plinth_v1_Cleanup_Thread_Posix_So();
  EXPECT_EQ(JumpManager<Configuration>(), nullptr);
  EXPECT_EQ(JumpManager<FlatConfiguration>(), nullptr);
}

}  // namespace
}  // namespace velora_test
