// The platform's semaphores, as far as the thread table needs them.
// Room: plinth/runtime. Owned by the thread context manager, which destroys each handle it made;
// a null handle is the one failure.
#pragma once

namespace plinth::v1::api {

class ISemaphoreManager {
 public:
  virtual bool Init() = 0;
  virtual ~ISemaphoreManager();
  // Ends the manager and frees it through the boot manager; there are no counts.
  virtual void Destroy() = 0;
  // A handle with so many places, or null. The caller ends it by `Semaphore_Destroy`.
  virtual void* Semaphore_Create(int count) const = 0;
  virtual void Semaphore_Destroy(void* semaphore) const = 0;
  // Takes a place, and waits where there is none. Not twice on one thread: the table's lock does
  // not nest.
  virtual void Semaphore_Wait(void* semaphore) const = 0;
  virtual void Semaphore_Release(void* semaphore) const = 0;
  virtual bool IsValid() const = 0;
  virtual void Reset() = 0;
  virtual void Delete() = 0;
};

}  // namespace plinth::v1::api
