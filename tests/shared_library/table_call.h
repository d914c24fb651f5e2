// A table call through the flat entry of libvelora.so, on bytes of exact size.
// Room: tests. Owns all bytes that it points the library to.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "velora/velora.h"

using Bytes = std::vector<unsigned char>;

// A block without slack, so that a sanitizer sees the first byte behind it.
class Block {
 public:
  explicit Block(const Bytes& bytes);
  unsigned char* data() const { return bytes_.get(); }
  size_t size() const { return size_; }
  Bytes content() const { return Bytes(data(), data() + size_); }

 private:
  std::unique_ptr<unsigned char[]> bytes_;
  size_t size_;
};

struct TableCall {
  int platform = 1;
  int supplyFamily = 0;
  int productVariant = 0;
  ctr_table_type table = CTR_TABLE_CMYK;
  ctr_theme_type theme = CTR_THEME_0;
  ctr_media_type media = CTR_MEDIA_P;
  ctr_axis_type axis = CTR_AXIS_K;
  std::vector<Bytes> packs;
  Bytes reference;    // empty: null
  Bytes cbat[4];      // C, M, Y, K; empty: null
  Bytes keys[4];      // K, C, M, Y; empty: null
  Bytes corrections;  // empty: null
  bool withReference = true;
  size_t bufferSize = VELORA_SIZE_RGB_TO_CMYK;
  // What a sound caller never hands over.
  int packCount = -1;  // told in place of the number of packs
  int nullPack = -1;   // this one is a null pointer in the list
  bool withPackList = true;
  bool withBuffer = true;

  // 1 or 0; the buffer is filled with 0xA5 before, and given back.
  int Run(Bytes* buffer = nullptr) const;
};

// The lines that an action prints, each as "function line message", joined by '|'. Left out are the
// lines of blocks that were allocated and freed again, of a decoder's steps, and of corrections
// that are not there; a block that stays is a line of its own.
std::string LinesOf(const std::function<void()>& action);
// Lets standard error lead nowhere for the object's life.
class Silence {
 public:
  Silence();
  ~Silence();

 private:
  int kept_;
};

// A file below tests/data; an absent one is empty.
Bytes ReadData(const std::string& name);
// The calls that the folders of tests/data/vectors tell.
TableCall CmykCall();
TableCall GrayCall();
TableCall BlobCall();
