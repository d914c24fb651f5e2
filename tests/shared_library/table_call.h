// A table call through the flat entry of libvelora.so, on bytes of exact size.
// Room: tests. Owns all bytes that it points the library to.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/support/toner_bytes.h"

using Bytes = std::vector<unsigned char>;
using velora_test::ReadData;

struct TableCall {
  int platform, supplyFamily, productVariant;
  ctr_table_type table;
  ctr_theme_type theme;
  ctr_media_type media;
  ctr_axis_type axis;
  size_t bufferSize;
  std::vector<Bytes> packs = {};
  Bytes reference = {};    // empty: null
  Bytes cbat[4] = {};      // C, M, Y, K; empty: null
  Bytes keys[4] = {};      // K, C, M, Y; empty: null
  Bytes corrections = {};  // empty: null
  bool withReference = true;
  // What a sound caller never hands over.
  int packCount = -1;  // given in place of the number of packs
  int nullPack = -1;   // this one is a null pointer in the list
  bool withPackList = true;
  bool withBuffer = true;

  // 1 or 0; the buffer is filled with 0xA5 before, and given back.
  int Run(Bytes* buffer = nullptr) const;
};

// A call with its bytes in place, so that running it does nothing but the call.
class PlacedCall {
 public:
  explicit PlacedCall(const TableCall& call);
  int Run();  // 1 or 0
  // The buffer; filled with 0xA5 by the constructor, and again here.
  const Bytes& content() const { return target_; }
  void Fill() { target_.assign(target_.size(), 0xA5); }

 private:
  const TableCall& call_;
  velora_test::PlacedBytes bytes_;
  Bytes target_;
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

// The calls of the folders of tests/data/vectors.
TableCall CmykCall();
TableCall GrayCall();
TableCall BlobCall();
