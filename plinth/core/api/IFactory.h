// Makes blank objects: the foundation's level of the chain of factories.
// Room: plinth/core. The caller owns each result's one reference and runs its `Init`. A blank
// factory raises `CException_This_Invalid`, no memory `CException_Memory_AllocationFailed`.
#pragma once

#include "plinth/core/api/IArray.h"
#include "plinth/core/api/ISerializer.h"

namespace plinth::v1::api::_factory {

class IFactory : public virtual IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IFactory);
  // Each result is blank, and has one reference, the caller's.
  virtual ISerializer* CreateSerializer() = 0;
  virtual IArray_uint8* CreateArray_uint8() = 0;
  virtual IArray_int32* CreateArray_int32() = 0;
};

}  // namespace plinth::v1::api::_factory
