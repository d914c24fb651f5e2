// What the toolkit's tests share: captured lines, a crowded tracker, packed fields, PFD files.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "velora/frontend/toolkit/memory.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace toolkit_test {

using Bytes = std::vector<uint8_t>;

// What `action` writes to standard error, without the tracker's lines unless they are asked for.
template <class Action>
std::string Capture(Action action, bool withTracker = false) {
  testing::internal::CaptureStderr();
  action();
  const std::string all = testing::internal::GetCapturedStderr();
  std::string kept;
  for (size_t begin = 0, end; begin < all.size(); begin = end) {
    end = all.find('\n', begin) + 1;
    const std::string line = all.substr(begin, end - begin);
    const bool tracker = line.find("[CTR] AllocMem ") == 0 || line.find("[CTR] DeallocMem ") == 0;
    if (withTracker || !tracker) kept += line;
  }
  return kept;
}

// A line as it is printed; none for the number 0.
inline std::string Line(const std::string& function, int line, const std::string& message) {
  if (line == 0) return "";
  return "[CTR] " + function + " (line " + std::to_string(line) + "): \"" + message + "\"\n";
}

inline int LiveBlocks() {
  int count = 0;
  for (const Ctr::MemSlot& slot : Ctr::MemStats) count += slot.pointer != nullptr;
  return count;
}

// Leaves `free` slots of the tracker for the object's life. What AllocMem then gives up stays
// allocated on purpose, so the leak checker looks away.
class CrowdedTracker {
 public:
  explicit CrowdedTracker(int free) {
#if defined(__SANITIZE_ADDRESS__)
    __lsan_disable();
#endif
    Capture([&] {
      while (LiveBlocks() < Ctr::kMemSlots - free) Ctr::AllocMem(1, '#');
    });
  }
  ~CrowdedTracker() {
    Capture([] { Ctr::DeallocMem('#'); });
#if defined(__SANITIZE_ADDRESS__)
    __lsan_enable();
#endif
  }
};

// Packs signed fields and their widths.
class FieldWriter {
 public:
  void Add(int width, int value) {
    if (count_ % 2 == 0) widths.push_back(0);
    widths.back() = static_cast<uint8_t>(widths.back() | width << (count_++ % 2 * 4));
    const int field = value < 0 ? 1 << (width - 1) | -value : value;
    for (int bit = 0; bit < width; ++bit, ++bits_) {
      if (bits_ % 8 == 0) data.push_back(0);
      data.back() = static_cast<uint8_t>(data.back() | (field >> bit & 1) << bits_ % 8);
    }
  }

  Bytes data;
  Bytes widths;

 private:
  int count_ = 0;
  int bits_ = 0;
};

struct PfdPacket {
  std::string tag;           // four letters and two
  std::string surroundings;  // medium, axis, colour
  uint8_t value;             // a scalar's value, or the flag of compressed data
  Bytes data;
};

// A PFD file of the payload tag 4100.
inline Bytes PfdFile(char color, const std::vector<PfdPacket>& packets, uint8_t lastOfVersion = 0) {
  Bytes file = {'G', 'E', 'N', 0, 0, 0, 61, 71, 72, 73, 81, 82, 83, 84, 85, 86, 87, 88, 18, 4};
  file.insert(file.end(), {lastOfVersion, static_cast<uint8_t>(color), 0, 4, 16, 0, 0});
  file.push_back(static_cast<uint8_t>(packets.size()));
  Bytes body;
  for (const PfdPacket& packet : packets) {
    const size_t offset = 28 + 8 * packets.size() + body.size();
    file.insert(file.end(), packet.tag.begin(), packet.tag.end());
    file.insert(file.end(), {static_cast<uint8_t>(offset), static_cast<uint8_t>(offset >> 8)});
    body.insert(body.end(), 4, 0);
    body.insert(body.end(), packet.surroundings.begin(), packet.surroundings.end());
    body.push_back(packet.value);
    if (packet.tag[3] == 'S' && packet.tag[2] == 'D') continue;
    body.push_back(static_cast<uint8_t>(packet.data.size()));
    body.push_back(static_cast<uint8_t>(packet.data.size() >> 8));
    body.insert(body.end(), packet.data.begin(), packet.data.end());
  }
  file.insert(file.end(), body.begin(), body.end());
  return file;
}

// `data` as an LZMA stream of the classic form that states `size`.
Bytes Compress(const Bytes& data, uint64_t size);

}  // namespace toolkit_test
