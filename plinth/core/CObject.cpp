#include "plinth/core/CObject.h"

#include "plinth/core/api/ISerializer.h"

namespace plinth::v1::api {

void ISerializer::ETargetEndianness::Check(Enum value) {
  if (value != Reversed && value != MemoryOrder) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
}

}  // namespace plinth::v1::api

namespace plinth::v1::core {

using api::Configuration;

void CObject::Init() {
  BeginInit();
  valid = true;
}

// The holders first: a shared object must stay as it is.
void CObject::BeginInit() {
  CheckOneHolder();
  Delete();
}

// The one frame of all guarded forms of Init: `setjmp` stays out of the templates.
void CObject::RunInit(void (*run)(volatile api::Frame& frame, const void* context),
                      const void* context) {
  CheckOneHolder();
  PLINTH_FRAME(Configuration) {
    run(frame, context);
  }
  PLINTH_CATCH {
    Delete();
    PLINTH_RETHROW;
  }
  PLINTH_END
}

void CObject::CheckOneHolder() const {
  if (refCount > 1) {
    PLINTH_RAISE(CException_General);
  }
}

void CObject::Destroy() { RemoveRef(); }

// The count of a live object only; `Destroy` and AddRef work on blank ones too.
int CObject::GetRefCount() const {
  CheckThis();
  return refCount;
}

void CObject::CheckThis() const {
  if (!valid) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

api::IObject* CObject::GetThis_Interface() { return this; }

CObject* CObject::GetThis_Concrete() { return this; }

void CObject::AddRef() { ++refCount; }

// The creator's count: whoever holds a blank object still owes it a `Destroy`.
void CObject::Reset() {
  valid = false;
  refCount = 1;
}

void CObject::Delete() { Reset(); }

void CObject::RemoveRef() {
  if (--refCount < 1) {
    // The object's memory starts at `this`: CObject is the first base of every class.
    api::CPlatform* platform = api::Slots<Configuration>().platform;
    void* memory = this;
    Delete();
    this->~CObject();
    operator delete(memory, platform, false, false);
  }
}

}  // namespace plinth::v1::core
