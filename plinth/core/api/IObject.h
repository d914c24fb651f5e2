// The root of all objects: a counted life between blank and live.
// Room: plinth/core. Who holds the count of 1 that `Create...` gave, or called AddRef, calls
// Destroy. Failures are raised.
//
// Interfaces and classes form two trees. An interface derives from its parent interface virtually,
// a class from its parent class plainly and from its own interface virtually, so that every object
// has one shared interface part: an `I...` pointer made at any level of the factories calls the
// most derived class, and all fields stand in the concrete part at the object's start. This is why
// inheritance is virtual throughout.
//
// Life: `Create...` on a factory gives a blank object; an `Init` overload brings it to life;
// `CheckThis` stands at the head of each public method; `Delete` frees what the object owns and
// resets it to blank; `Destroy` lets go of it. A failed `Init` leaves the object blank.
#pragma once

#include "velora/export.h"

namespace plinth::v1::core {
class CObject;
}

namespace plinth::v1::api {

class VELORA_API IObject {
 public:
  virtual void Init() = 0;
  VELORA_HIDDEN virtual ~IObject();
  virtual void Destroy() = 0;
  virtual int GetRefCount() const = 0;
  // Raises `CException_This_Invalid` unless the object is live and its invariants hold.
  virtual void CheckThis() const = 0;
  virtual IObject* GetThis_Interface() = 0;
  // The concrete part. Its class is known where the type id has been tested.
  virtual core::CObject* GetThis_Concrete() = 0;
  virtual void AddRef() = 0;
};

}  // namespace plinth::v1::api
