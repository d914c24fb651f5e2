// A factory for tests, and components and packs in a few words: what both pipelines' fixtures have.
// Room: tests. The fixture owns every object that it makes and ends them with the test, so a test
// may raise wherever it likes. What goes wrong while words are made into objects is raised.
//
// Words are type ids with values, "48=3 49=1"; ids without a value come alone, "60", "66=3 81".
#pragma once

#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "tests/support/init_rules.h"
#include "tests/support/runtime_fixture.h"
#include "velora/common/api/IFactory.h"

namespace velora_test {

using Image = std::vector<unsigned char>;

// The elements of a vector or of a list in braces. Unlike them it may be used where a raise passes.
template <class T>
class Elements {
 public:
  Elements(const std::vector<T>& all) : Elements(all.data(), all.size()) {}
  Elements(std::initializer_list<T> all) : Elements(all.begin(), all.size()) {}
  const T* begin() const { return first_; }
  const T* end() const { return first_ + count_; }
  int count() const { return static_cast<int>(count_); }

 private:
  Elements(const T* first, size_t count) : first_(first), count_(count) {}

  const T* first_;
  size_t count_;
};

// A pipeline names its Configuration, its Factory, the factory's entry, and the tags and properties
// of a component that says nothing else.
template <class Pipeline>
class PipelineTest : public RuntimeTest<typename Pipeline::Configuration> {
 protected:
  using C = typename Pipeline::Configuration;
  using Ids = velora::common::TypeIds<C>;
  using ITag = velora::common::api::ITag<C>;
  using ITags = velora::common::api::ITags<C>;
  using IProperty = velora::common::api::IProperty<C>;
  using IProperties = velora::common::api::IProperties<C>;
  using IConditions = velora::common::api::IConditions<C>;
  using Condition = typename IConditions::IOperator;
  using IRecipe = velora::common::api::IRecipe<C>;
  using IComponent = velora::common::api::IComponent<C>;
  using Velora = velora::common::api::ISerializeable<C>;
  using IVelcase = typename velora::common::Vocabulary<C>::IVelcase;
  using Operator = typename IRecipe::IOperator;
  using Operators = std::vector<Operator*>;
  using Components = std::vector<IComponent*>;
  using Packs = std::vector<IVelcase*>;
  static constexpr auto kReversed = ISerializer::ETargetEndianness::Reversed;
  // The image of an array of 17 bytes.
  static const Image& SomeBytes() {
    static const Image image = {1, 18, 17, 7, 7, 7, 7, 7, 7, 7,    7, 7,
                                7, 7,  7,  7, 7, 7, 7, 7, 0, 0x80, 0};
    return image;
  }

  PipelineTest() : factory(static_cast<typename Pipeline::Factory*>(Pipeline::CreateFactory())) {
    Keep(factory)->Init();
    helper = Keep(factory->CreateSerializerHelper());
    helper->Init();
    mappings = factory->CreatePrintModeMappings();
    mappings->Init();
  }
  ~PipelineTest() override {
    while (!kept.empty()) {
      kept.back()->Destroy();
      kept.pop_back();
    }
    mappings->Destroy();
  }

  template <class T>
  T* Keep(T* object) {
    kept.push_back(object);
    return object;
  }
  // A blank object by its type id, as the interface.
  template <class T>
  T* Make(int type) {
    return dynamic_cast<T*>(Keep(helper->CreateSerializeable(type)));
  }

  // One word: a blank object by its type id, brought to life with its value, if it has one.
  virtual ISerializeable* Word(int type, int value) = 0;
  ITags* Tags(const char* words) {
    return ListOf(Keep(factory->CreateTags()), Keep(factory->CreateArray_Tag()), Ids::kArray_Tag,
                  words);
  }
  IProperties* Properties(const char* words) {
    return ListOf(Keep(factory->CreateProperties()), Keep(factory->CreateArray_Property()),
                  Ids::kArray_Property, words);
  }
  ILinkedList<Condition>* Expression(const char* words) {
    auto* list = Keep(factory->CreateLinkedList_Conditions_Operator());
    list->Init(Ids::kArray_Conditions_Operator);
    ForEachWord(words, [&](int type, int value) {
      list->Add(list->GetTail(), dynamic_cast<Condition*>(Word(type, value)));
    });
    return list;
  }
  IConditions* Conditions(const char* words) {
    IConditions* conditions = Keep(factory->CreateConditions());
    conditions->Init(Expression(words));
    return conditions;
  }

  IArray_uint8* Array(const Image& bytes) {
    return Filled(Keep(factory->CreateArray_uint8()), bytes);
  }
  static Image Content(IArray_uint8* array) {
    return Image(array->GetElements(), array->GetElements() + array->GetCount());
  }
  // The image of one root object, and the object of an image.
  Image ImageOf(ISerializeable* object) {
    ISerializer* writer = Keep(factory->CreateSerializer());
    writer->Init(helper, kReversed);
    object->Serialize(writer, nullptr);
    return File(writer);
  }
  ISerializeable* FromImage(const Image& image, int type, void* context = nullptr) {
    ISerializer* reader = Keep(factory->CreateSerializer());
    reader->Init(helper, kReversed, static_cast<int>(image.size()), Array(image)->GetElements(),
                 false);
    return Keep(reader->Deserialize_Serializeable(type, context));
  }

  // An operator without bytes.
  Operator* Build(int type) { return dynamic_cast<Operator*>(Word(type, 0)); }
  IRecipe* Recipe(Elements<Operator*> operators) {
    auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
    list->Init(Ids::kArray_Recipe_Operator);
    for (Operator* step : operators) {
      list->Add(list->GetTail(), step);
    }
    IRecipe* recipe = Keep(factory->CreateRecipe());
    recipe->Init(list);
    return recipe;
  }

  // What a stored component says of itself.
  struct Profile {
    const char* tags = Pipeline::kTags;
    const char* properties = Pipeline::kProperties;
    const char* conditions = "60";
    int version = 1;
  };
  IComponent* Reference(int type, const char* tags, const char* properties) {
    auto* component = Make<IComponent>(type);
    component->Init(Tags(tags), Properties(properties));
    return component;
  }
  IComponent* Stored(int type, const Profile& profile, Elements<Operator*> recipe) {
    auto* component = Make<IComponent>(type);
    component->Init(dynamic_cast<IProperty*>(Word(Ids::kComponentVersion, profile.version)),
                    Conditions(profile.conditions), Tags(profile.tags),
                    Properties(profile.properties), Recipe(recipe));
    return component;
  }

  // The file of a pack, or of a writer; and a pack that was read from a file.
  static Image File(ISerializer* pack) {
    const int size = pack->GetSerializedSize();
    const unsigned char* bytes = pack->Serialize();
    return Image(bytes, bytes + size);
  }
  IVelcase* Read(const Image& file, int family = 0) {
    IVelcase* pack = Keep(factory->CreateVelcase());
    // On a block of exact size, so that a sanitizer sees the first byte behind it.
    pack->Init(static_cast<int>(file.size()), Array(file)->GetElements(), helper, kReversed,
               static_cast<typename velora::common::api::ESupplyFamily<C>::Enum>(family),
               static_cast<unsigned int>(file.size()));
    return pack;
  }
  // A file with bytes written over it: a place and the bytes, in hex, "4 0 6 40 0".
  static Image Changed(Image file, const char* change) {
    char* rest = nullptr;
    for (size_t at = strtoul(change, &rest, 16); *rest != '\0'; ++at) {
      file[at] = static_cast<unsigned char>(strtoul(rest, &rest, 16));
    }
    return file;
  }
  IArray<IVelcase>* ArrayOf(Elements<IVelcase*> packs) {
    IArray<IVelcase>* array = Keep(factory->CreateArray_Velcase());
    array->Init(3, packs.count());
    int index = 0;
    for (IVelcase* pack : packs) {
      array->Set(index++, pack);
    }
    return array;
  }

  // Expects that the helper makes an object for each type id in these ranges, and for no other; and
  // that one comes to life without a value in these, the bare ones, and in no other.
  struct TypeIds {
    int first, last;
  };
  static bool Within(Elements<TypeIds> ranges, int type) {
    return std::any_of(ranges.begin(), ranges.end(), [type](const TypeIds& ids) {
      return type >= ids.first && type <= ids.last;
    });
  }
  void ExpectMade(Elements<TypeIds> ranges, int lastArrayOfObjects, Elements<TypeIds> bare) {
    ISerializer* writer = Keep(factory->CreateSerializer());
    writer->Init(helper, kReversed);
    auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
    auto* properties = Keep(factory->CreateProperties());
    auto* veltune = Keep(factory->CreateVeltune());
    for (int type = -1; type <= 129; ++type) {
      SCOPED_TRACE(type);
      // Else an id without a class, or no id.
      const int code = Within(ranges, type) ? 0 : type == 3 ? 2 : 3000;
      ISerializeable* volatile made = nullptr;
      ASSERT_EQ(CodeOf([&] { made = Keep(helper->CreateSerializeable(type)); }), code);
      if (code == 0) {
        // Arrays of objects take theirs from Init.
        EXPECT_EQ(made->GetSerializeableType(), type >= 4 && type <= lastArrayOfObjects ? 0 : type);
        const auto refuses = [&](int refusal, auto call) { EXPECT_EQ(CodeOf(call), refusal); };
        ExpectInits<Velora, ITag, IProperty, ITags, IProperties, IConditions, IRecipe, IComponent,
                    Operator, typename IRecipe::IOperand, IArray_uint8, IArray_int32>(type);
        if (auto* step = dynamic_cast<Operator*>(made)) {
          const int code = type < 80 ? 2 : 3000;  // a component is found, not resolved
          refuses(code, [&] { step->Resolve(nullptr, properties, veltune); });
          refuses(code, [&] { step->Resolve(list, nullptr, veltune); });
          refuses(code, [&] { step->Resolve(list, properties, nullptr); });
        }
        refuses(3000, [&] { made->Init(type, nullptr, nullptr); });
        refuses(3000, [&] { made->Serialize(nullptr, nullptr); });
        refuses(3000, [&] { made->IsEqualTo(nullptr); });
        refuses(3000, [&] { made->IsLessThan(nullptr); });
        refuses(4000, [&] { made->IsEqualTo(made); });
        refuses(4000, [&] { made->IsLessThan(made); });
        refuses(4000, [&] { made->Serialize(writer, nullptr); });
        refuses(4000, [&] { made->CheckThis(); });
        refuses(Within(bare, type) ? 0 : 3, [&] { made->Init(); });
      }
    }
  }

  // A live object of the type id, with one holder; null for an array of objects.
  ISerializeable* Live(int type) {
    ISerializeable* made = Keep(helper->CreateSerializeable(type));
    const auto read = [this, made](int nested, const Image& image) {
      ISerializer* reader = Keep(factory->CreateSerializer());
      reader->Init(helper, kReversed, static_cast<int>(image.size()), Array(image)->GetElements(),
                   false);
      made->Init(nested, reader, nullptr);
    };
    if (auto* bytes = dynamic_cast<IArray_uint8*>(made)) {
      bytes->Init(2);
    } else if (auto* numbers = dynamic_cast<IArray_int32*>(made)) {
      numbers->Init(2);
    } else if (auto* conditions = dynamic_cast<IConditions*>(made)) {
      conditions->Init(Expression("60"));
    } else if (auto* recipe = dynamic_cast<IRecipe*>(made)) {
      recipe->Init(Recipe({})->GetLinkedList_Operators());
    } else if (auto* component = dynamic_cast<IComponent*>(made)) {
      component->Init(Tags(Pipeline::kTags), Properties(Pipeline::kProperties));
    } else if (type < 20) {
      return nullptr;
    } else if (type == Ids::kTags || type == Ids::kProperties || type >= 112) {
      // Out of an empty array, which is all that a list reads.
      const int array = type == Ids::kTags         ? Ids::kArray_Tag
                        : type == Ids::kProperties ? Ids::kArray_Property
                                                   : type - 104;
      read(type, {static_cast<unsigned char>(array), 1, 0, 0, 0x80, 0});
    } else if (CodeOf([&] { made->Init(); }) != 0 &&
               CodeOf([&] { read(type, SomeBytes()); }) != 0) {
      return Word(type, 1);
    }
    return made;
  }
  // Expects of a live object of the type id that it can be made a copy of no null and of nothing
  // blank, by whichever of these interfaces it has, and be read from nothing.
  template <class... Interfaces>
  void ExpectInits(int type) {
    const auto copy = [&](auto* sample) {
      using Own = decltype(sample);
      if (sample != nullptr) {
        ExpectInitFails(dynamic_cast<Own>(Live(type)), 3000, [](Own o) { o->Init(Own(nullptr)); });
        // The bases of elements copy nothing but callbacks, which a blank one has too.
        if constexpr ((std::is_same_v<Own, IComponent*> ||
                       !std::is_base_of_v<std::remove_pointer_t<Own>,
                                          IComponent>)&&!std::is_same_v<Own, ITag*> &&
                      !std::is_same_v<Own, IProperty*>) {
          auto* blank = dynamic_cast<Own>(Keep(helper->CreateSerializeable(type)));
          ExpectInitFails(dynamic_cast<Own>(Live(type)), 4000, [&](Own o) { o->Init(blank); });
        }
      }
    };
    if (ISerializeable* live = Live(type)) {
      (copy(dynamic_cast<Interfaces*>(live)), ...);
      ExpectInitFails(live, 3000, [&](auto* o) { o->Init(type, nullptr, nullptr); });
    }
  }
  // What a build leaves behind: brought to life with these arguments, or as a copy.
  template <class Data, class Interface, class... Arguments>
  Interface* ExpectData(Arguments... arguments) {
    const auto blank = [this]() -> Interface* {
      return Keep(new (Slots<C>().platform, false, true) Data);
    };
    Interface *data = blank(), *copy = blank();
    EXPECT_EQ(CodeOf([&] { data->CheckThis(); }), 4000);
    EXPECT_EQ(CodeOf([&] { data->Init(); }), 3);
    data->Init(arguments...);
    copy->Init(data);
    EXPECT_EQ(CodeOf([&] { copy->CheckThis(); }), 0);
    ExpectInitFails(copy, 3000, [](Interface* o) { o->Init(static_cast<Interface*>(nullptr)); });
    Interface* other = blank();
    copy->Init(data);
    ExpectInitFails(copy, 4000, [&](Interface* o) { o->Init(other); });
    return data;
  }

  typename Pipeline::Factory* factory;
  ISerializerHelper* helper;
  decltype(std::declval<typename Pipeline::Factory>().CreatePrintModeMappings()) mappings;

  // For a pipeline's own Word: gives a value to an object that holds one of these enumerations;
  // false when it is none of them.
  template <class Base, class... E>
  static bool Give(ISerializeable* object, int value) {
    const auto give = [value](auto* typed) {
      using Value = std::remove_pointer_t<decltype(typed)>;
      if (typed != nullptr) {
        typed->Init(static_cast<typename Value::Enumeration::Enum>(value));
      }
      return typed != nullptr;
    };
    return (give(dynamic_cast<velora::common::api::IValue<Base, E>*>(object)) || ...);
  }
  // For a pipeline's own Pack: fills blank ones with the components of their kind.
  template <class Kind, class List>
  static List* Fill(Elements<IComponent*> components, IArray<Kind>* array, List* list) {
    int count = 0;
    for (IComponent* component : components) {
      count += dynamic_cast<Kind*>(component) != nullptr;
    }
    array->Init(Kind::kArrayType, count);
    for (IComponent* component : components) {
      if (auto* one = dynamic_cast<Kind*>(component)) {
        array->Set(array->GetCount() - count--, one);
      }
    }
    list->Init(array);
    return list;
  }
  template <class Filling, class All>
  static Filling* Filled(Filling* array, const All& elements) {
    array->Init(static_cast<int>(elements.size()));
    if (!elements.empty()) {
      memcpy(array->GetElements(), elements.data(), elements.size() * sizeof elements[0]);
    }
    return array;
  }

 private:
  // Calls visit(type, value) for each word.
  template <class Visit>
  static void ForEachWord(const char* words, Visit visit) {
    for (char* rest = const_cast<char*>(words); *rest != '\0';) {
      const int type = static_cast<int>(strtol(rest, &rest, 10));
      const int value = *rest == '=' ? static_cast<int>(strtol(rest + 1, &rest, 10)) : 0;
      visit(type, value);
      rest += strspn(rest, " ");
    }
  }
  template <class List, class T>
  List* ListOf(List* list, IArray<T>* array, int type, const char* words) {
    int count = 0;
    ForEachWord(words, [&](int, int) { ++count; });
    array->Init(type, count);
    ForEachWord(words, [&](int word, int value) {
      array->Set(array->GetCount() - count--, dynamic_cast<T*>(Word(word, value)));
    });
    list->Init(array);
    return list;
  }

  std::vector<IObject*> kept;
};

}  // namespace velora_test
