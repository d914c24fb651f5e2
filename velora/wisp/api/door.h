// The ink door, as a program outside the library goes through it: open, calls inside a Try, close.
// Room: velora/wisp. Nothing but inline functions over velora.h. Failures are results: null, or a
// code as velora.h lists them.
//
//   api::_factory::IFactory* factory = api::Open();
//   int code = api::Try([&] {
//     veltune = factory->CreateVeltune();
//     veltune->Init(...);             // whatever fails in here ends the body with a code
//   });
//   ...
//   veltune->Destroy();               // what a Create or Build gave
//   factory->Destroy();
//   api::Close();
#pragma once

#include "velora/velora.h"
#include "velora/wisp/api/IFactory.h"

namespace velora::v1::wisp::api {

// Runs `body()` so that operations in it can fail. A failure leaves it by longjmp: it must not jump
// over an object with a destructor, and a local of the caller that the body changes is read behind
// it only if the body came to its end, or if the local is volatile or reached by its address.
template <class Body>
int Try(Body&& body) {
  struct Context {
    Body& body;
  } context = {body};
  return _plinth_v1_Try_Posix_So([](void* pointer) { static_cast<Context*>(pointer)->body(); },
                                 &context);
}

// Boots the process, opens the ink layer, and makes a factory, which the caller ends with Destroy
// ahead of Close. Null when there is no memory, and then nothing is left open.
inline _factory::IFactory* Open();

// Forgets the calling thread, and closes the ink layer and what is below it. Everything that was
// made in between is gone by then.
inline void Close() {
  _velora_v1_Cleanup_Thread_Posix_So();
  _velora_v1_Cleanup_Process_Posix_So();
  _plinth_v1_Cleanup_Process_Posix_So();
}

inline _factory::IFactory* Open() {
  BootRecord* record = _plinth_v1_Boot_Posix_So();
  if (record == nullptr) {
    return nullptr;
  }
  const bool open = _velora_v1_Initialize_Posix_So(record) != 0;
  _plinth_v1_FreeBootRecord_Posix_So(record);
  _factory::IFactory* factory = nullptr;
  const int code = open ? Try([&factory] {
    factory = static_cast<_factory::IFactory*>(_velora_v1_CreateFactory_Posix_So());
    factory->Init();
  })
                        : -1;
  if (code != 0) {
    if (factory != nullptr) {
      factory->Destroy();
    }
    Close();
    return nullptr;
  }
  return factory;
}

}  // namespace velora::v1::wisp::api
