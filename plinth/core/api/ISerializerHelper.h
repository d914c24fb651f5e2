// Makes blank objects by type id, for a serializer that reads.
// Room: plinth/core. The caller owns the result's one reference. Raises
// `CException_Parameter_Invalid` for an id outside [1..127] or unknown, `CException_NotImplemented`
// for id 3.
#pragma once

#include "plinth/core/api/ISerializeable.h"

namespace plinth::v1::api {

class ISerializerHelper : public virtual IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(ISerializerHelper);
  virtual ISerializeable* CreateSerializeable(int type) = 0;
};

}  // namespace plinth::v1::api
