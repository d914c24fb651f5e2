// The root of all classes: the valid flag and the reference count.
// Room: plinth/core. Raises `CException_This_Invalid` on a blank object, `CException_General` on
// `Init` of a shared one. Reads the foundation's block, whatever the object's own layer.
#pragma once

#include "plinth/core/api/IObject.h"
#include "plinth/runtime/api/frame.h"

namespace plinth::v1::core {

using namespace plinth::v1::api::_exports::common::exception;

class CObject : public virtual api::IObject {
 public:
  [[gnu::always_inline]] CObject() : valid(false), refCount(1) {}
  PLINTH_INLINE_DESTRUCTION(CObject);
  void Init() override;
  void Destroy() override;
  int GetRefCount() const override;
  void CheckThis() const override;
  api::IObject* GetThis_Interface() override;
  CObject* GetThis_Concrete() override;
  void AddRef() override;

  // Clears the fields of all levels to their blank values and frees nothing.
  virtual void Reset();
  // Frees what the object owns, then `Reset`. A derived class drops its own members and calls up.
  virtual void Delete();
  // Drops a reference; the last ends the object: `Delete`, then a destructor with nothing to do.
  virtual void RemoveRef();

 protected:
  // What `Init` does, up to `valid`: for an Init that needs no frame, because it makes the object
  // valid last. What it has taken by then is the object's, and ends with it or with its next Init.
  void BeginInit();

  bool valid;
  int refCount;
};

}  // namespace plinth::v1::core
