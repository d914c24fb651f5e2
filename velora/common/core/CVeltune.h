// The lookup: from a reference component and a list to the one component that fits.
// Room: velora/common. Holds one reference on its parameters, which a copy shares: an `Update` of
// either changes the print mode of both. Nothing left after the filters raises
// `CException_General`; a condition that cannot be evaluated stops the lookup with what it raises.
// Evaluation writes into the conditions' operators, so a list serves one lookup at a time.
#pragma once

#include "plinth/core/CObject.h"
#include "plinth/core/Counted.h"
#include "velora/common/api/IComponent.h"
#include "velora/common/api/IVeltune.h"
#include "velora/common/core/BuildScope.h"

namespace velora::common::core {

using plinth::v1::core::Counted;
using namespace plinth::v1::api::_exports::common::exception;

template <class Configuration>
class CBuiltBody;

template <class Configuration>
class CVeltune : public plinth::v1::core::CObject, public virtual api::IVeltune<Configuration> {
 public:
  using Interface = api::IVeltune<Configuration>;
  using Parameters = typename Interface::Parameters;
  using Veltune = typename Interface::Veltune;

  [[gnu::always_inline]] CVeltune() : buildChain(nullptr) {}
  PLINTH_INLINE_DESTRUCTION(CVeltune);
  using Interface::Init;
  void Init() override;
  void Init(Parameters* newParameters) override;
  void Init(Veltune* other) override;
  Parameters* GetPrintModeParameters() const override;
  void Serialize() override;
  void Deserialize() override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

  // The concrete veltune of a layer.
  static CVeltune* Concrete(Veltune* veltune) {
    return static_cast<CVeltune*>(veltune->GetThis_Concrete());
  }
  // The chosen component of the list, without a new reference.
  template <class Kind>
  static Kind* Locate_FromComponentList(Kind* key, api::IComponentList<Configuration, Kind>* list,
                                        Parameters* parameters);
  // A new component of the concrete class that is a copy of the chosen one. The caller owns it, and
  // can have it build data without touching the pack. The key's callbacks frame the search.
  template <class Class, class Kind>
  Kind* Locate(Kind* key, api::IComponentList<Configuration, Kind>* list, Parameters* parameters);

 protected:
  void CheckMembers() const;

  // One sorted pack of the concrete class with the components of all. The caller owns it. No packs,
  // or packs of several supply families, raise `CException_This_Invalid`.
  template <class Class, class Pack>
  static Pack* Init_BuildVelcase_Combined(api::IArray<Pack>* velcases);

 private:
  friend class CBuiltBody<Configuration>;
  using Component = api::IComponent<Configuration>;

  // The place of the chosen component, by a finder of its own.
  static int SearchOnce(Component* key, const Components<Configuration>& components,
                        Parameters* parameters);
  // The chosen component; `kind` is its type id. A build's finder serves all its searches.
  Component* Search(Component* key, const Components<Configuration>& components,
                    Parameters* parameters, int kind);

  // Their packs stay as long as they do.
  Counted<Parameters> parameters;
  BuildChain<Configuration>* buildChain;  // the innermost recipe under construction, or null
};

}  // namespace velora::common::core
