// A pack's objects, made from plain values and read back into them, for any pipeline.
//
// Room: authoring, for the files that instantiate it. Runs inside a frame of the library: objects
// go to the frame's collector, failures are raised, and nothing here holds an object with a
// destructor. What fills a C++ container stands in `noexcept` functions.
//
// A `Layer` names a pipeline: its Configuration, IFactory and IVelcase; ForEachRow(visit) calls
// visit(name, type id, factory slot) for each row of the factory's tables; StoreBytes and
// StoredBytes give an operator its bytes and take them.
#pragma once

#include <type_traits>

#include "authoring/pack_pipeline.h"
#include "velora/common/api/IFactory.h"

namespace velora::authoring {

namespace raised = plinth::v1::api;

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

template <class Layer>
struct PackInterfaces {
  using Configuration = typename Layer::Configuration;
  using Words = common::Vocabulary<Configuration>;
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
};

template <class Layer>
class ObjectWriter : PackInterfaces<Layer> {
 public:
  using Of = PackInterfaces<Layer>;
  using Configuration = typename Layer::Configuration;
  using IFactory = typename Layer::IFactory;
  using ITags = typename Of::ITags;
  using IProperties = typename Of::IProperties;

  ObjectWriter(volatile raised::Frame& frame, IFactory* factory, WritePlace* place)
      : frame_(frame), factory_(factory), place_(place) {}

  // The list of all components of a kind.
  template <class Kind, class List, class Slot>
  List* MakeList(List* list, common::api::IArray<Kind>* array, Slot slot, const Pack& pack) {
    raised::Defer(frame_, list);
    raised::Defer(frame_, array);
    int count = 0;
    for (const Component& component : pack.components) count += component.kind == Kind::kType;
    array->Init(Kind::kArrayType, count);
    int index = 0;
    for (const Component& component : pack.components) {
      if (component.kind != Kind::kType) continue;
      place_->component = &component;
      Kind* made = raised::Defer(frame_, (factory_->*slot)());
      const Value version{Of::Words::kComponentVersion, component.version};
      typename Of::IProperty* version_made = MakeElement<typename Of::IProperty>(version);
      made->Init(version_made, MakeConditions(component.condition), MakeTags(component.tags),
                 MakeProperties(component.properties), MakeRecipe(component));
      array->Set(index++, made);
    }
    place_->component = nullptr;
    list->Init(array);
    return list;
  }

 private:
  // A tag, a property, or an element of a condition, by its type id.
  template <class Base>
  Base* MakeElement(const Value& value) {
    place_->value = value;
    Base* made = nullptr;
    Layer::ForEachRow([&](const char*, int type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (std::is_convertible_v<Interface*, Base*> &&
                    (kHasValue<Interface> || std::is_same_v<Interface, Base>)) {
        if (type != value.type) return;
        Interface* object = raised::Defer(frame_, (factory_->*slot)());
        if constexpr (kHasValue<Interface>) {
          object->Init(static_cast<typename Interface::Enumeration::Enum>(value.value));
        } else {
          object->Init();
        }
        made = object;
      }
    });
    if (made == nullptr) PLINTH_RAISE(raised::CException_Parameter_Invalid);
    place_->value = {0};
    return made;
  }

  template <class Element, class List>
  List* MakeElements(common::api::IArray<Element>* array, int array_type, List* list,
                     const std::vector<Value>& values) {
    raised::Defer(frame_, array);
    raised::Defer(frame_, list);
    array->Init(array_type, static_cast<int>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) {
      array->Set(static_cast<int>(i), MakeElement<Element>(values[i]));
    }
    list->Init(array);
    return list;
  }

  ITags* MakeTags(const std::vector<Value>& tags) {
    return MakeElements(factory_->CreateArray_Tag(), Of::Words::kArray_Tag, factory_->CreateTags(),
                        tags);
  }

  IProperties* MakeProperties(const std::vector<Value>& properties) {
    return MakeElements(factory_->CreateArray_Property(), Of::Words::kArray_Property,
                        factory_->CreateProperties(), properties);
  }

  typename Of::IConditions* MakeConditions(const Condition& condition) {
    auto* list = raised::Defer(frame_, factory_->CreateLinkedList_Conditions_Operator());
    list->Init(Of::Words::kArray_ConditionsOperator);
    for (const Value& value : condition.postfix()) {
      list->Add(list->GetTail(), MakeElement<typename Of::ICondition>(value));
    }
    auto* conditions = raised::Defer(frame_, factory_->CreateConditions());
    conditions->Init(list);
    return conditions;
  }

  typename Of::IRecipe* MakeRecipe(const Component& component) {
    auto* list = raised::Defer(frame_, factory_->CreateLinkedList_Recipe_Operator());
    list->Init(Of::Words::kArray_RecipeOperator);
    for (const Step& step : component.recipe) {
      list->Add(list->GetTail(), MakeStep(step, component));
    }
    auto* recipe = raised::Defer(frame_, factory_->CreateRecipe());
    recipe->Init(list);
    return recipe;
  }

  typename Of::IStep* MakeStep(const Step& step, const Component& component) {
    place_->step = &step;
    typename Of::IStep* made = nullptr;
    Layer::ForEachRow([&](const char*, int type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (std::is_convertible_v<Interface*, typename Of::IStep*>) {
        if (type != step.type) return;
        Interface* object = raised::Defer(frame_, (factory_->*slot)());
        if constexpr (Of::template kIsReference<Interface>) {
          object->Init(MakeTags(step.tags), MakeProperties(step.properties));
        } else {
          Layer::StoreBytes(object, MakeProperties(component.properties), MakeBytes(step.bytes));
        }
        made = object;
      }
    });
    if (made == nullptr) PLINTH_RAISE(raised::CException_Parameter_Invalid);
    place_->step = nullptr;
    return made;
  }

  common::api::IArray_uint8* MakeBytes(const Bytes& bytes) {
    auto* array = raised::Defer(frame_, factory_->CreateArray_uint8());
    if (bytes.empty()) {
      array->Init(0);
    } else {
      array->Init(static_cast<int>(bytes.size()), const_cast<unsigned char*>(bytes.data()), false);
    }
    return array;
  }

  volatile raised::Frame& frame_;
  IFactory* factory_;
  WritePlace* place_;
};

template <class Layer>
class ObjectReader : PackInterfaces<Layer> {
 public:
  using Of = PackInterfaces<Layer>;

  explicit ObjectReader(Pack* pack) : pack_(pack) {}

  // Adds the components of a list to the pack.
  template <class Kind>
  void ReadList(common::api::IList<typename Layer::Configuration, Kind>* list) {
    auto* array = list->GetArray();
    for (int i = 0; i < array->GetCount(); ++i) {
      Kind* stored = array->Get(i);
      Component* component = AddComponent(Kind::kType);
      component->version = ValueOf(stored->GetComponentVersion());
      for (auto* at = stored->GetConditions()->GetLinkedList_Operators()->GetHead(); at != nullptr;
           at = at->next) {
        AddElement(at->GetValue());
      }
      TakeCondition(component);
      ReadElements(stored->GetTags(), &component->tags);
      ReadElements(stored->GetProperties(), &component->properties);
      for (auto* at = stored->GetRecipe()->GetLinkedList_Operators()->GetHead(); at != nullptr;
           at = at->next) {
        ReadStep(at->GetValue(), component);
      }
    }
  }

 private:
  template <class Element>
  static int ValueOf(Element* element) {
    const int type = element->GetSerializeableType();
    int value = 0;
    Layer::ForEachRow([&](const char*, int row_type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (std::is_convertible_v<Interface*, Element*> && kHasValue<Interface>) {
        if (row_type == type) value = dynamic_cast<Interface*>(element)->GetValue();
      }
    });
    return value;
  }

  template <class Element>
  void AddElement(Element* element) {
    const int type = element->GetSerializeableType();
    const int value = ValueOf(element);
    AddValue(&elements_, type, value);
  }

  template <class List>
  void ReadElements(List* list, std::vector<Value>* values) {
    auto* array = list->GetArray();
    for (int i = 0; i < array->GetCount(); ++i) AddElement(array->Get(i));
    TakeValues(values);
  }

  void ReadStep(typename Of::IStep* stored, Component* component) {
    const int type = stored->GetSerializeableType();
    Step* step = AddStep(component, type);
    if (auto* reference = dynamic_cast<typename Of::IComponent*>(stored)) {
      ReadElements(reference->GetTags(), &step->tags);
      ReadElements(reference->GetProperties(), &step->properties);
      return;
    }
    Layer::ForEachRow([&](const char*, int row_type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (Of::template kIsOperator<Interface>) {
        if (row_type != type) return;
        auto* bytes = Layer::StoredBytes(dynamic_cast<Interface*>(stored));
        if (bytes != nullptr) SetBytes(step, bytes->GetElements(), bytes->GetCount());
      }
    });
  }

  Component* AddComponent(int kind) noexcept {
    pack_->components.push_back({kind, 1, Condition(), {}, {}, {}});
    return &pack_->components.back();
  }
  static Step* AddStep(Component* component, int type) noexcept {
    component->recipe.push_back({type, {}, {}, {}});
    return &component->recipe.back();
  }
  static void SetBytes(Step* step, const unsigned char* bytes, int count) noexcept {
    step->bytes.assign(bytes, bytes + count);
  }
  static void AddValue(std::vector<Value>* values, int type, int value) noexcept {
    values->push_back({type, value});
  }
  void TakeValues(std::vector<Value>* values) noexcept {
    values->swap(elements_), elements_.clear();
  }
  void TakeCondition(Component* component) noexcept {
    component->condition = Condition(elements_);
    elements_.clear();
  }

  Pack* pack_;
  std::vector<Value> elements_;
};

}  // namespace velora::authoring
