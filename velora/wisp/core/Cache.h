// The caches of a CVeltune: buckets by locator index, in each the entries of the print modes.
// Room: velora/wisp. A cache holds one reference on each bucket, a bucket on each entry, an entry
// on its pathname and its component; mappings are not owned. Errors: see ICache; what raises in
// the middle of a change leaves the entries as they were.
#pragma once

#include "plinth/core/CSerializeable.h"
#include "plinth/core/Counted.h"
#include "velora/wisp/core/CVeltune.h"

namespace velora::v1::wisp::core {

// Serializeable for its life cycle alone: arrays and lists hold such objects.
class CNeverStored : public plinth::v1::core::CSerializeable {
 public:
  static constexpr int kType = -1;  // no image has it

  [[gnu::always_inline]] CNeverStored() : CSerializeable(kType) {}
  PLINTH_INLINE_DESTRUCTION(CNeverStored);
  using plinth::v1::core::CSerializeable::Init;
  void Init() override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Sort(bool deduplicate) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
  bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
};

template <class Kind>
class CVeltune::Cache : public CNeverStored, public virtual api::ICache<Kind> {
 public:
  using Interface = api::ICache<Kind>;
  using IBucket = typename Interface::IBucket;
  using IEntry = typename Interface::IEntry;
  // Print modes that are kept for one index.
  static constexpr int kEntriesOfBucket = 16;

  class Bucket : public CNeverStored, public virtual IBucket {
   public:
    class Entry : public CNeverStored, public virtual IEntry {
     public:
      [[gnu::always_inline]] Entry() : m_pPrintModeMapping(nullptr) {}
      PLINTH_INLINE_DESTRUCTION(Entry);
      using CNeverStored::Init;
      void Init(const char* pathname, api::IPrintModeMapping* mapping, Kind* component) override;
      void Init(IEntry* other) override;
      const char* GetPathname() const override;
      api::IPrintModeMapping* GetPrintModeMapping() const override;
      Kind* GetComponent() const override;
      void CheckThis() const override;
      void Reset() override;
      void Delete() override;

     private:
      plinth::v1::core::Counted<api::IArray_uint8> m_pArray_uint8_Pathname;
      api::IPrintModeMapping* m_pPrintModeMapping;  // the key inside a bucket
      plinth::v1::core::Counted<Kind> m_pComponent;
    };

    [[gnu::always_inline]] Bucket() : m_nMaxEntries(0) {}
    PLINTH_INLINE_DESTRUCTION(Bucket);
    using CNeverStored::Init;
    void Init(int maxEntries) override;
    void Init(IBucket* other) override;
    void AddEntry(const char* pathname, api::IPrintModeMapping* mapping, Kind* component) override;
    int GetMaxEntries() const override;
    api::ILinkedList<IEntry>* GetLinkedList_Entries() const override;
    void CheckThis() const override;
    void Reset() override;
    void Delete() override;

   private:
    int m_nMaxEntries;
    plinth::v1::core::Counted<api::ILinkedList<IEntry>> m_pList_Entries;
  };

  PLINTH_INLINE_CONSTRUCTION(Cache);
  using CNeverStored::Init;
  void Init(int indices) override;
  void Init(Interface* other) override;
  IEntry* FindEntry(int index, api::IPrintModeMapping* mapping) const override;
  void AddComponent(int index, const char* pathname, api::IPrintModeMapping* mapping,
                    Kind* component) override;
  void DeduplicateComponentData(Kind* component) override;
  int GetCount_Indices() const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  void InitBlank(int indices);
  api::IArray<IBucket>* BuildArray_Grown(int index) const;

  plinth::v1::core::Counted<api::IArray<IBucket>> m_pArray_Buckets;      // null: no entries yet
  plinth::v1::core::Counted<api::ILinkedList<IBucket>> m_pList_Buckets;  // of the same, to walk
};

}  // namespace velora::v1::wisp::core
