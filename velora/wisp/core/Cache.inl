// Bodies of Cache.h, for the file that instantiates it.
#pragma once

#include <string.h>

#include "plinth/core/CArray.inl"
#include "plinth/core/CLinkedList.inl"
#include "velora/common/core/Create.h"
#include "velora/wisp/core/Cache.h"

namespace velora::v1::wisp::core {

using common::core::Create;
using common::core::Defer;
using common::core::HandOver;
using namespace plinth::v1::api::_exports::common::exception;

// ---- entries

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Entry::Init(const char* pathname,
                                                api::IPrintModeMapping* mapping, Kind* component) {
  this->BeginInit();
  if (pathname == nullptr || *pathname == '\0' || mapping == nullptr || component == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const size_t size = strlen(pathname) + 1;
  m_pArray_uint8_Pathname.Take(plinth::v1::core::CArray_uint8::New(static_cast<int>(size)));
  memcpy(m_pArray_uint8_Pathname->GetElements(), pathname, size);
  // Not counted: a mapping lives as long as its table, which outlives the caches.
  m_pPrintModeMapping = mapping;
  m_pComponent.Share(component);
  this->valid = true;
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Entry::Init(IEntry* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Init(other->GetPathname(), other->GetPrintModeMapping(), other->GetComponent());
}

template <class Kind>
const char* CVeltune::Cache<Kind>::Bucket::Entry::GetPathname() const {
  CheckThis();
  return reinterpret_cast<const char*>(m_pArray_uint8_Pathname->GetElements());
}

template <class Kind>
api::IPrintModeMapping* CVeltune::Cache<Kind>::Bucket::Entry::GetPrintModeMapping() const {
  CheckThis();
  return m_pPrintModeMapping;
}

template <class Kind>
Kind* CVeltune::Cache<Kind>::Bucket::Entry::GetComponent() const {
  CheckThis();
  return m_pComponent.Get();
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Entry::CheckThis() const {
  if (!this->valid || !m_pArray_uint8_Pathname || m_pPrintModeMapping == nullptr || !m_pComponent) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Entry::Reset() {
  CNeverStored::Reset();
  m_pArray_uint8_Pathname.Forget();
  m_pPrintModeMapping = nullptr;
  m_pComponent.Forget();
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Entry::Delete() {
  m_pArray_uint8_Pathname.Drop();
  m_pComponent.Drop();
  CNeverStored::Delete();
}

// ---- buckets

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Init(int maxEntries) {
  this->BeginInit();
  if (maxEntries < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  m_pList_Entries.Take(
      Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IEntry>>());
  m_pList_Entries->Init(CNeverStored::kType);
  m_nMaxEntries = maxEntries;
  this->valid = true;
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Init(IBucket* other) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (other == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    Init(other->GetMaxEntries());
    api::ILinkedList<IEntry>* entries = other->GetLinkedList_Entries();
    for (auto* element = entries->GetHead(); element != nullptr; element = element->next) {
      Entry* entry = Defer(frame, Create<Configuration, Entry>());
      entry->Init(element->GetValue());
      m_pList_Entries->Add(m_pList_Entries->GetTail(), entry);
    }
  });
}

// First in, first out: a hit does not make an entry newer. The new entry comes before the oldest
// goes, so that a failure loses none.
template <class Kind>
void CVeltune::Cache<Kind>::Bucket::AddEntry(const char* pathname, api::IPrintModeMapping* mapping,
                                             Kind* component) {
  PLINTH_FRAME(Configuration) {
    if (pathname == nullptr || mapping == nullptr || component == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    CheckThis();
    Entry* entry = Defer(frame, Create<Configuration, Entry>());
    entry->Init(pathname, mapping, component);
    m_pList_Entries->Insert(m_pList_Entries->GetHead(), entry);
    if (m_pList_Entries->GetCount() > m_nMaxEntries) {
      m_pList_Entries->Remove(m_pList_Entries->GetTail());
    }
    if (m_pList_Entries->GetCount() > m_nMaxEntries) {
      PLINTH_RAISE(CException_General);
    }
  }
  PLINTH_END
}

template <class Kind>
int CVeltune::Cache<Kind>::Bucket::GetMaxEntries() const {
  CheckThis();
  return m_nMaxEntries;
}

template <class Kind>
auto CVeltune::Cache<Kind>::Bucket::GetLinkedList_Entries() const -> api::ILinkedList<IEntry>* {
  CheckThis();
  return m_pList_Entries.Get();
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::CheckThis() const {
  if (!this->valid || m_nMaxEntries < 1 || !m_pList_Entries) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Reset() {
  CNeverStored::Reset();
  m_nMaxEntries = 0;
  m_pList_Entries.Forget();
}

template <class Kind>
void CVeltune::Cache<Kind>::Bucket::Delete() {
  m_pList_Entries.Drop();
  CNeverStored::Delete();
}

// ---- the cache

template <class Kind>
void CVeltune::Cache<Kind>::InitBlank(int indices) {
  if (indices < 1 || indices > Interface::kMaxIndices) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
  using Buckets = plinth::v1::core::CArray<Configuration, IBucket>;
  m_pArray_Buckets.Take(Buckets::New(CNeverStored::kType, indices));
  m_pList_Buckets.Take(
      Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IBucket>>());
  m_pList_Buckets->Init(CNeverStored::kType);
}

template <class Kind>
void CVeltune::Cache<Kind>::Init(int indices) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame&) { InitBlank(indices); });
}

template <class Kind>
void CVeltune::Cache<Kind>::Init(Interface* other) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (other == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    other->CheckThis();
    auto* source = static_cast<Cache*>(other->GetThis_Concrete());
    const int indices = source->GetCount_Indices();
    InitBlank(indices);
    IBucket** buckets = source->m_pArray_Buckets->GetElements();
    // From the tail, since each bucket goes in at the head.
    for (auto* element = source->m_pList_Buckets->GetTail(); element != nullptr;
         element = element->previous) {
      int index = 0;
      // Every bucket of the list is in the array too.
      while (buckets[index] != element->GetValue()) {
        ++index;
      }
      Bucket* bucket = Defer(frame, Create<Configuration, Bucket>());
      bucket->Init(element->GetValue());
      m_pList_Buckets->Insert(m_pList_Buckets->GetHead(), bucket);
      m_pArray_Buckets->Set(index, bucket);
    }
  });
}

template <class Kind>
auto CVeltune::Cache<Kind>::FindEntry(int index, api::IPrintModeMapping* mapping) const -> IEntry* {
  CheckThis();
  if (index < 0 || index >= m_pArray_Buckets->GetCount()) {
    return nullptr;
  }
  const IBucket* bucket = m_pArray_Buckets->GetElements()[index];
  if (bucket == nullptr) {
    return nullptr;
  }
  if (mapping == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  for (auto* element = bucket->GetLinkedList_Entries()->GetHead(); element != nullptr;
       element = element->next) {
    if (element->GetValue()->GetPrintModeMapping() == mapping) {
      return element->GetValue();
    }
  }
  return nullptr;
}

// A copy of the buckets with room for the index: at least ten indices more, as long as there are so
// many.
template <class Kind>
auto CVeltune::Cache<Kind>::BuildArray_Grown(int index) const -> api::IArray<IBucket>* {
  constexpr int kLeastGrowth = 10;
  const int length = m_pArray_Buckets->GetCount();
  int growth = index - length + 1;
  if (growth < kLeastGrowth) {
    const int room = Interface::kMaxIndices - length;
    growth = room < kLeastGrowth ? room : kLeastGrowth;
  }
  auto* grown =
      plinth::v1::core::CArray<Configuration, IBucket>::New(CNeverStored::kType, length + growth);
  IBucket* const* from = m_pArray_Buckets->GetElements();
  IBucket** to = grown->GetElements();
  for (int i = 0; i < length; ++i) {
    if ((to[i] = from[i]) != nullptr) {
      to[i]->AddRef();
    }
  }
  return grown;
}

// What can raise comes before what changes the cache; the last that can is a new bucket's place in
// the list.
template <class Kind>
void CVeltune::Cache<Kind>::AddComponent(int index, const char* pathname,
                                         api::IPrintModeMapping* mapping, Kind* component) {
  PLINTH_FRAME(Configuration) {
    CheckThis();
    if (index < 0 || index >= Interface::kMaxIndices || component == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    component->GetChecksum();  // raises without data
    const bool fits = index < m_pArray_Buckets->GetCount();
    IBucket* bucket = fits ? m_pArray_Buckets->GetElements()[index] : nullptr;
    if (bucket != nullptr) {
      bucket->AddEntry(pathname, mapping, component);
    } else {
      bucket = Defer<IBucket>(frame, Create<Configuration, Bucket>());
      bucket->Init(kEntriesOfBucket);
      bucket->AddEntry(pathname, mapping, component);
      api::IArray<IBucket>* grown = fits ? nullptr : Defer(frame, BuildArray_Grown(index));
      m_pList_Buckets->Insert(m_pList_Buckets->GetHead(), bucket);
      if (grown != nullptr) {
        m_pArray_Buckets.Take(HandOver(frame, grown));
      }
      m_pArray_Buckets->Set(index, bucket);
    }
    DeduplicateComponentData(component);
  }
  PLINTH_END
}

template <class Kind>
void CVeltune::Cache<Kind>::DeduplicateComponentData(Kind* component) {
  if (component == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  const unsigned int checksum = component->GetChecksum();
  for (auto* bucket = m_pList_Buckets->GetHead(); bucket != nullptr; bucket = bucket->next) {
    for (auto* entry = bucket->GetValue()->GetLinkedList_Entries()->GetHead(); entry != nullptr;
         entry = entry->next) {
      Kind* other = entry->GetValue()->GetComponent();
      // The first one will do: what was added with an equal checksum shares its data.
      if (other != component && other->GetChecksum() == checksum) {
        component->SetData(other->GetData());
        return;
      }
    }
  }
}

template <class Kind>
int CVeltune::Cache<Kind>::GetCount_Indices() const {
  CheckThis();
  return m_pArray_Buckets->GetCount();
}

template <class Kind>
void CVeltune::Cache<Kind>::CheckThis() const {
  if (!this->valid || !m_pArray_Buckets || !m_pList_Buckets) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Kind>
void CVeltune::Cache<Kind>::Reset() {
  CNeverStored::Reset();
  m_pArray_Buckets.Forget();
  m_pList_Buckets.Forget();
}

template <class Kind>
void CVeltune::Cache<Kind>::Delete() {
  m_pArray_Buckets.Drop();
  m_pList_Buckets.Drop();
  CNeverStored::Delete();
}

}  // namespace velora::v1::wisp::core
