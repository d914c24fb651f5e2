// The placement forms of new and delete: the only allocators that the library's code uses.
// Room: plinth/runtime. All memory is zero-filled. The forms on a boot manager answer null on
// failure; the forms on a platform raise (see CPlatform.h for which exception when).
//
// Objects of the object model, and the blocks in them, come from the platform's memory handler.
// The runtime's own small records (exceptions, collectors, jump nodes, thread entries) come from
// the boot manager, so that an exception can be raised while a handler is failing.
#pragma once

#include <stddef.h>

namespace plinth::v1::api {
class IBootManager;
class CPlatform;
}  // namespace plinth::v1::api

void* operator new(size_t size, plinth::v1::api::IBootManager* bootManager, bool unused) noexcept;
void* operator new[](size_t size, plinth::v1::api::IBootManager* bootManager, bool unused) noexcept;
void operator delete(void* pointer, plinth::v1::api::IBootManager* bootManager,
                     bool unused) noexcept;
void operator delete[](void* pointer, plinth::v1::api::IBootManager* bootManager,
                       bool unused) noexcept;

// The second bool says that a failed allocation is raised and not returned as null.
void* operator new(size_t size, plinth::v1::api::CPlatform* platform, bool unused,
                   bool raise) noexcept;
void* operator new[](size_t size, plinth::v1::api::CPlatform* platform, bool unused,
                     bool raise) noexcept;
void operator delete(void* pointer, plinth::v1::api::CPlatform* platform, bool unused,
                     bool raise) noexcept;
void operator delete[](void* pointer, plinth::v1::api::CPlatform* platform, bool unused,
                       bool raise) noexcept;

namespace plinth::v1::api {

// Runs the destructor and gives the memory back through the allocator that the namespace names.
// Null is ignored.
namespace boot_manager {
template <class T>
void PlacementDelete(IBootManager* bootManager, T* object) {
  if (object != nullptr) {
    object->~T();
    operator delete(object, bootManager, false);
  }
}
}  // namespace boot_manager

namespace platform {
template <class T>
void PlacementDelete(CPlatform* platform, T* object) {
  if (object != nullptr) {
    object->~T();
    operator delete(object, platform, false, false);
  }
}
}  // namespace platform

}  // namespace plinth::v1::api
