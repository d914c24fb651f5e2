// A pack's objects, made from plain values, for any pipeline.
//
// Room: authoring, see pack_layer.h. All objects are the frame's. Failures are raised with the
// place.
#pragma once

#include "authoring/pack_layer.h"
#include "authoring/pack_pipeline.h"
#include "plinth/runtime/api/frame.h"

namespace velora::authoring {

template <class Layer>
class ObjectWriter : PackInterfaces<Layer> {
 public:
  using Of = PackInterfaces<Layer>;
  using Configuration = typename Layer::Configuration;
  using IFactory = typename Layer::IFactory;
  using ITags = typename Of::ITags;
  using IProperties = typename Of::IProperties;
  using IStep = typename Of::IStep;

  ObjectWriter(volatile raised::Frame& frame, WritePlace* place)
      : frame_(frame), factory_(Layer::Factory()), place_(place) {}

  raised::ISerializerHelper* MakeHelper() {
    raised::ISerializerHelper* helper = raised::Defer(frame_, factory_->CreateSerializerHelper());
    helper->Init();
    return helper;
  }

  // The list of all components of a kind.
  template <class Row>
  auto* MakeList(const Pack& pack) {
    using Kind = typename Row::Kind;
    auto* list = raised::Defer(frame_, (factory_->*Row::kCreateList)());
    auto* array = raised::Defer(frame_, (factory_->*Row::kCreateArray)());
    int count = 0;
    for (const Component& component : pack.components) count += component.kind == Kind::kType;
    array->Init(Kind::kArrayType, count);
    int index = 0;
    for (const Component& component : pack.components) {
      if (component.kind != Kind::kType) continue;
      place_->component = &component;
      Kind* made = raised::Defer(frame_, (factory_->*Row::kCreate)());
      made->Init(MakeElement<typename Of::IProperty>(Of::Ids::kComponentVersion, component.version),
                 MakeConditions(component.condition), MakeTags(component.tags),
                 MakeProperties(component.properties), MakeRecipe(component));
      array->Set(index++, made);
    }
    place_->component = nullptr;
    list->Init(array);
    return list;
  }

  IProperties* MakeProperties(const std::vector<Value>& properties) {
    return MakeElements(raised::Defer(frame_, factory_->CreateArray_Property()),
                        Of::Ids::kArray_Property,
                        raised::Defer(frame_, factory_->CreateProperties()), properties);
  }

  // An operator, which takes the properties of its component, or a reference.
  IStep* MakeStep(const Step& step, const std::vector<Value>& properties) {
    place_->step = &step;
    IStep* made = nullptr;
    Layer::ForEachStored([&](const char*, int type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (std::is_convertible_v<Interface*, IStep*>) {
        if (type != step.type) return;
        Interface* object = raised::Defer(frame_, (factory_->*slot)());
        made = object;
        if constexpr (Of::template kIsReference<Interface>) {
          object->Init(MakeTags(step.tags), MakeProperties(step.properties));
        } else {
          IProperties* own = MakeProperties(properties);
          auto* bytes = MakeBytes(step.bytes);
          if (!Layer::StoreBytes(object, own, bytes)) made = ReadStep(type, own, bytes);
        }
      }
    });
    if (made == nullptr) PLINTH_RAISE(raised::CException_Parameter_Invalid);
    place_->step = nullptr;
    return made;
  }

 private:
  // A tag, a property, or an element of a condition, by its type id.
  template <class Base>
  Base* MakeElement(int type, int number, const Bytes* bytes = nullptr) {
    place_->type = type;
    place_->number = number;
    Base* made = nullptr;
    Layer::ForEachStored([&](const char*, int row_type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (std::is_convertible_v<Interface*, Base*> &&
                    (kHasValue<Interface> || Of::template kHoldsBytes<Interface> ||
                     std::is_same_v<Interface, Base>)) {
        if (row_type != type) return;
        Interface* object = raised::Defer(frame_, (factory_->*slot)());
        if constexpr (kHasValue<Interface>) {
          object->Init(static_cast<typename Interface::Enumeration::Enum>(number));
        } else if constexpr (Of::template kHoldsBytes<Interface>) {
          object->Init(MakeBytes(*bytes));
        } else {
          object->Init();
        }
        made = object;
      }
    });
    if (made == nullptr) PLINTH_RAISE(raised::CException_Parameter_Invalid);
    place_->type = 0;
    return made;
  }

  template <class Base>
  Base* MakeElement(const Value& value) {
    return MakeElement<Base>(value.type, value.value, &value.bytes);
  }

  template <class Element, class List>
  List* MakeElements(raised::IArray<Element>* array, int array_type, List* list,
                     const std::vector<Value>& values) {
    array->Init(array_type, static_cast<int>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) {
      array->Set(static_cast<int>(i), MakeElement<Element>(values[i]));
    }
    list->Init(array);
    return list;
  }

  ITags* MakeTags(const std::vector<Value>& tags) {
    return MakeElements(raised::Defer(frame_, factory_->CreateArray_Tag()), Of::Ids::kArray_Tag,
                        raised::Defer(frame_, factory_->CreateTags()), tags);
  }

  typename Of::IConditions* MakeConditions(const Condition& condition) {
    auto* list = raised::Defer(frame_, factory_->CreateLinkedList_Conditions_Operator());
    list->Init(Of::Ids::kArray_Conditions_Operator);
    for (const Value& value : condition.postfix()) {
      list->Add(list->GetTail(), MakeElement<typename Of::ICondition>(value));
    }
    auto* conditions = raised::Defer(frame_, factory_->CreateConditions());
    conditions->Init(list);
    return conditions;
  }

  typename Of::IRecipe* MakeRecipe(const Component& component) {
    auto* list = raised::Defer(frame_, factory_->CreateLinkedList_Recipe_Operator());
    list->Init(Of::Ids::kArray_Recipe_Operator);
    for (const Step& step : component.recipe) {
      list->Add(list->GetTail(), MakeStep(step, component.properties));
    }
    auto* recipe = raised::Defer(frame_, factory_->CreateRecipe());
    recipe->Init(list);
    return recipe;
  }

  raised::IArray_uint8* MakeBytes(const Bytes& bytes) {
    auto* array = raised::Defer(frame_, factory_->CreateArray_uint8());
    if (bytes.empty()) {
      array->Init(0);
    } else {
      array->Init(static_cast<int>(bytes.size()), const_cast<unsigned char*>(bytes.data()), false);
    }
    return array;
  }

  // An operator as it comes out of an image: the way of one that takes no bytes from code.
  IStep* ReadStep(int type, IProperties* properties, raised::IArray_uint8* bytes) {
    raised::ISerializerHelper* helper = MakeHelper();
    raised::ISerializer* writer = raised::Defer(frame_, factory_->CreateSerializer());
    writer->Init(helper, kImageEndianness);
    writer->Serialization_Start(type);
    bytes->Serialize(writer, nullptr);
    writer->Serialization_End(type);
    const int size = writer->GetSerializedSize();
    raised::ISerializer* reader = raised::Defer(frame_, factory_->CreateSerializer());
    reader->Init(helper, kImageEndianness, size, writer->Serialize(), false);
    return dynamic_cast<IStep*>(
        raised::Defer(frame_, reader->Deserialize_Serializeable(type, properties)));
  }

  volatile raised::Frame& frame_;
  IFactory* factory_;
  WritePlace* place_;
};

}  // namespace velora::authoring
