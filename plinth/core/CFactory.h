// The foundation's factory, the root of every layer's chain.
// Room: plinth/core. Errors: see IFactory.
#pragma once

#include "plinth/core/CArray.h"
#include "plinth/core/CSerializer.h"
#include "plinth/core/api/IFactory.h"

namespace plinth::v1::core {

// The serializer that serves all layers.
extern template class CSerializer<api::Configuration>;

}  // namespace plinth::v1::core

namespace plinth::v1::core::_factory {

// Objects are made through the layer's own block; the classes are those of the foundation.
template <class Configuration>
class CFactory : public CObject, public virtual api::_factory::IFactory {
 public:
  PLINTH_INLINE_CONSTRUCTION(CFactory);
  api::ISerializer* CreateSerializer() override;
  api::IArray_uint8* CreateArray_uint8() override;
  api::IArray_int32* CreateArray_int32() override;

 protected:
  // A blank object of the class, with one reference.
  template <class Class>
  Class* Create() const {
    CheckThis();
    return new (api::Slots<Configuration>().platform, false, true) Class;
  }
};

}  // namespace plinth::v1::core::_factory
