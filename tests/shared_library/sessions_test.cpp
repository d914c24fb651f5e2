// Sessions: a process has one boot, whatever is opened, called and closed in which order. Each row
// runs in a child of this process, so that a crash is that row's failure.
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>

#include "tests/shared_library/ink_printer.h"
#include "tests/support/process_heap.h"

namespace {

// What a row's words do. Each answers whether the step did what it is for; behind each one an open
// printer still serves a request.
class Session {
 public:
  // "in:" runs a step inside a Try, "other:" steps with commas between them on another thread.
  bool Step(const std::string& word) {
    bool done = false;
    if (word.rfind("in:", 0) == 0) {
      const std::string inner = word.substr(3);
      return ink::Try([&] { done = Step(inner); }) == 0 && done;
    }
    if (word.rfind("other:", 0) == 0) {
      done = Elsewhere(word.substr(6));
    } else {
      done = Do(word);
    }
    return done && (printer_.veltune == nullptr || Ask());
  }

  long keptRecords = 0;  // by calls in the _So form on this thread

 private:
  // A thread that allocates nothing on the thread whose heap is watched.
  bool Elsewhere(const std::string& words) {
    struct Task {
      Session* session;
      std::istringstream words;
      bool done;
    } task = {this, std::istringstream(words), true};
    const auto run = [](void* context) -> void* {
      Task& all = *static_cast<Task*>(context);
      for (std::string word; all.done && std::getline(all.words, word, ',');) {
        all.done = all.session->Do(word);
      }
      return nullptr;
    };
    const long kept = keptRecords;
    pthread_t thread;
    if (pthread_create(&thread, nullptr, run, &task) != 0 || pthread_join(thread, nullptr) != 0) {
      return false;
    }
    keptRecords = kept;
    return task.done;
  }

  bool Do(const std::string& word) {
    if (word == "boot") {
      return Initialize(nullptr);
    } else if (word == "v1") {
      return Initialize(_velora_v1_Initialize_Posix_So);
    } else if (word == "v2") {
      return Initialize(_velora_v2_Initialize_Posix_So);
    } else if (word == "-t") {
      _velora_v1_Cleanup_Thread_Posix_So();
    } else if (word == "-v1") {
      _velora_v1_Cleanup_Process_Posix_So();
    } else if (word == "-v2") {
      _velora_v2_Cleanup_Process_Posix_So();
    } else if (word == "-p1") {
      _plinth_v1_Cleanup_Process_Posix_So();
    } else if (word == "try") {
      volatile bool ran = false;
      return ink::Try([&ran] { ran = true; }) == 0 && ran;
    } else if (word == "unknown") {
      return ink::Try([] {}) == -1;
    } else if (word == "raise") {
      return Raises();
    } else if (word == "open") {
      return printer_.Open(pack_) == 0;
    } else if (word == "close") {
      printer_.Close();
    } else {
      return Call(word);
    }
    return true;
  }

  static bool Initialize(int (*layer)(BootRecord*)) {
    BootRecord* record = _plinth_v1_Boot_Posix_So();
    const bool open = record != nullptr && (layer == nullptr || layer(record) != 0);
    _plinth_v1_FreeBootRecord_Posix_So(record);
    return open;
  }

  bool Ask() { return gray_.Ask(printer_) == 0 && gray_.Holds(true); }

  // Raises of the ink layer's templates and of the foundation's own code.
  static bool Raises() {
    ink::_factory::IFactory* factory = nullptr;
    ink::ISerializerHelper* helper = nullptr;
    ink::ISerializer* serializer = nullptr;
    const int badEndianness = ink::Try([&] {
      factory = static_cast<ink::_factory::IFactory*>(_velora_v1_CreateFactory_Posix_So());
      factory->Init();
      helper = factory->CreateSerializerHelper();
      helper->Init();
      serializer = factory->CreateSerializer();
      serializer->Init(helper, ink::ISerializer::ETargetEndianness::Enum(3));
    });
    factory->AddRef();
    const int shared = ink::Try([&] { factory->Init(); });
    serializer->Destroy();
    helper->Destroy();
    factory->Destroy();
    factory->Destroy();
    return badEndianness == 3000 && shared == 1;
  }

  // A table call: "so", "lib" with a record of the process's boot, or "null" without one; "+" is
  // served, "-" refused at the door, "!" refused by the object world.
  bool Call(const std::string& word) {
    const std::string form = word.substr(0, word.size() - 1);
    const char outcome = word.back();
    Bytes pack = blob_.packs[0];
    pack.back() ^= outcome == '!';
    const ImagingBlob blob = {static_cast<uint32_t>(pack.size()), pack.data()};
    const ImagingBlob* packs[] = {&blob};
    const unsigned int count = outcome == '-' ? 0 : 1;
    unsigned char buffer[27];
    const auto arguments = [&](auto call, auto... first) {
      return call(first..., 2, 0, 0, CTR_TABLE_FUSER_BLOB, CTR_THEME_3, CTR_MEDIA_C, CTR_AXIS_K,
                  count, packs, nullptr, nullptr, sizeof buffer, buffer);
    };
    int result;
    if (form == "so") {
      ++keptRecords;
      result = arguments(_velora_v2_ReconstructTable_Moth_Posix_So);
    } else {
      BootRecord* record = form == "lib" ? _plinth_v1_Boot_Posix_So() : nullptr;
      result = arguments(_velora_v2_ReconstructTable_Moth_Posix_Lib, record);
      _plinth_v1_FreeBootRecord_Posix_So(record);
    }
    return outcome == '+' ? result == 1 && memcmp(buffer, expected_.data(), sizeof buffer) == 0
                          : result == 0;
  }

  const TableCall blob_ = BlobCall();
  const Bytes expected_ = ReadData("vectors/toner-blob/expected.bin");
  const Bytes pack_ = ReadData("vectors/ink/printer.velcase");
  VectorRequest<WISPGrayCurve> gray_{"gray"};
  InkPrinter printer_;
};

// Runs the words again and again: the first that fails, or what grew, or "".
std::string Failure(const std::string& row) {
  constexpr int kRounds = 20, kGrown = 100, kLast = 2;
  std::vector<std::string> words;
  std::istringstream all(row);
  for (std::string word; all >> word;) {
    words.push_back(word);
  }
  const pid_t child = fork();
  if (child == 0) {
    const Silence silence;
    Session session;
    for (int round = 0; round < kRounds; ++round) {
      if (round == kLast && velora_test::CanWatchProcessHeap()) {
        session.keptRecords = 0;
        velora_test::WatchProcessHeap(0);
      }
      for (size_t i = 0; i < words.size(); ++i) {
        if (!session.Step(words[i])) {
          _exit(static_cast<int>(i) + 1);
        }
      }
    }
    _exit(velora_test::CanWatchProcessHeap() &&
                  velora_test::StopWatching().left != session.keptRecords
              ? kGrown
              : 0);
  }
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  const int code = WEXITSTATUS(status);
  return !WIFEXITED(status)                              ? "crashed"
         : code == 0                                     ? ""
         : code == kGrown                                ? "memory grew"
         : static_cast<size_t>(code) - 1 >= words.size() ? "ended"
                                                         : words[static_cast<size_t>(code) - 1];
}

TEST(Sessions, EveryOrderLeavesTheSessionThatItFinds) {
  std::vector<std::string> rows = {
      "so- open raise close",
      "v1 raise -t -v1",  // the foundation stays open from round to round
      "boot try -t -p1",  // no layer is open
      "v1 v2 -v2 try boot try raise -v1 -t -p1",
      "v1 v2 -v1 try boot try so+ -v2 -t -p1",
      "open -v2 try raise close unknown",
      "open other:so+ other:unknown so- other:boot,try,-t,unknown close",
      "so! -p1 so+ v1 -p1 so+ null+ -v1 open close",
  };
  for (const std::string form : {"so", "lib", "null"}) {
    for (const char outcome : {'+', '-', '!'}) {
      const std::string call = form + outcome;
      const std::string close = form == "lib" ? " -t -p1" : " unknown";
      rows.push_back(call + close + " open " + call + " in:" + call + " in:in:" + call +
                     " raise try other:" + call + (form == "lib" ? ",-t" : ",unknown") + " close " +
                     call + close + " boot " + call + " try -t -p1");
    }
  }
  for (const std::string& row : rows) {
    EXPECT_EQ(Failure(row), "") << row;
  }
}

}  // namespace
