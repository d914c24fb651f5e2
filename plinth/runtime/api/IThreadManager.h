// The platform's threads, as far as the thread table needs them.
// Room: plinth/runtime. Owned by the thread context manager; nothing here raises.
#pragma once

namespace plinth::v1::api {

class IThreadManager {
 public:
  virtual bool Init() = 0;
  virtual ~IThreadManager();
  // Ends the manager and frees it through the boot manager; there are no counts.
  virtual void Destroy() = 0;
  // The calling thread's kernel id; 0 means that there is none.
  virtual int GetThreadHandle() const = 0;
  virtual void Sleep(int milliseconds) const = 0;
  virtual bool IsValid() const = 0;
  virtual void Reset() = 0;
  virtual void Delete() = 0;
};

}  // namespace plinth::v1::api
