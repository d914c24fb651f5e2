#include "plinth/runtime/posix/CThreadManager_Posix.h"

#include <sys/syscall.h>
#include <unistd.h>

#include "plinth/runtime/api/BootSlots.h"
#include "plinth/runtime/api/placement.h"

namespace plinth::v1::api {

IThreadManager::~IThreadManager() = default;

namespace _exports::posix {

CThreadManager_Posix::CThreadManager_Posix() : valid(true) {}

CThreadManager_Posix::~CThreadManager_Posix() = default;

bool CThreadManager_Posix::Init() {
  Delete();
  valid = true;
  return true;
}

void CThreadManager_Posix::Destroy() { boot_manager::PlacementDelete(Booted().bootManager, this); }

// The kernel's id: unique in the machine while the thread runs, and free for another one
// afterwards.
int CThreadManager_Posix::GetThreadHandle() const { return static_cast<int>(syscall(SYS_gettid)); }

void CThreadManager_Posix::Sleep(int) const {}

bool CThreadManager_Posix::IsValid() const { return valid; }

void CThreadManager_Posix::Reset() { valid = false; }

void CThreadManager_Posix::Delete() { Reset(); }

}  // namespace _exports::posix
}  // namespace plinth::v1::api
