// Threads by their kernel id.
// Room: plinth/runtime. In the boot manager's memory; `Destroy` ends it.
#pragma once

#include "plinth/runtime/api/IThreadManager.h"

namespace plinth::v1::api::_exports::posix {

class CThreadManager_Posix : public IThreadManager {
 public:
  CThreadManager_Posix();
  bool Init() override;
  ~CThreadManager_Posix() override;
  void Destroy() override;
  int GetThreadHandle() const override;
  // Returns at once: what really waits is the boot manager's `Sleep`.
  void Sleep(int milliseconds) const override;
  bool IsValid() const override;
  void Reset() override;
  void Delete() override;

 private:
  bool valid;
};

}  // namespace plinth::v1::api::_exports::posix
