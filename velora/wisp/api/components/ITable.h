// A finished table and its data: what a colour map, a gray curve and an alternate neutral share.
// Room: velora/wisp. Data is counted and does not change.
#pragma once

#include "velora/wisp/api/layer.h"
#include "velora/wisp_records.h"

namespace velora::v1::wisp::api {

// A finished record of the caller's of at least `kMin` bytes, and a checksum over what it says of
// colour: the sum of its bytes in [kFrom..kTo), as unsigned ones, in 32 bits.
template <class T, int kMin, int kFrom, int kTo>
class IRecordData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IRecordData);
  using Record = T;
  using Copied = IRecordData;
  static constexpr int kMinSize = kMin;
  static constexpr int kChecksumFrom = kFrom;
  static constexpr int kChecksumTo = kTo;
  using plinth::v1::api::IObject::Init;
  // With `owned` the bytes end with the object; a call that raises leaves them to the caller. Null,
  // or fewer than `kMin` bytes, raises `CException_Parameter_Invalid`.
  virtual void Init(int size, unsigned char* record, bool owned) = 0;
  virtual void Init(IRecordData* other) = 0;  // a private copy
  virtual int GetSize() const = 0;
  // The object's own record.
  virtual const T* GetRecord() const = 0;
  virtual unsigned int GetChecksum() const = 0;
};

// A finished table, whose data the caches share among those of equal checksum.
template <class Data>
class ITable : public virtual common::api::IShared<Configuration, Data> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITable);
  // That of the data; none raises `CException_This_Invalid`.
  virtual unsigned int GetChecksum() const = 0;
};

}  // namespace velora::v1::wisp::api
