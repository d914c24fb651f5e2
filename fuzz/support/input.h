// What a target reads from its input: small numbers first, raw bytes last. Behind the end all is 0.
// Room: fuzz. Owns nothing; nothing fails.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <vector>

namespace fuzz {

using Bytes = std::vector<unsigned char>;

class Input {
 public:
  Input(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  bool empty() const { return size_ == 0; }
  int Byte() {
    if (size_ == 0) {
      return 0;
    }
    --size_;
    return *data_++;
  }
  int Short() {
    const int low = Byte();
    return low | Byte() << 8;
  }
  // [0..bound)
  int Below(int bound) { return (bound > 256 ? Short() : Byte()) % bound; }
  Bytes Take(size_t count) {
    count = count < size_ ? count : size_;
    const Bytes taken(data_, data_ + count);
    data_ += count;
    size_ -= count;
    return taken;
  }
  Bytes Rest() { return Take(size_); }

 private:
  const uint8_t* data_;
  size_t size_;
};

}  // namespace fuzz
