// The kinds of written entries: finds the entry that was written first of each.
// Room: plinth/core. Counted. Borrows the entries, which must outlast it. Raises
// `CException_Memory_AllocationFailed`.
#pragma once

#include "plinth/core/CSerializer.h"

namespace plinth::v1::core {

// Entries are of one kind when their types, their bytes and, pair by pair, all that is nested in
// them are equal. An entry is complete after all that is nested in it, so each gets the number of
// its kind when it is complete, and its holder compares bytes and numbers alone.
template <class Configuration>
class CSerializer<Configuration>::Duplicates : public CSerializer<Configuration>::Object {
 public:
  Duplicates();
  ~Duplicates();
  void Destroy() { Object::RemoveRef(this); }

  // Numbers a complete entry. The first complete one of its kind, which is itself for a new kind.
  Entry* FindFirst(Entry* entry);

 private:
  static unsigned int Hash(const Entry* entry);
  static bool IsSameKind(const Entry* a, const Entry* b);
  // The slot of the entry's kind, or the free one for it.
  static Entry** Slot(Entry** slots, unsigned int slotCount, const Entry* entry);
  void Grow();

  Entry** table;      // one entry a kind, at its hash or in a slot behind that
  unsigned int size;  // slots, a power of two; at most half of them in use
  int kinds;
};

}  // namespace plinth::v1::core
