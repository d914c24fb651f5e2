#include "plinth/runtime/posix/CSemaphoreManager_Posix.h"

#include <stdint.h>

#include "plinth/runtime/api/BootSlots.h"
#include "plinth/runtime/api/door.h"
#include "plinth/runtime/api/placement.h"

namespace plinth::v1::api {

ISemaphoreManager::~ISemaphoreManager() = default;

namespace _exports::posix {

CSemaphoreManager_Posix::CSemaphoreManager_Posix() : valid(true) {}

CSemaphoreManager_Posix::~CSemaphoreManager_Posix() = default;

bool CSemaphoreManager_Posix::Init() {
  Delete();
  valid = true;
  return true;
}

void CSemaphoreManager_Posix::Destroy() {
  boot_manager::PlacementDelete(Booted().bootManager, this);
}

// Not an address, but not null either: null means that there is none.
void* CSemaphoreManager_Posix::Semaphore_Create(int) const {
  return reinterpret_cast<void*>(static_cast<uintptr_t>(1));
}

void CSemaphoreManager_Posix::Semaphore_Destroy(void*) const {}

void CSemaphoreManager_Posix::Semaphore_Wait(void*) const {}

void CSemaphoreManager_Posix::Semaphore_Release(void*) const {}

bool CSemaphoreManager_Posix::IsValid() const { return valid; }

void CSemaphoreManager_Posix::Reset() { valid = false; }

void CSemaphoreManager_Posix::Delete() { Reset(); }

CSemaphoreManager_Table::CSemaphoreManager_Table() = default;

CSemaphoreManager_Table::~CSemaphoreManager_Table() = default;

// One lock for all tables: a process has one boot, and so one table.
void CSemaphoreManager_Table::Semaphore_Wait(void*) const { LockTable(); }

void CSemaphoreManager_Table::Semaphore_Release(void*) const { UnlockTable(); }

}  // namespace _exports::posix
}  // namespace plinth::v1::api
