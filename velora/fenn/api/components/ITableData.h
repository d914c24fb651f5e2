// A finished table: a gray curve or a colour map.
// Room: velora/fenn. Counted, and does not change.
#pragma once

#include "velora/fenn/api/layer.h"
#include "velora/velora.h"

namespace velora::v2::fenn::api {

// A finished table: `kLimit` is the most bytes that it can have.
template <unsigned int kLimit>
class ITableData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITableData);
  static constexpr unsigned int kMaxSize = kLimit;
  using plinth::v1::api::IObject::Init;
  // With `owned` the bytes end with the object; a call that raises leaves them to the caller. A
  // size out of [1..kLimit] or null raises `CException_Parameter_Invalid`.
  virtual void Init(unsigned int size, unsigned char* data, bool owned) = 0;
  virtual void Init(ITableData* other) = 0;  // a private copy
  virtual unsigned int GetSize_ReconstructedData() const = 0;
  // The object's own bytes.
  virtual unsigned char* GetReconstructedData() const = 0;
  // Data is made, never stored: these raise `CException_NotImplemented`.
  virtual void Init(int type, ISerializer* serializer, void* context) = 0;
  virtual void Serialize(ISerializer* serializer, void* context) = 0;
  virtual void Sort(bool deduplicate) = 0;
  virtual bool IsEqualTo(ITableData* other) const = 0;
  virtual bool IsLessThan(ITableData* other) const = 0;
};
using IGrayCurveData = ITableData<VELORA_SIZE_GRAY_CURVE>;
using IColorMapData = ITableData<VELORA_SIZE_RGB_TO_CMYK>;

}  // namespace velora::v2::fenn::api
