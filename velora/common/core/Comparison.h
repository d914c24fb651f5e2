// What a sort has found out about the parts of its components, so that each pair is compared once.
// Room: velora/common. A record on a frame's collector; borrows the parts, which must
// stay as they are meanwhile. Raises what the comparisons raise, and then remembers nothing of it.
//
// Components of one pack share their parts, and most pairs agree in place. What does not: packs
// have equal parts each, and a recipe can hold stored components that hold others, each of them
// twice. Parts found equal become one class, so a comparison goes down to each of them once. Of
// parts found different the last answers are kept.
#pragma once

#include "velora/common/api/IComponent.h"
#include "velora/common/core/Places.h"

namespace velora::common::core {

template <class Configuration>
class CComponent;

template <class Configuration>
class Comparison {
 public:
  using Component = CComponent<Configuration>;
  using Recipe = api::IRecipe<Configuration>;
  using Step = typename Recipe::IOperator;

  // The comparisons of parts. `known` may be null; then nothing is remembered, until stored
  // components are met inside a recipe.
  template <class Part>
  static bool AreEqual(Part* a, Part* b, Comparison* known);
  template <class Part>
  static bool IsLess(Part* a, Part* b, Comparison* known);
  static bool AreEqual(Recipe* a, Recipe* b, Comparison* known);
  static bool IsLess(Recipe* a, Recipe* b, Comparison* known);

 private:
  struct Answer {
    const void* a;
    const void* b;
    bool different;
    bool ordered;  // `less` is known
    bool less;
  };
  using Element = typename plinth::v1::api::ILinkedList<Step>::Element;

  // Every so many levels of components in components an answer is kept: enough to come to one
  // soon, and few enough for all to find room.
  static constexpr int kLevels = 16;
  // A list of up to so many elements is compared as soon as an answer is found.
  static constexpr int kShort = 32;
  static constexpr int kMostAnswers = 1 << 18;

  // Asks, unless the answer is known.
  template <class Part, class Ask>
  bool Equal(Part* a, Part* b, bool keeps, Ask ask);
  template <class Part, class Ask>
  bool Less(Part* a, Part* b, bool keeps, Ask ask);
  const Answer* FindAnswer(const void* a, const void* b);
  Answer& AnswerFor(const void* a, const void* b);
  int ClassOf(int number);

  static bool IsLong(api::ITags<Configuration>* tags);
  static bool IsLong(api::IProperties<Configuration>* properties);
  static bool IsLong(api::IConditions<Configuration>* conditions);
  static bool IsLong(Step*) { return true; }  // it may have any number of bytes
  static bool IsLong(api::IProperty<Configuration>*) { return false; }

  static const Component* AsComponent(Step* step);
  static bool AreStepsEqual(Step* a, Step* b, Comparison* known);
  // Whether the lists have the same length; then the elements of the first pair that differs.
  static bool FindDifference(Recipe* a, Recipe* b, Comparison* known, Element** left,
                             Element** right);

  Places<Configuration> equals;          // parts that are equal to another
  Block<Configuration, int> classes;     // of each, the number of another one of its class
  Block<Configuration, Answer> answers;  // none, or a power of two of them
  int kept = 0;                          // since there are so many
  int level = 0;  // of components in components; after a raise it starts from another one
};

}  // namespace velora::common::core
