// The object that answers for one resolved colour mode, and the parameters of its print mode.
// Room: velora/common. Both hold counted references; the packs outlive neither. Null arguments
// raise `CException_Parameter_Invalid`, a channel without a pack `CException_This_Invalid`.
#pragma once

#include "plinth/core/api/IArray.h"
#include "velora/common/enumeration.h"

namespace velora::common::api {

using plinth::v1::api::IArray;

template <class Configuration>
class IPrintModeParameters : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPrintModeParameters);
  using Parameters = typename Vocabulary<Configuration>::IPrintModeParameters;
  using Pack = typename Vocabulary<Configuration>::IVelcase;

  using plinth::v1::api::IObject::Init;
  virtual void Init(int platform, int productVariant, IArray<Pack>* velcases) = 0;
  virtual void Init(Parameters* other) = 0;
  // The first pack of the channel, without a new reference.
  virtual Pack* FindVelcase(int channel) const = 0;
  virtual IArray<Pack>* GetArray_Velcases() const = 0;
  virtual int GetPlatform() const = 0;
  // That of the printer's pack.
  virtual int GetSupplyFamily() const = 0;
  virtual int GetProductVariant() const = 0;
  virtual int GetVelcaseVersion(int channel) const = 0;
};

template <class Configuration>
class IVeltune : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVeltune);
  using Parameters = typename Vocabulary<Configuration>::IPrintModeParameters;
  using Veltune = typename Vocabulary<Configuration>::IVeltune;

  using plinth::v1::api::IObject::Init;
  virtual void Init(Parameters* parameters) = 0;
  virtual void Init(Veltune* other) = 0;
  virtual Parameters* GetPrintModeParameters() const = 0;
  virtual void Serialize() = 0;
  virtual void Deserialize() = 0;
};

}  // namespace velora::common::api
