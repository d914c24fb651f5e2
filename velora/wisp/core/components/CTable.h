// What the finished tables share: their component, and their data, one of the caller's records.
// Room: velora/wisp. The data owns its record where `Init` says so.
#pragma once

#include "velora/common/core/checksum.h"
#include "velora/wisp/core/components/bases.h"

namespace velora::v1::wisp::core::components {

template <class Class, class Interface>
class CTable : public common::core::CSharedOf<Configuration, Class, Interface> {
 public:
  PLINTH_INLINE_CONSTRUCTION(CTable);
  unsigned int GetChecksum() const override { return this->GetData()->GetChecksum(); }
};

// The checksum is computed once, when the record is given: its bytes must not change any more.
template <class Interface>
class CRecordData : public plinth::v1::core::CObject, public virtual Interface {
 public:
  using Record = typename Interface::Record;

  [[gnu::always_inline]] CRecordData()
      : m_nSize(0), m_pRecord(nullptr), m_bOwned(false), m_nChecksum(0) {}
  PLINTH_INLINE_DESTRUCTION(CRecordData);
  using Interface::Init;
  void Init() override;
  void Init(int size, unsigned char* record, bool owned) override;
  void Init(typename Interface::Copied* other) override;
  int GetSize() const override;
  const Record* GetRecord() const override;
  unsigned int GetChecksum() const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  void FreeRecord();

  int m_nSize;
  unsigned char* m_pRecord;
  bool m_bOwned;
  unsigned int m_nChecksum;
};

}  // namespace velora::v1::wisp::core::components
