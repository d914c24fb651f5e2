// The allocator that exists before any handler does.
// Room: plinth/runtime. Counted by hand: who stores a pointer calls AddRef, who clears it Destroy.
// Failure is a null result; nothing here raises.
#pragma once

namespace plinth::v1::api {

class IBootManager {
 public:
  // Makes the manager valid again, with one reference.
  virtual bool Init() = 0;
  virtual ~IBootManager();
  // Drops one reference; the object ends with the last.
  virtual void Destroy() = 0;
  // The one wait that really waits.
  virtual void Sleep(int milliseconds) = 0;
  // Zero-filled memory of `size` bytes, or null when `size` is below 1, the manager is invalid, or
  // the heap is exhausted. The bool is not looked at.
  virtual void* Allocate(int size, bool) = 0;
  // Ignores null, and everything when the manager is invalid.
  virtual void Free(void* pointer) = 0;
  virtual bool IsValid() const = 0;
  // Takes one reference; `RemoveRef` is `Destroy`.
  virtual void AddRef() = 0;
  virtual void RemoveRef() = 0;
  // Makes the manager invalid, and `Delete` too: it gives no memory from then on, and takes none
  // back.
  virtual void Reset() = 0;
  virtual void Delete() = 0;
};

}  // namespace plinth::v1::api
