// The bases of all data-model objects.
// Room: velora/common. An object does not own its callbacks record. Raises as plinth's
// CSerializeable does.
#pragma once

#include "plinth/core/CSerializeable.h"
#include "plinth/core/Counted.h"
#include "velora/common/api/IProperty.h"
#include "velora/common/api/ITag.h"

namespace velora::common::core {

using plinth::v1::core::Counted;
using namespace plinth::v1::api::_exports::common::exception;

// Adds the callbacks.
template <class Configuration>
class CSerializeable : public plinth::v1::core::CSerializeable,
                       public virtual api::ISerializeable<Configuration> {
 public:
  using Interface = api::ISerializeable<Configuration>;
  using Callbacks = typename Interface::Callbacks;

  [[gnu::always_inline]] explicit CSerializeable(int type)
      : plinth::v1::core::CSerializeable(type), callbacks(nullptr) {}
  PLINTH_INLINE_DESTRUCTION(CSerializeable);
  using plinth::v1::core::CSerializeable::Init;
  void Init(Interface* other) override;
  void SetCallbacks(Callbacks* newCallbacks) override;
  Callbacks* GetCallbacks() const override;
  int Call_Callback_Locate() override;
  int Call_Callback_Locate_Done() override;
  int Call_Callback_Build() override;
  int Call_Callback_Build_Done() override;
  int Call_Callback_Resolve() override;
  int Call_Callback_Resolve_Done() override;
  int Call_Callback_ReportSize_Encoded(int size) override;
  void Reset() override;

 protected:
  // The caller's record, or null.
  Callbacks* callbacks;
};

template <class Configuration>
class CElement : public CSerializeable<Configuration> {
 public:
  [[gnu::always_inline]] explicit CElement(int type) : CSerializeable<Configuration>(type) {}
  PLINTH_INLINE_DESTRUCTION(CElement);
  // A null serializer or a blank object raises; nothing is written. Derived classes call this
  // first, and write behind it.
  void Serialize(api::ISerializer* serializer, void* context) override;
};

// The base of a tag or of a property: comparing raises; `Serialize` only checks.
template <class Configuration, class Interface>
class CNamed : public CElement<Configuration>, public virtual Interface {
 public:
  [[gnu::always_inline]] explicit CNamed(int type) : CElement<Configuration>(type) {}
  PLINTH_INLINE_DESTRUCTION(CNamed);
  using CElement<Configuration>::Init;
  bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
  bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
};

template <class Configuration>
using CTag = CNamed<Configuration, api::ITag<Configuration>>;
template <class Configuration>
using CProperty = CNamed<Configuration, api::IProperty<Configuration>>;

}  // namespace velora::common::core
