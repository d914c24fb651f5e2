// The null object behind the semaphores: this platform has none, and the thread table is not
// guarded here. The calls stand where they belong, so that a real manager can take its place.
// Room: plinth/runtime. In the boot manager's memory; `Destroy` ends it.
#pragma once

#include "plinth/runtime/api/ISemaphoreManager.h"

namespace plinth::v1::api::_exports::posix {

class CSemaphoreManager_Posix : public ISemaphoreManager {
 public:
  CSemaphoreManager_Posix();
  bool Init() override;
  ~CSemaphoreManager_Posix() override;
  void Destroy() override;
  // The handle 1, whatever the argument.
  void* Semaphore_Create(int count) const override;
  void Semaphore_Destroy(void* semaphore) const override;
  void Semaphore_Wait(void* semaphore) const override;
  void Semaphore_Release(void* semaphore) const override;
  bool IsValid() const override;
  void Reset() override;
  void Delete() override;

 private:
  bool valid;
};

}  // namespace plinth::v1::api::_exports::posix
