// The boot manager on the C library's heap.
// Room: plinth/runtime. Made with the global `new`, the one object of the library that is, because
// it is the first allocator; ends itself with its last reference.
#pragma once

#include "plinth/runtime/api/IBootManager.h"

namespace plinth::v1::api::_exports::posix {

class CBootManager_Posix : public IBootManager {
 public:
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
