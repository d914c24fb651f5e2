// The semaphores of this platform: a null object, and the manager of the thread table.
// Room: plinth/runtime. In the boot manager's memory; `Destroy` ends it.
#pragma once

#include "plinth/runtime/api/ISemaphoreManager.h"

namespace plinth::v1::api::_exports::posix {

// Guards nothing.
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

// The manager of the thread table: its semaphores are the one lock of that table.
class CSemaphoreManager_Table : public CSemaphoreManager_Posix {
 public:
  CSemaphoreManager_Table();
  ~CSemaphoreManager_Table() override;
  void Semaphore_Wait(void* semaphore) const override;
  void Semaphore_Release(void* semaphore) const override;
};

}  // namespace plinth::v1::api::_exports::posix
