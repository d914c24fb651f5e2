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
  // Shares the packs; the two numbers are checked by the pipeline's own Init. A null array raises
  // `CException_Parameter_Invalid`.
  virtual void Init(int platform, int productVariant, IArray<Pack>* velcases) = 0;
  virtual void Init(Parameters* other) = 0;  // shares the other's packs
  // The first pack of the channel, without a new reference. No such pack raises
  // `CException_This_Invalid`.
  virtual Pack* FindVelcase(int channel) const = 0;
  // Without a new reference.
  virtual IArray<Pack>* GetArray_Velcases() const = 0;
  // As given to `Init`.
  virtual int GetPlatform() const = 0;
  // That of the printer's pack. Raises where there is none.
  virtual int GetSupplyFamily() const = 0;
  virtual int GetProductVariant() const = 0;
  // That of the channel's first pack: what a condition on a supply's version asks for.
  virtual int GetVelcaseVersion(int channel) const = 0;
};

template <class Configuration>
class IVeltune : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVeltune);
  using Parameters = typename Vocabulary<Configuration>::IPrintModeParameters;
  using Veltune = typename Vocabulary<Configuration>::IVeltune;

  using plinth::v1::api::IObject::Init;
  // Null raises `CException_Parameter_Invalid`, here and below.
  virtual void Init(Parameters* parameters) = 0;  // shares them
  virtual void Init(Veltune* other) = 0;          // shares the other's
  // Without a new reference.
  virtual Parameters* GetPrintModeParameters() const = 0;
  // Nothing is stored of a veltune: these two do nothing.
  virtual void Serialize() = 0;
  virtual void Deserialize() = 0;
};

}  // namespace velora::common::api
