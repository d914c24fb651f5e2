// The library in its process: threads that come and go, boots, a fork, memory over many calls, and
// memory that truly runs out.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "tests/shared_library/ink_printer.h"
#include "tests/support/process_heap.h"
#include "velora/ink.h"

namespace {

const Bytes& BlobBytes() {
  static const Bytes bytes = ReadData("vectors/toner-blob/expected.bin");
  return bytes;
}

bool ServesBlob() {
  Bytes buffer;
  return BlobCall().Run(&buffer) == 1 && buffer == BlobBytes();
}

// Makes the thread known, where it has a place.
bool Boots() {
  BootRecord* record = _plinth_v1_Boot_Posix_So();
  _plinth_v1_FreeBootRecord_Posix_So(record);
  return record != nullptr;
}

// A thread that lives on between the tasks that it is given.
class Worker {
 public:
  Worker() : thread_([this] { Work(); }) {
    Do([this] { id_ = static_cast<int>(syscall(SYS_gettid)); });
  }
  ~Worker() {
    Do(nullptr);
    thread_.join();
  }
  // Runs the task to its end; null ends the thread.
  void Do(std::function<void()> task) {
    std::unique_lock<std::mutex> lock(mutex_);
    task_ = std::move(task);
    waiting_ = true;
    turn_.notify_all();
    turn_.wait(lock, [this] { return !waiting_; });
  }
  int bucket() const { return id_ & 15; }

 private:
  void Work() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (bool last = false; !last;) {
      turn_.wait(lock, [this] { return waiting_; });
      last = task_ == nullptr;
      if (!last) {
        task_();
      }
      waiting_ = false;
      turn_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable turn_;
  std::function<void()> task_;
  bool waiting_ = false;
  int id_ = 0;
  std::thread thread_;
};

// Six living threads of one bucket.
std::vector<std::unique_ptr<Worker>> Crowd() {
  std::vector<std::unique_ptr<Worker>> byBucket[16];
  for (;;) {
    auto worker = std::make_unique<Worker>();
    auto& bucket = byBucket[worker->bucket()];
    bucket.push_back(std::move(worker));
    if (bucket.size() == 6) {
      return std::move(bucket);
    }
  }
}

// More living threads than the table has places, each behind a refused call of another.
TEST(Process, ThreadsInTurnLeaveNoEntryBehind) {
  const Silence silence;
  TableCall refused = BlobCall();
  refused.packCount = 0;
  std::vector<std::unique_ptr<Worker>> workers(100);
  for (auto& worker : workers) {
    worker = std::make_unique<Worker>();
    worker->Do([&] {
      EXPECT_TRUE(ServesBlob());
      EXPECT_EQ(refused.Run(), 0);
    });
  }
  // The same through the ink doors, whose table stays while the threads come and go.
  const Bytes pack = ReadData("vectors/ink/printer.velcase");
  const ImagingBlob bytes = {static_cast<uint32_t>(pack.size()), pack.data()};
  const ImagingBlob* packs[] = {&bytes};
  ink::_factory::IFactory* factory = ink::Open();
  ASSERT_NE(factory, nullptr);
  for (auto& worker : workers) {
    worker->Do([&packs] {
      EXPECT_TRUE(Boots());
      EXPECT_EQ(ink::Try([] {}), 0);
      _velora_v1_Cleanup_Thread_Posix_So();
      velora_ink_session* sessions[2];
      for (velora_ink_session*& session : sessions) {
        EXPECT_EQ(velora_ink_open(packs, 1, InkPrinter::kPlatform, 0, &session), 1);
      }
      for (velora_ink_session* session : sessions) {
        EXPECT_EQ(velora_ink_close(session), 1);
      }
    });
  }
  factory->Destroy();
  ink::Close();
  EXPECT_TRUE(ServesBlob());
}

TEST(Process, ThreadWithoutAPlaceIsRefused) {
  const Silence silence;
  const auto workers = Crowd();
  ink::_factory::IFactory* factory = nullptr;
  workers[0]->Do([&] { factory = ink::Open(); });
  ASSERT_NE(factory, nullptr);
  for (int i = 1; i < 5; ++i) {
    workers[i]->Do([] { EXPECT_TRUE(Boots()); });
  }
  workers[5]->Do([] {
    Bytes buffer;
    EXPECT_EQ(BlobCall().Run(&buffer), 0);
    EXPECT_EQ(velora_last_reason(nullptr), VELORA_REASON_THREAD);
    EXPECT_EQ(buffer, Bytes(27, 0xA5));
    EXPECT_EQ(ink::Open(), nullptr);
    EXPECT_EQ(ink::Try([] {}), -1);
  });
  // The five do not notice, and their going makes room.
  for (int i = 0; i < 5; ++i) {
    workers[i]->Do([] { EXPECT_EQ(ink::Try([] {}), 0); });
  }
  workers[4]->Do([] { _velora_v1_Cleanup_Thread_Posix_So(); });
  workers[5]->Do([&] {
    EXPECT_TRUE(Boots());
    EXPECT_EQ(ink::Try([] {}), 0);
    factory->Destroy();
    ink::Close();
    EXPECT_TRUE(ServesBlob());
  });
}

// The exit code of `body` in a child of this process.
int InChild(const std::function<int()>& body) {
  const pid_t child = fork();
  if (child == 0) {
    _exit(body());
  }
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// A failure within another body stays with the inner one; a request behind it is served.
TEST(Process, BodiesWithinBodies) {
  EXPECT_EQ(_plinth_v1_Try_Posix_So(nullptr, nullptr), 3000);
  InkPrinter printer;
  ASSERT_EQ(printer.Open(ReadData("vectors/ink/printer.velcase")), 0);
  WISPGrayCurve gray;
  VectorRequest<WISPGrayCurve> request("gray");
  EXPECT_EQ(ink::Try([&] {
              EXPECT_EQ(ink::Try([&] { Populate(printer.veltune, nullptr, &gray); }), 3000);
              EXPECT_EQ(request.Ask(printer), 0);
            }),
            0);
  EXPECT_TRUE(request.Holds(true));
  printer.Close();
}

// A child has another thread id, and with it no entry in its copy of the table.
TEST(Process, ForkBetweenCalls) {
  const Silence silence;
  TableCall refused = BlobCall();
  refused.packCount = 0;
  const auto serve = [] { return ServesBlob() ? 0 : 1; };
  EXPECT_EQ(InChild(serve), 0) << "ahead of the first call";
  EXPECT_TRUE(ServesBlob());
  EXPECT_EQ(InChild(serve), 0);
  EXPECT_EQ(refused.Run(), 0);
  EXPECT_EQ(InChild(serve), 0) << "behind a refused call";
  EXPECT_TRUE(ServesBlob());

  InkPrinter printer;
  ASSERT_EQ(printer.Open(ReadData("vectors/ink/printer.velcase")), 0);
  VectorRequest<WISPGrayCurve> request("gray");
  const auto ask = [&] { return request.Ask(printer); };
  EXPECT_EQ(InChild([&] {
              if (ask() != -1) {
                return 1;
              }
              Boots();
              const int code = ask();
              printer.Close();
              return code != 0 ? 2 : ServesBlob() ? 0 : 3;
            }),
            0);
  EXPECT_EQ(ask(), 0);
  printer.Close();
}

// What stays of a call in the _So form: its boot record of three pointers, and nothing else.
TEST(Process, MemoryOverManyCalls) {
  if (!velora_test::CanWatchProcessHeap()) {
    GTEST_SKIP() << "the sanitizer owns the heap";
  }
  const Silence silence;
  const struct {
    TableCall call;
    int count;
  } rows[] = {{BlobCall(), 10000}, {GrayCall(), 200}, {CmykCall(), 100}};
  for (const auto& row : rows) {
    PlacedCall placed(row.call);
    ASSERT_EQ(placed.Run(), 1);  // what the libraries below keep once
    const int count = row.count / velora_test::kStep;
    velora_test::WatchProcessHeap(0);
    int served = 0;
    for (int i = 0; i < count; ++i) {
      served += placed.Run();
    }
    const velora_test::HeapReport report = velora_test::StopWatching();
    EXPECT_EQ(served, count);
    EXPECT_EQ(report.left, count);
    EXPECT_LE(report.bytes, count * static_cast<long>(sizeof(void* [5])));
  }
}

// Leaves the process so many bytes of address space, and nothing in its heap.
void LimitMemory(rlim_t left) {
  long pages = 0;
  if (FILE* file = fopen("/proc/self/statm", "r")) {
    EXPECT_EQ(fscanf(file, "%ld", &pages), 1);
    fclose(file);
  }
  rlimit limit = {static_cast<rlim_t>(pages * sysconf(_SC_PAGESIZE)), RLIM_INFINITY};
  setrlimit(RLIMIT_AS, &limit);
  for (size_t size = 1 << 20; size >= 16; size /= 2) {
    for (void* volatile block = malloc(size); block != nullptr;) {
      block = malloc(size);
    }
  }
  limit.rlim_cur += left;
  setrlimit(RLIMIT_AS, &limit);
}

// No allocator in between: the address space ends at each of many places, and no library on the
// way ends the process.
TEST(Process, MemoryThatRunsOut) {
  if (!velora_test::CanWatchProcessHeap() || velora_test::kStep != 1) {
    GTEST_SKIP() << "a sanitizer and an emulator need their address space";
  }
  const Silence silence;
  const TableCall call = CmykCall();
  const Bytes expected = ReadData("vectors/toner-cmyk/expected.bin");
  const Bytes untouched(call.bufferSize, 0xA5);
  PlacedCall placed(call);
  int served = 0;
  constexpr int kSteps = 64;
  for (int step = 0; step < kSteps; ++step) {
    const int code = InChild([&] {
      // The last of all has as much as it likes.
      LimitMemory(step + 1 < kSteps ? static_cast<rlim_t>(step << 15) : rlim_t{1} << 30);
      const int result = placed.Run();
      const Bytes& right = result == 1 ? expected : untouched;
      return memcmp(placed.content().data(), right.data(), right.size()) == 0 ? result : 2;
    });
    EXPECT_TRUE(code == 0 || code == 1) << step << ": " << code;
    served += code == 1;
  }
  EXPECT_GT(served, 0);
  EXPECT_LT(served, kSteps);
}

}  // namespace
