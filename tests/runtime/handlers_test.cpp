// The four handlers: codes for bad arguments, and what really reaches the C library.
#include <errno.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <limits.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "plinth/runtime/common/handler/CHandler_Debug.h"
#include "plinth/runtime/common/handler/CHandler_File.h"
#include "plinth/runtime/common/handler/CHandler_Memory.h"
#include "plinth/runtime/common/handler/CHandler_String.h"
#include "plinth/runtime/posix/handler/CHandler_Debug_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_File_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_String_Posix.h"
#include "tests/support/data.h"
#include "tests/support/process_heap.h"
#include "tests/support/runtime_fixture.h"

namespace velora_test {
namespace {

using namespace _exports::common::handler;
using namespace _exports::posix::handler;

class HandlerTest : public RuntimeTest<> {
 protected:
  IHandler_File* file = runtime.record.platform->file;
  IHandler_Debug* debug = runtime.record.platform->debug;
  IHandler_Memory* memory = runtime.record.platform->memory;
  IHandler_String* string = runtime.record.platform->string;
};

void* Handle(int descriptor) { return reinterpret_cast<void*>(static_cast<intptr_t>(descriptor)); }
int Descriptor(void* handle) { return static_cast<int>(reinterpret_cast<intptr_t>(handle)); }

void ExhaustHeap(IHandler_Memory* memory, bool raise) {
  WatchProcessHeap(1);
  void* const block = memory->Allocate(INT_MAX / 2, false, raise);
  StopWatching();
  EXPECT_EQ(block == nullptr, CanWatchProcessHeap());
  memory->Free(block);
}

TEST_F(HandlerTest, AllocateRaisesByCode) {
  CHandler_Memory blank;
  const struct {
    IHandler_Memory* handler;
    int size;
    int code;
  } rows[] = {{memory, 0, 3000}, {memory, INT_MIN, 3000}, {&blank, 0, 3000}, {&blank, 8, 4000}};
  for (const auto& row : rows) {
    EXPECT_EQ(CodeOf([&] { row.handler->Allocate(row.size, true, false); }), row.code) << row.size;
  }
  EXPECT_EQ(CodeOf([&] { ExhaustHeap(memory, false); }), 0);
  EXPECT_EQ(CodeOf([&] { ExhaustHeap(memory, true); }), CanWatchProcessHeap() ? 2000 : 0);
  StopWatching();
}

class FileTest : public HandlerTest {
 protected:
  FileTest() { path = velora_test::ScratchPath("file"); }
  ~FileTest() override { unlink(path.c_str()); }

  // Opens, or answers the code as a negative number.
  int Open(const char* name, int flags) {
    volatile int descriptor = -1;
    const int code = CodeOf([&] { descriptor = Descriptor(file->Open(name, flags)); });
    return code != 0 ? -code : descriptor;
  }

  std::string path;
};

TEST_F(FileTest, FlagsReachTheSystem) {
  const struct {
    int flags;
    int status;  // of the open descriptor
  } rows[] = {{2 | 32, O_WRONLY},
              {1, O_RDONLY},
              {4, O_RDWR},
              {2 | 8, O_WRONLY | O_APPEND},
              {1 | 16, O_RDONLY | O_NONBLOCK}};
  for (const auto& row : rows) {
    const int descriptor = Open(path.c_str(), row.flags);
    ASSERT_GE(descriptor, 0) << row.flags;
    EXPECT_EQ(fcntl(descriptor, F_GETFL) & (O_ACCMODE | O_APPEND | O_NONBLOCK), row.status);
    file->Close(Handle(descriptor));
    EXPECT_EQ(fcntl(descriptor, F_GETFL), -1) << "closed";
    chmod(path.c_str(), 0600);
  }
  EXPECT_EQ(Open(path.c_str(), 2 | 32 | 128), -1000) << "exclusive";
}

TEST_F(FileTest, BytesGoOutAndComeBack) {
  char text[] = "seventeen planes", back[32] = {};
  void* handle = Handle(Open(path.c_str(), 4 | 32));
  EXPECT_EQ(file->Write(handle, 4, 4, text), 16);
  EXPECT_EQ(file->GetSize(handle), 16);
  lseek(Descriptor(handle), 6, SEEK_SET);
  EXPECT_EQ(file->Read(handle, 8, 4, back), 10) << "fewer than asked at the end";
  EXPECT_STREQ(back, "een planes");
  file->Close(handle);
  chmod(path.c_str(), 0600);
  handle = Handle(Open(path.c_str(), 2 | 64));
  EXPECT_EQ(file->GetSize(handle), 0) << "truncated";
  EXPECT_EQ(CodeOf([&] { file->Read(handle, 1, 1, back); }), 1001) << "opened for writing";
  file->Close(handle);
  handle = Handle(Open(path.c_str(), 1));
  EXPECT_EQ(CodeOf([&] { file->Write(handle, 1, 1, text); }), 1002) << "opened for reading";
  file->Close(handle);
}

TEST_F(FileTest, RefusedArguments) {
  for (const int flags : {3, 5, 6, 7, 3 | 32}) {
    EXPECT_EQ(Open(path.c_str(), flags), -3000) << flags;
  }
  EXPECT_EQ(Open(nullptr, 1), -3000);
  EXPECT_EQ(Open(path.c_str(), 1), -1000) << "missing file";
  char buffer[8];
  const struct {
    int descriptor, size, count;
    void* buffer;
  } rows[] = {{-1, 1, 1, buffer}, {0, 0, 1, buffer}, {0, 1, 0, buffer}, {0, 1, 1, nullptr}};
  for (const auto& row : rows) {
    void* const handle = Handle(row.descriptor);
    EXPECT_EQ(CodeOf([&] { file->Read(handle, row.size, row.count, row.buffer); }), 3000);
    EXPECT_EQ(CodeOf([&] { file->Write(handle, row.size, row.count, row.buffer); }), 3000);
  }
  EXPECT_EQ(CodeOf([&] { file->GetSize(Handle(-1)); }), 3000);
  EXPECT_EQ(CodeOf([&] { file->GetSize(Handle(1 << 20)); }), 1) << "no such descriptor";
  EXPECT_EQ(CodeOf([&] { file->Close(Handle(-1)); }), 0);
  CHandler_File_Posix blank;  // arguments come first
  EXPECT_EQ(CodeOf([&] { blank.Open(path.c_str(), 1); }), 4000);
  EXPECT_EQ(CodeOf([&] { blank.Open(path.c_str(), 3); }), 3000);
  EXPECT_EQ(CodeOf([&] { blank.Read(Handle(0), 1, 1, buffer); }), 4000);
}

// The operations that take a va_list, as calls with arguments.
int Format(IHandler_String* handler, char* target, int size, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = handler->Vsnprintf(target, size, format, arguments);
  va_end(arguments);
  return length;
}

int RequiredSize(IHandler_String* handler, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int size = handler->Vsnprintf_GetRequiredSize(format, arguments);
  va_end(arguments);
  return size;
}

void Print(IHandler_Debug* handler, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  handler->_DbgPrint(format, arguments);
  va_end(arguments);
}

// What a platform does not fill in.
TEST_F(HandlerTest, BareHandlersOfferNothing) {
  CHandler_Debug bareDebug;
  CHandler_File bareFile;
  CHandler_Memory bareMemory;
  CHandler_String bareString;
  EXPECT_FALSE(bareDebug.Init() || bareMemory.Init() || bareMemory.Init(nullptr));
  EXPECT_FALSE(CHandler_Debug_Posix().Init(nullptr));
  EXPECT_TRUE(bareMemory.IsHeapMemory(&bareMemory));
  const int codes[] = {CodeOf([&] { bareDebug.StartTimer(); }),
                       CodeOf([&] { bareDebug.StopTimer(nullptr); }),
                       CodeOf([&] { bareFile.Open("", 1); }),
                       CodeOf([&] { bareFile.GetSize(nullptr); }),
                       CodeOf([&] { bareFile.Read(nullptr, 1, 1, nullptr); }),
                       CodeOf([&] { bareFile.Write(nullptr, 1, 1, nullptr); }),
                       CodeOf([&] { bareFile.Close(nullptr); }),
                       CodeOf([&] { Format(&bareString, nullptr, 1, ""); }),
                       CodeOf([&] { RequiredSize(&bareString, ""); }),
                       CodeOf([&] { bareString.Strcpy(nullptr, 1, ""); }),
                       CodeOf([&] { bareString.Strncpy(nullptr, 1, "", 1); }),
                       CodeOf([&] { bareString.Strcat(nullptr, 1, ""); })};
  EXPECT_THAT(codes, ::testing::Each(2));
}

// No size of buffer helps a character that the locale does not have.
const wchar_t kUnprintable[] = {0x10FFFFF, 0};

TEST_F(HandlerTest, FormattingIsMeasuredAndNeverCut) {
  char target[16] = "untouched";
  EXPECT_EQ(RequiredSize(string, "%d-%s", 17, "grid"), 8);
  EXPECT_EQ(RequiredSize(string, "%*d", 200000, 1), 200001) << "beyond the largest scratch";
  EXPECT_EQ(CodeOf([&] { Format(string, target, 7, "%d-%s", 17, "grid"); }), 2001);
  EXPECT_STREQ(target, "untouched");
  EXPECT_EQ(Format(string, target, 8, "%d-%s", 17, "grid"), 7);
  EXPECT_STREQ(target, "17-grid");
  EXPECT_EQ(CodeOf([&] { Format(string, target, -5, "x"); }), 2001);
  EXPECT_EQ(CodeOf([&] { Format(string, target, 16, nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { RequiredSize(string, nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { RequiredSize(string, "%ls", kUnprintable); }), 3000);
  CHandler_String_Posix blank;
  EXPECT_EQ(CodeOf([&] { Format(&blank, target, 16, "x"); }), 4000);
}

TEST_F(HandlerTest, StringCopiesKeepTheirLimits) {
  char target[8];
  const struct {
    int size;
    const char* source;
    const char* copied;
  } copies[] = {{4, "magent", "mag"}, {6, "black", "black"}, {5, "black", "blac"}, {1, "k", ""}};
  for (const auto& row : copies) {
    EXPECT_EQ(string->Strcpy(target, row.size, row.source), static_cast<int>(strlen(row.source)));
    EXPECT_STREQ(target, row.copied);
    debug->StrCpy(target, row.size, row.source);
    EXPECT_STREQ(target, row.copied);
  }
  memcpy(target, "KC\0####", 8);
  string->Strcat(target, 4, "MYxyz");
  EXPECT_STREQ(target, "KCMYx");
  string->Strncpy(target, 1, "cyan", 3);  // the size limits nothing, and nothing terminates
  EXPECT_STREQ(target, "cyaYx");

  const struct {
    char* target;
    int size;
    const char* source;
  } refused[] = {{nullptr, 4, "x"}, {target, 0, "x"}, {target, 4, nullptr}};
  CHandler_Debug_Posix blank;
  blank.StrCpy(target, 8, "x");
  for (const auto& row : refused) {
    EXPECT_EQ(CodeOf([&] { string->Strcpy(row.target, row.size, row.source); }), 3000);
    EXPECT_EQ(CodeOf([&] { string->Strncpy(row.target, row.size, row.source, 1); }), 3000);
    EXPECT_EQ(CodeOf([&] { string->Strcat(row.target, row.size, row.source); }), 3000);
    debug->StrCpy(row.target, row.size, row.source);
  }
  EXPECT_STREQ(target, "cyaYx");
}

TEST_F(HandlerTest, DebugOutputPrintsWholeTextsAndFailsInSilence) {
  CHandler_Debug_Posix blank;
  const int before = heap.live;
  ::testing::internal::CaptureStdout();
  Print(debug, "%s=%d;", "n", 17);
  Print(debug, "%5000d", 1);
  Print(debug, nullptr);
  Print(&blank, "hidden");
  Print(debug, "%ls", kUnprintable);
  for (int nth = 1; nth <= 2 && CanWatchProcessHeap(); ++nth) {
    WatchProcessHeap(nth);
    Print(debug, "hidden");
    StopWatching();
  }
  fflush(stdout);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "n=17;" + std::string(4999, ' ') + "1");

  // Timers measure nothing.
  EXPECT_EQ(debug->StopTimer(debug->StartTimer()), 0);
  EXPECT_EQ(debug->StopTimer(nullptr), -1);
  EXPECT_EQ(heap.live, before);
}

}  // namespace
}  // namespace velora_test
