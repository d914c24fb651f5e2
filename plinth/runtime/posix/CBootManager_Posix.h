// The boot manager on the C library's heap.
// Room: plinth/runtime. Takes its own memory from the C library's heap, because no allocator exists
// before it; ends itself with its last reference.
#pragma once

#include <stdlib.h>

#include "plinth/runtime/api/IBootManager.h"

namespace plinth::v1::api::_exports::posix {

class CBootManager_Posix : public IBootManager {
 public:
  // Null without memory. The global operators would link exceptions into the library.
  static void* operator new(size_t size) noexcept { return malloc(size); }
  static void operator delete(void* object) { free(object); }

  CBootManager_Posix();
  bool Init() override;
  ~CBootManager_Posix() override;
  void Destroy() override;
  void Sleep(int milliseconds) override;
  void* Allocate(int size, bool) override;
  void Free(void* pointer) override;
  bool IsValid() const override;
  void AddRef() override;
  void RemoveRef() override;
  void Reset() override;
  void Delete() override;

  int GetRefCount() const { return refCount; }

 private:
  bool valid;
  int refCount;
};

}  // namespace plinth::v1::api::_exports::posix
