// What a sort has found out about the parts of its components, so that each pair is compared once.
// Room: velora/common. A record on a frame's collector; borrows the parts, which must stay as they
// are meanwhile. Raises what the comparisons raise, and remembers nothing of it.
//
// Components of one pack share their parts, and most pairs agree in place. What does not: packs
// have equal parts each, and a recipe can hold stored components that hold others, each of them
// twice. Parts found equal become one class, so a comparison goes down to each of them once. Of
// parts found different the answers are kept, as long as there are not too many.
#pragma once

#include "plinth/core/CArrayBlock.h"
#include "velora/common/api/IComponent.h"
#include "velora/common/core/Places.h"

namespace velora::common::core {

template <class Configuration>
class CComponent;

enum EOrder { kOrder_Equal, kOrder_Less, kOrder_Greater };

template <class Configuration>
class Comparison {
 public:
  using Component = CComponent<Configuration>;
  using Recipe = api::IRecipe<Configuration>;
  using Step = typename Recipe::IOperator;

  // The order of parts: IsEqualTo is asked first, then IsLessThan. `known` may be null; then
  // nothing is remembered, until stored components are met inside a recipe.
  template <class Part>
  static EOrder Compare(Part* a, Part* b, Comparison* known);
  static EOrder Compare(Recipe* a, Recipe* b, Comparison* known);

  // Sorts the components of an array. Each pair of parts is compared once, however many components
  // share them.
  using AsComponent = Component* (*)(void* element);
  static void Sort(plinth::v1::core::CArrayBlock* array, bool deduplicate, AsComponent asComponent);

 private:
  // Of components in components an answer is kept every so many levels: soon enough to come to one,
  // and seldom enough for a deep comparison to leave few.
  static constexpr int kLevels = 8;
  // A list of up to so many elements is compared as soon as an answer is found.
  static constexpr int kShort = 32;
  static constexpr int kMostAnswers = 1 << 17;

  // Asks, unless the answer is known.
  template <class Part, class Ask>
  EOrder Find(Part* a, Part* b, bool keeps, Ask ask);
  void Unite(const void* a, const void* b);
  int ClassOf(int number);
  static bool IsLong(api::ITags<Configuration>* tags);
  static bool IsLong(api::IProperties<Configuration>* properties);
  static bool IsLong(api::IConditions<Configuration>* conditions);
  static bool IsLong(Step*) { return true; }  // it may have any number of bytes
  static bool IsLong(api::IProperty<Configuration>*) { return false; }
  static EOrder CompareSteps(Step* a, Step* b, Comparison* known);

  Places<Configuration> equals;       // parts that are equal to another
  Block<Configuration, int> classes;  // of each, the number of another one of its class
  Places<Configuration> pairs;        // of different parts, up to kMostAnswers at a time
  Block<Configuration, EOrder> answers;
  int level = 0;  // of components in components; after a raise it starts from another one
};

}  // namespace velora::common::core
