// The parameters of a print mode that both pipelines have: printer and packs.
// Room: velora/common. Holds one reference on the array of packs. Errors: see
// IPrintModeParameters.
#pragma once

#include "plinth/core/CObject.h"
#include "plinth/core/Counted.h"
#include "velora/common/api/IVelcase.h"
#include "velora/common/api/IVeltune.h"

namespace velora::common::core {

using plinth::v1::core::Counted;
using namespace plinth::v1::api::_exports::common::exception;

template <class Configuration>
class CPrintModeParameters : public plinth::v1::core::CObject,
                             public virtual api::IPrintModeParameters<Configuration> {
 public:
  using Interface = api::IPrintModeParameters<Configuration>;
  using Parameters = typename Interface::Parameters;
  using Pack = typename Interface::Pack;

  [[gnu::always_inline]] CPrintModeParameters() : platform(0), productVariant(0) {}
  PLINTH_INLINE_DESTRUCTION(CPrintModeParameters);
  using Interface::Init;
  void Init() override;
  void Init(int newPlatform, int newProductVariant, api::IArray<Pack>* newVelcases) override;
  void Init(Parameters* other) override;
  Pack* FindVelcase(int channel) const override;
  api::IArray<Pack>* GetArray_Velcases() const override;
  int GetPlatform() const override;
  int GetSupplyFamily() const override;
  int GetProductVariant() const override;
  int GetVelcaseVersion(int channel) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  int platform;
  int productVariant;
  Counted<api::IArray<Pack>> velcases;
};

// Adds the print mode: a mapping out of the pipeline's table. Neither is owned. `Mode` is the type
// of the pipeline's Update: what a caller says a print mode with.
template <class Configuration, class Mode>
class CPrintModeParametersOf;

template <class Configuration, class... Keys>
class CPrintModeParametersOf<Configuration, void(Keys...)>
    : public CPrintModeParameters<Configuration>,
      public virtual Vocabulary<Configuration>::IPrintModeParameters {
 public:
  using Base = CPrintModeParameters<Configuration>;
  using Parameters = typename Base::Parameters;
  using Pack = typename Base::Pack;
  using Mapping = typename Vocabulary<Configuration>::IPrintModeMapping;
  using Mappings = typename Vocabulary<Configuration>::IPrintModeMappings;

  [[gnu::always_inline]] CPrintModeParametersOf()
      : m_pPrintModeMappings(nullptr), m_pPrintModeMapping(nullptr) {}
  PLINTH_INLINE_DESTRUCTION(CPrintModeParametersOf);
  using Vocabulary<Configuration>::IPrintModeParameters::Init;
  void Init(Parameters* other) override;
  void Update(Keys... keys) override;
  Mappings* GetPrintModeMappings() const override;
  Mapping* GetPrintModeMapping() const override;
  bool IsUpToDate(Keys... keys) const override;
  void CheckThis() const override;
  void Reset() override;

 protected:
  // The body of the pipeline's own Init, which checks the two numbers' ranges.
  void InitMode(int platform, int productVariant, api::IArray<Pack>* velcases, Mappings* mappings,
                Keys... keys);

 private:
  // The caller's; they must outlive this object and its copies.
  Mappings* m_pPrintModeMappings;
  Mapping* m_pPrintModeMapping;
};

}  // namespace velora::common::core
