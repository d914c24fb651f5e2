// The promise that every target holds the library to: it takes any bytes without a crash, leaves no
// block behind, and asks for no more memory than a call needs.
// Room: fuzz. A broken promise ends the process, as a crash does, and says why.
#pragma once

#include "fuzz/support/heap.h"

namespace fuzz {

// Ends the process; its last line, on what was standard error when the process began, says why.
[[noreturn]] void Fail(const char* what);

inline void Expect(bool holds, const char* what) {
  if (!holds) {
    Fail(what);
  }
}

// Around each piece of the library's work.
class Promise {
 public:
  // The most bytes that work on images of so many bytes may have live at once. An image may
  // consist of empty entries of two bytes each, which become objects.
  explicit Promise(long long image_bytes = 0);
  // Expects as many live blocks as at the beginning, and `kept` more; the front end's tracker
  // empty; and the peak within the bound.
  void Check(long kept = 0) const;

 private:
  static constexpr long long kBase = 16LL << 20;
  static constexpr long long kPerByte = 80;

  Heap before_;
  long long most_;
};

// What runs during its life does not count as the input's doing, by which libFuzzer is led.
class Unobserved {
 public:
  Unobserved();
  ~Unobserved();
  Unobserved(const Unobserved&) = delete;
  Unobserved& operator=(const Unobserved&) = delete;

 private:
  unsigned char* counters_;
};

// Standard error leads nowhere from here on, but for Fail and the sanitizers: the library prints.
void Silence();

}  // namespace fuzz
