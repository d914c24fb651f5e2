// The front end's allocator, with its tracker of 40 live blocks.
// Room: velora/frontend/toolkit. The tracker owns every block until it is deallocated; it has no
// lock. Failures are null results, each with its line.
#pragma once

#include "velora/velora.h"

namespace Ctr {

// A live block; the pointer of a free slot is null.
struct MemSlot {
  unsigned int size;
  void* pointer;
  char tag;
};

inline constexpr int kMemSlots = 40;

extern MemSlot MemStats[kMemSlots];

// Zero-filled block of `size` bytes, or null when memory or slots ran out. Blocks that share a tag
// can be freed as a family; the blank is the tag of those that have no family.
VELORA_API void* AllocMem(unsigned int size, char tag);
VELORA_API void* AllocMem(unsigned int size);

// Frees one block. Null does nothing; a pointer that is not tracked is left alone, with a warning.
VELORA_API void DeallocMem(void* p);

// Frees every block with this tag, which must not be 0, from the last slot to the first.
VELORA_API void DeallocMem(char tag);

// AllocMem behind a line of its own: `format` takes the size as %d.
void* AllocMemWithLine(const char* function, int line, const char* format, unsigned int size,
                       char tag);

// The same, as an array of elements.
template <class Element>
Element* AllocArrayWithLine(const char* function, int line, const char* format, unsigned int size,
                            char tag) {
  return static_cast<Element*>(AllocMemWithLine(function, line, format, size, tag));
}

}  // namespace Ctr
