// A table call as a device makes it: its arguments as values, and the library that answers it.
//
// Room: authoring. A call owns its bytes, a Device its library. A library that cannot be loaded, or
// has no table entry, raises std::runtime_error.
#pragma once

#include <string>
#include <vector>

#include "authoring/shared_library.h"
#include "authoring/table.h"

namespace velora::authoring {

// In the caller's numbering, see velora.h.
struct PrintMode {
  int table = 1;
  int theme = 0;
  int media = 0;
  int axis = 0;

  friend bool operator==(const PrintMode& a, const PrintMode& b) {
    return a.table == b.table && a.theme == b.theme && a.media == b.media && a.axis == b.axis;
  }
};

// "cmyk, theme 3, media G, axis P".
std::string ModeText(const PrintMode& mode);

struct TableCall {
  int platform = 1;
  int family = 0;
  int variant = 0;
  PrintMode mode;
  std::vector<Bytes> packs;
  Bytes reference;    // curve or four planes; empty: none
  Bytes widths[4];    // C, M, Y, K; empty: none
  Bytes keys[4];      // K, C, M, Y; empty: none
  Bytes corrections;  // curve or four planes; empty: none
  int size = 0;       // of the buffer
};

struct TableResult {
  bool success;
  Bytes buffer;  // zeros where the library wrote nothing
  double microseconds;
};

class Device {
 public:
  // The library that this program is linked with.
  Device();
  // Loads libvelora.so from a path.
  explicit Device(const std::string& path);

  // Through _velora_v2_ReconstructTable_Moth_Posix_So. Messages go to standard error.
  TableResult Rebuild(const TableCall& call) const;

 private:
  SharedLibrary library_;
};

// Sends standard error nowhere as long as it lives: a device prints each step of a decode there.
class QuietErrors {
 public:
  QuietErrors();
  QuietErrors(const QuietErrors&) = delete;
  ~QuietErrors();

 private:
  int saved_;
};

}  // namespace velora::authoring
