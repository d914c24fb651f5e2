// What the templates over a pipeline's objects need to know of it.
//
// Room: authoring, for the files that instantiate them. They run inside frames of the library:
// objects go to the frame's collector, failures are raised, and nothing holds an object with a
// destructor. A C++ container is filled within `Filled`, which turns an exception into a raise.
//
// A `Layer` names a pipeline: its Configuration, IFactory and IVelcase; Kinds, a KindRows of its
// component lists in a pack's order; ForEachStored(visit), which calls visit(name, type id, factory
// slot) for each row of the factory's tables; Open, Close and Factory, between them; StoreBytes,
// which gives a blank operator its bytes, or answers false where only an image can do that, and
// StoredBytes, which takes them; IBytesProperty, the property that holds bytes, void where there is
// none; FindMisread and kLargestFile, see PackPipeline.
#pragma once

#include <type_traits>

#include "authoring/table.h"
#include "plinth/runtime/api/frame.h"
#include "velora/common/api/IFactory.h"

namespace velora::authoring {

namespace raised = plinth::v1::api;

constexpr auto kImageEndianness = raised::ISerializer::ETargetEndianness::Reversed;

// A kind of component, and the operations that make it, arrays and lists of it, and read its list.
template <class Interface, auto kSlot, auto kArraySlot, auto kListSlot, auto kListGetter>
struct KindRow {
  using Kind = Interface;
  static constexpr auto kCreate = kSlot;
  static constexpr auto kCreateArray = kArraySlot;
  static constexpr auto kCreateList = kListSlot;
  static constexpr auto kGetList = kListGetter;
};
template <class First, class... Rows>  // nothing comes first, so that a table can begin with commas
struct KindRows {};

// What a factory slot makes.
template <class Slot>
struct SlotOf;
template <class T, class Factory>
struct SlotOf<T* (Factory::*)()> {
  using Interface = T;
};

template <class Interface, class = void>
constexpr bool kHasValue = false;
template <class Interface>
constexpr bool kHasValue<Interface, std::void_t<typename Interface::Enumeration>> = true;

// Runs `fill()`, and is false when it throws: nothing but memory is missing then.
template <class Fill>
bool IsFilled(Fill fill) noexcept {
  try {
    fill();
    return true;
  } catch (...) {
    return false;
  }
}

template <class Configuration, class Fill>
void Filled(Fill fill) {
  if (!IsFilled(fill)) PLINTH_RAISE(raised::CException_Memory_AllocationFailed);
}

template <class Configuration>
void SetBytes(Bytes* bytes, const unsigned char* elements, int size) {
  Filled<Configuration>([=] { bytes->assign(elements, elements + size); });
}

template <class Layer>
struct PackInterfaces {
  using Configuration = typename Layer::Configuration;
  using Ids = common::TypeIds<Configuration>;
  using ITag = common::api::ITag<Configuration>;
  using ITags = common::api::ITags<Configuration>;
  using IProperty = common::api::IProperty<Configuration>;
  using IProperties = common::api::IProperties<Configuration>;
  using IConditions = common::api::IConditions<Configuration>;
  using ICondition = typename IConditions::IOperator;
  using IRecipe = common::api::IRecipe<Configuration>;
  using IStep = typename IRecipe::IOperator;
  using IComponent = common::api::IComponent<Configuration>;

  template <class Interface>
  static constexpr bool kIsReference = std::is_convertible_v<Interface*, IComponent*>;
  template <class Interface>
  static constexpr bool kIsOperator =
      std::is_convertible_v<Interface*, IStep*> && !kIsReference<Interface>;
  template <class Interface>
  static constexpr bool kHoldsBytes = std::is_same_v<Interface, typename Layer::IBytesProperty>;
};

}  // namespace velora::authoring
