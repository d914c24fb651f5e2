// A pack's objects, read back into plain values, for any pipeline.
//
// Room: authoring, see pack_layer.h. Failures are raised, and what was read until then stays in the
// pack.
#pragma once

#include "authoring/pack.h"
#include "authoring/pack_layer.h"

namespace velora::authoring {

template <class Layer>
class ObjectReader : PackInterfaces<Layer> {
 public:
  using Of = PackInterfaces<Layer>;
  using Configuration = typename Layer::Configuration;

  explicit ObjectReader(Pack* pack) : pack_(pack) {}

  // Adds the components of a list to the pack.
  template <class Row>
  void ReadList(typename Layer::IVelcase* velcase) {
    using Kind = typename Row::Kind;
    auto* array = (velcase->*Row::kGetList)()->GetArray();
    for (int i = 0; i < array->GetCount(); ++i) {
      Kind* stored = array->Get(i);
      ReadComponent(stored);
    }
  }

  // Adds a stored component to the pack.
  void ReadComponent(typename Of::IComponent* stored) {
    Component* component = AddComponent(stored->GetSerializeableType());
    component->version = ValueOf(stored->GetComponentVersion());
    for (auto* at = stored->GetConditions()->GetLinkedList_Operators()->GetHead(); at != nullptr;
         at = at->next) {
      ReadElement(at->GetValue());
    }
    TakeCondition(component);
    ReadElements(stored->GetTags(), &component->tags);
    ReadElements(stored->GetProperties(), &component->properties);
    for (auto* at = stored->GetRecipe()->GetLinkedList_Operators()->GetHead(); at != nullptr;
         at = at->next) {
      ReadStep(at->GetValue(), component);
    }
  }

  // Adds a component that is a reference alone, with tags and properties and no more.
  void ReadReference(typename Of::IComponent* reference) {
    Component* component = AddComponent(reference->GetSerializeableType());
    ReadElements(reference->GetTags(), &component->tags);
    ReadElements(reference->GetProperties(), &component->properties);
  }

 private:
  // Calls visit with the object as the interface of its own row.
  template <class Base, class Visit>
  static void WithRow(Base* object, Visit visit) {
    const int type = object->GetSerializeableType();
    Layer::ForEachStored([&](const char*, int row_type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (std::is_convertible_v<Interface*, Base*>) {
        if (row_type == type) visit(dynamic_cast<Interface*>(object));
      }
    });
  }

  template <class Element>
  static int ValueOf(Element* element) {
    int value = 0;
    WithRow(element, [&](auto* object) {
      using Interface = std::remove_pointer_t<decltype(object)>;
      if constexpr (kHasValue<Interface>) value = static_cast<int>(object->GetValue());
    });
    return value;
  }

  template <class Element>
  void ReadElement(Element* element) {
    Value* value = AddValue(element->GetSerializeableType(), ValueOf(element));
    WithRow(element, [&](auto* object) {
      using Interface = std::remove_pointer_t<decltype(object)>;
      if constexpr (Of::template kHoldsBytes<Interface>) {
        TakeBytes(&value->bytes, Layer::StoredBytes(object));
      }
    });
  }

  template <class List>
  void ReadElements(List* list, std::vector<Value>* values) {
    auto* array = list->GetArray();
    for (int i = 0; i < array->GetCount(); ++i) ReadElement(array->Get(i));
    TakeValues(values);
  }

  void ReadStep(typename Of::IStep* stored, Component* component) {
    Step* step = AddStep(component, stored->GetSerializeableType());
    if (auto* reference = dynamic_cast<typename Of::IComponent*>(stored)) {
      ReadElements(reference->GetTags(), &step->tags);
      ReadElements(reference->GetProperties(), &step->properties);
      return;
    }
    WithRow(stored, [&](auto* object) {
      using Interface = std::remove_pointer_t<decltype(object)>;
      if constexpr (Of::template kIsOperator<Interface>) {
        TakeBytes(&step->bytes, Layer::StoredBytes(object));
      }
    });
  }

  Component* AddComponent(int kind) {
    Filled<Configuration>([&] { pack_->components.push_back({kind, 1, Condition(), {}, {}, {}}); });
    return &pack_->components.back();
  }
  static Step* AddStep(Component* component, int type) {
    Filled<Configuration>([&] { component->recipe.push_back({type, {}, {}, {}}); });
    return &component->recipe.back();
  }
  Value* AddValue(int type, int value) {
    Filled<Configuration>([&] { elements_.push_back({type, value}); });
    return &elements_.back();
  }
  static void TakeBytes(Bytes* bytes, raised::IArray_uint8* array) {
    if (array != nullptr) SetBytes<Configuration>(bytes, array->GetElements(), array->GetCount());
  }
  void TakeValues(std::vector<Value>* values) {
    values->swap(elements_);
    elements_.clear();
  }
  void TakeCondition(Component* component) {
    Filled<Configuration>([&] { component->condition = Condition(elements_); });
    elements_.clear();
  }

  Pack* pack_;
  std::vector<Value> elements_;
};

}  // namespace velora::authoring
