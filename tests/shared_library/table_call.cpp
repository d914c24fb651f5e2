#include "tests/shared_library/table_call.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <set>
#include <sstream>

// The flat entry keeps the boot record of each call allocated: that is its contract, and the only
// block that it leaves.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:MakeBootRecord\n";
}

PlacedCall::PlacedCall(const TableCall& call)
    : call_(call), bytes_(call), target_(call.bufferSize, 0xA5) {
  if (call.nullPack >= 0) {
    bytes_.packs[static_cast<size_t>(call.nullPack)] = nullptr;
  }
}

int PlacedCall::Run() {
  const int packs = call_.packCount < 0 ? static_cast<int>(bytes_.packs.size()) : call_.packCount;
  return _velora_v2_ReconstructTable_Moth_Posix_So(
      call_.platform, call_.supplyFamily, call_.productVariant, call_.table, call_.theme,
      call_.media, call_.axis, static_cast<unsigned int>(packs),
      call_.withPackList ? bytes_.packs.data() : nullptr,
      call_.withReference ? &bytes_.reference : nullptr,
      call_.corrections.empty() ? nullptr : &bytes_.corrections,
      static_cast<unsigned int>(call_.bufferSize), call_.withBuffer ? target_.data() : nullptr);
}

int TableCall::Run(Bytes* buffer) const {
  PlacedCall placed(*this);
  const int result = placed.Run();
  if (buffer != nullptr) {
    *buffer = placed.content();
  }
  return result;
}

namespace {

bool StartsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

// "function line message" of a line, and the message alone; the line itself if it has another form.
std::string Shortened(const std::string& line, std::string* message) {
  const size_t number = line.find(" (line "), text = line.find("): \"");
  if (!StartsWith(line, "[CTR] ") || text == std::string::npos || line.back() != '"') {
    return line;
  }
  *message = line.substr(text + 4, line.size() - text - 5);
  return line.substr(6, number - 6) + line.substr(number + 6, text - number - 6) + " " + *message;
}

}  // namespace

std::string LinesOf(const std::function<void()>& action) {
  testing::internal::CaptureStderr();
  action();
  std::istringstream all(testing::internal::GetCapturedStderr());
  std::set<std::string> live;
  std::string kept;
  for (std::string line; std::getline(all, line);) {
    std::string message;
    line = Shortened(line, &message);
    bool shown = true;
    for (const char* step : {"CbatReader E", "DeallocMem ", "AllocMem ", "INFO: "}) {
      shown = shown && !StartsWith(message, step);
    }
    if (StartsWith(message, "AllocMem(") || StartsWith(message, "DEBUG: ")) {
      const size_t at = message.find("0x");
      const std::string pointer = message.substr(at, message.find_first_of(" .)", at) - at);
      shown = message[0] == 'D' ? live.erase(pointer) != 1 : !live.insert(pointer).second;
    }
    if (shown) {
      kept += (kept.empty() ? "" : "|") + line;
    }
  }
  for (const std::string& pointer : live) {
    kept += "|left: " + pointer;
  }
  return kept;
}

Silence::Silence() : kept_(dup(STDERR_FILENO)) {
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDERR_FILENO);
  close(nowhere);
}

Silence::~Silence() {
  dup2(kept_, STDERR_FILENO);
  close(kept_);
}

TableCall CmykCall() {
  const TableCall call = {7, 4, 2, CTR_TABLE_CMYK, CTR_THEME_8, CTR_MEDIA_G, CTR_AXIS_P, 19652};
  return velora_test::WithVector(call, "toner-cmyk", {"printer.velcase", "cyan.velcase"});
}

TableCall GrayCall() {
  const TableCall call = {127, 9, 5, CTR_TABLE_CMYK, CTR_THEME_0, CTR_MEDIA_H, CTR_AXIS_MONO, 256};
  return velora_test::WithVector(call, "toner-gray", {"printer.velcase"});
}

TableCall BlobCall() {
  TableCall call = {2, 0, 0, CTR_TABLE_FUSER_BLOB, CTR_THEME_3, CTR_MEDIA_C, CTR_AXIS_K, 27};
  call.withReference = false;
  return velora_test::WithVector(call, "toner-blob", {"printer.velcase"});
}
