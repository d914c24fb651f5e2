// The root of all objects: a counted life between blank and live.
// Room: plinth/core. Who holds the count of 1 that `Create...` gave, or called AddRef, calls
// Destroy. Failures are raised.
//
// Interfaces and classes form two trees. An interface derives from its parent interface virtually,
// a class from its parent class plainly and from its own interface virtually, so that every object
// has one shared interface part: an `I...` pointer made at any level of the factories calls the
// most derived class, and all fields are in the concrete part at the object's start. This is why
// inheritance is virtual throughout.
//
// Life: `Create...` on a factory gives a blank object; an `Init` overload brings it to life;
// `CheckThis` comes first in each public method; `Delete` frees what the object owns and
// resets it to blank; `Destroy` lets go of it.
//
// `Init`, in every overload: an object with several holders raises `CException_General` before
// anything else, and stays as it is. Any other failure leaves the object blank, with nothing held.
// An overload that the class does not have only raises. CObject has the two ways to write one.
#pragma once

#include "velora/export.h"

// Construction and destruction of a class of the two trees: nothing to do but for its fields, and
// always inline. Where one is called as a base's, the class of the object needs a virtual table of
// its own for each of its bases: kilobytes a class, which nothing else uses.
#define PLINTH_INLINE_CONSTRUCTION(Class)   \
  [[gnu::always_inline]] Class() = default; \
  PLINTH_INLINE_DESTRUCTION(Class)
// For a class with a constructor of its own, which is to be inline as well.
#define PLINTH_INLINE_DESTRUCTION(Class) [[gnu::always_inline]] ~Class() = default

namespace plinth::v1::core {
class CObject;
}

namespace plinth::v1::api {

class VELORA_API IObject {
 public:
  using Collected = IObject;  // as a frame's collector holds every object
  [[gnu::always_inline]] IObject() = default;
  // Brings the object to life without arguments. A class that needs some raises
  // `CException_WrongInitMethod`.
  virtual void Init() = 0;
  [[gnu::always_inline]] virtual ~IObject() = default;
  // Lets go of one reference; with the last the object ends. Works on a blank object too.
  virtual void Destroy() = 0;
  // Raises `CException_This_Invalid` on a blank object.
  virtual int GetRefCount() const = 0;
  // Raises `CException_This_Invalid` unless the object is live and its invariants hold.
  virtual void CheckThis() const = 0;
  // The shared interface part, without a new reference.
  virtual IObject* GetThis_Interface() = 0;
  // The concrete part, without a new reference. Its class is known where the type id has been
  // tested.
  virtual core::CObject* GetThis_Concrete() = 0;
  // Takes one reference, which the caller ends by `Destroy`. A plain count: one thread at a time
  // uses an object.
  virtual void AddRef() = 0;
};

}  // namespace plinth::v1::api
