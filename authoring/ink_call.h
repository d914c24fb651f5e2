// Ink requests as a device makes them: a caller that keeps its packs open and asks for one record
// after the other, and the library that answers.
//
// Room: authoring. Requests own their bytes, an InkDevice its library. A library that cannot be
// loaded or opened, packs that it does not take and locators that no record has room for raise
// std::runtime_error. One call at a time in a process.
#pragma once

#include <string>
#include <vector>

#include "authoring/shared_library.h"
#include "authoring/table.h"

namespace velora::authoring {

// In the caller's numbering, see wisp_records.h.
struct InkMode {
  int media = 0;
  int quality = 0;
  int subtype = 0;
  int pen_set = 1;
  int source = 0;
};

// "media 5, quality -1, subtype 10, pen set 2".
std::string ModeText(const InkMode& mode);

enum class InkKind { kColorMap, kGrayCurve, kAlternateNeutral };

struct InkRequest {
  InkKind kind = InkKind::kColorMap;
  InkMode mode;
  Bytes locator;
  int index = 0;  // of the locator; the same for the same locator
  std::string pathname = "velora";
};

struct InkCaller {
  int platform = 1;
  int family = 0;
  int variant = 0;
  std::vector<Bytes> packs;  // the printer's among them
};

struct InkResult {
  int code;      // of the exception that refused the request; 0: none
  Bytes record;  // as the caller has it, but for the token of this process, which is 0
  double miss;   // microseconds of an answer from the packs, and of one from the cache
  double hit;
};

class InkDevice {
 public:
  // The library that this program is linked with.
  InkDevice() = default;
  // Loads libvelora.so from a path.
  explicit InkDevice(const std::string& path) : library_(path) {}

  // Opens the packs, makes the requests in their order, and closes. Each is made `repeat` times
  // from the packs, as far as the cache has room, and from the cache; times are medians. An answer
  // that differs from the first one raises std::runtime_error.
  std::vector<InkResult> Ask(const InkCaller& caller, const std::vector<InkRequest>& requests,
                             int repeat = 1) const;

 private:
  SharedLibrary library_;
};

// The four planes of a colour map's record as a table, see table.h.
Bytes TableOf(const Bytes& record);

}  // namespace velora::authoring
