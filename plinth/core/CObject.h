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
  // Every Init begins with one of these two, so that each keeps the promise of IObject.
  //
  // For an Init that raises, if at all, while it has taken nothing yet: the object is blank from
  // here on, and `valid` is set last.
  void BeginInit();
  // For any other: runs `body(frame)` in a frame whose catch deletes the object. The body ends the
  // old life by an Init of a parent class.
  template <class Body>
  void InitGuarded(const Body& body) {
    RunInit([](volatile api::Frame& frame,
               const void* context) { (*static_cast<const Body*>(context))(frame); },
            &body);
  }

  // Set last by every Init; what `CheckThis` tests first.
  bool valid;
  // Holders. 1 on a blank object too: the one that has made it.
  int refCount;

 private:
  // Raises `CException_General` where somebody else holds the object too.
  void CheckOneHolder() const;
  void RunInit(void (*run)(volatile api::Frame& frame, const void* context), const void* context);
};

}  // namespace plinth::v1::core
