// A finished table.
// Room: velora/fenn. Owns its bytes where `Init` says so. Errors: see ITableData; bytes out of the
// kind's bounds `CException_Parameter_Invalid`.
#pragma once

#include "velora/fenn/core/components/bases.h"

namespace velora::v2::fenn::core::components {

// The kind's interface sets the most bytes, `kMaxSize`.
template <class Interface>
class CTableData : public plinth::v1::core::CObject, public virtual Interface {
 public:
  [[gnu::always_inline]] CTableData() : size(0), data(nullptr), owned(false) {}
  PLINTH_INLINE_DESTRUCTION(CTableData);
  using Interface::Init;
  void Init() override;
  void Init(unsigned int newSize, unsigned char* newData, bool isOwned) override;
  void Init(Interface* other) override;
  unsigned int GetSize_ReconstructedData() const override;
  unsigned char* GetReconstructedData() const override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  void Sort(bool deduplicate) override;
  bool IsEqualTo(Interface* other) const override;
  bool IsLessThan(Interface* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  void FreeData();

  unsigned int size;
  unsigned char* data;
  bool owned;
};
using CGrayCurveData = CTableData<api::IGrayCurveData>;
using CColorMapData = CTableData<api::IColorMapData>;

}  // namespace velora::v2::fenn::core::components
