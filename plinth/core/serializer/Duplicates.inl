// Bodies of Duplicates.h, for the files that instantiate it.
#pragma once

#include <string.h>

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Duplicates.h"
#include "plinth/core/serializer/Entry.h"

namespace plinth::v1::core {

template <class Configuration>
CSerializer<Configuration>::Duplicates::Duplicates()
    : Object(false), table(nullptr), size(0), kinds(0) {}

// The entries are borrowed: the table alone is freed.
template <class Configuration>
CSerializer<Configuration>::Duplicates::~Duplicates() {
  operator delete[](table, api::Slots<Configuration>().platform, false, false);
}

// Without a new reference. Out of memory raises before the entry has a number.
template <class Configuration>
auto CSerializer<Configuration>::Duplicates::FindFirst(Entry* entry) -> Entry* {
  // At most half full, so a walk to a free slot is short.
  if (static_cast<unsigned int>(kinds) >= size / 2) {
    Grow();
  }
  entry->working->hash = Hash(entry);
  Entry** slot = Slot(table, size, entry);
  if (*slot == nullptr) {
    // The number of the kind; the serialized form gives the entry another one later.
    entry->number = kinds++;
    *slot = entry;
  }
  entry->number = (*slot)->number;
  return *slot;
}

template <class Configuration>
auto CSerializer<Configuration>::Duplicates::Slot(Entry** slots, unsigned int slotCount,
                                                  const Entry* entry) -> Entry** {
  // Linear probing: the slot count is a power of two, and a slot is free.
  unsigned int place = entry->working->hash;
  for (;; ++place) {
    Entry** slot = &slots[place & (slotCount - 1)];
    if (*slot == nullptr || IsSameKind(*slot, entry)) {
      return slot;
    }
  }
}

template <class Configuration>
void CSerializer<Configuration>::Duplicates::Grow() {
  api::CPlatform* platform = api::Slots<Configuration>().platform;
  const unsigned int newSize = size == 0 ? 16 : size * 2;
  // Before anything changes: out of memory leaves the table as it was.
  Entry** grown = new (platform, true, true) Entry*[newSize];
  for (unsigned int i = 0; i < size; ++i) {
    if (table[i] != nullptr) {
      *Slot(grown, newSize, table[i]) = table[i];
    }
  }
  operator delete[](table, platform, false, false);
  table = grown;
  size = newSize;
}

// FNV-1a over the type, the bytes and the kinds of the nested entries.
template <class Configuration>
unsigned int CSerializer<Configuration>::Duplicates::Hash(const Entry* entry) {
  constexpr unsigned int kPrime = 16777619u;
  const auto* form = entry->working;
  unsigned int hash =
      2166136261u ^ static_cast<unsigned int>(form->dictionary->GetSerializeableType());
  const unsigned char* bytes = form->data->GetElements();
  for (int left = form->data->GetCount(); left > 0; --left) {
    hash = (hash ^ *bytes++) * kPrime;
  }
  for (auto* reference = form->references->GetHead(); reference != nullptr;
       reference = reference->next) {
    hash = (hash ^ static_cast<unsigned int>(reference->value->number)) * kPrime;
  }
  // The slot is taken from the low bits, which the multiplications mix least.
  return hash ^ (hash >> 15);
}

template <class Configuration>
bool CSerializer<Configuration>::Duplicates::IsSameKind(const Entry* a, const Entry* b) {
  const auto* left = a->working;
  const auto* right = b->working;
  const int length = left->data->GetCount();
  // The cheap tests first. One dictionary is one type.
  if (left->hash != right->hash || left->dictionary != right->dictionary ||
      length != right->data->GetCount() ||
      (length > 0 && memcmp(left->data->GetElements(), right->data->GetElements(),
                            static_cast<size_t>(length)) != 0)) {
    return false;
  }
  auto* mine = left->references->GetHead();
  auto* its = right->references->GetHead();
  while (mine != nullptr && its != nullptr && mine->value->number == its->value->number) {
    mine = mine->next;
    its = its->next;
  }
  // Both lists have ended.
  return mine == its;
}

}  // namespace plinth::v1::core
