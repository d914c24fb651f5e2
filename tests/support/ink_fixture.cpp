#include "tests/support/ink_fixture.h"

#include <stdlib.h>
#include <string.h>

#include "velora/velora.h"

namespace velora_test {

namespace {

namespace common = velora::common::api;
using C = wisp::Configuration;

// Calls visit(type, value) for each word.
template <class Visit>
void ForEachWord(const char* words, Visit visit) {
  for (char* rest = const_cast<char*>(words); *rest != '\0';) {
    const int type = static_cast<int>(strtol(rest, &rest, 10));
    const int value = *rest == '=' ? static_cast<int>(strtol(rest + 1, &rest, 10)) : 0;
    visit(type, value);
    rest += strspn(rest, " ");
  }
}

int CountWords(const char* words) {
  int count = 0;
  ForEachWord(words, [&count](int, int) { ++count; });
  return count;
}

// Gives a value to an object that holds one of the enumerations; false when it is none of them.
template <class Base, class... E>
bool Give(ISerializeable* object, int value) {
  const auto give = [value](auto* typed) {
    using Value = std::remove_pointer_t<decltype(typed)>;
    if (typed == nullptr) {
      return false;
    }
    typed->Init(static_cast<typename Value::Enumeration::Enum>(value));
    return true;
  };
  return (give(dynamic_cast<common::IValue<Base, E>*>(object)) || ...);
}

template <class Array, class Elements>
Array* Filled(Array* array, const Elements& elements) {
  array->Init(static_cast<int>(elements.size()));
  if (!elements.empty()) {
    memcpy(array->GetElements(), elements.data(), elements.size() * sizeof elements[0]);
  }
  return array;
}

}  // namespace

InkTest::InkTest()
    : factory(static_cast<wisp::_factory::IFactory*>(_velora_v1_CreateFactory_Posix_Lib())) {
  Keep(factory)->Init();
  helper = Keep(factory->CreateSerializerHelper());
  helper->Init();
  mappings = factory->CreatePrintModeMappings();
  mappings->Init();
}

InkTest::~InkTest() {
  while (!kept.empty()) {
    kept.back()->Destroy();
    kept.pop_back();
  }
  mappings->Destroy();
}

ISerializeable* InkTest::Word(int type, int value) {
  ISerializeable* object = Keep(helper->CreateSerializeable(type));
  using namespace wisp;
  if (auto* drops = dynamic_cast<properties::IDropsPerLevel*>(object)) {
    Image levels;
    for (int level = 1; level <= value; ++level) {
      levels.push_back(static_cast<unsigned char>(level));
    }
    drops->Init(Array(levels));
    return object;
  }
  if (!Give<ITag, EPlatform, ESupplyFamily, EProductVariant, EColorspace, EMediaSubtype, EMediaType,
            EPenSet, EQuality>(object, value) &&
      !Give<IProperty, common::EComponentVersion<C>, EChannel, common::EVariant<C>, EComponentRole,
            EAny<int>, EAny<unsigned int>, ELossyCompressionLevel, EResolution, EDeltaRange,
            ENodeCount>(object, value) &&
      !Give<IConditions::IOperator, EPlatform, ESupplyFamily, EProductVariant, EColorspace,
            EMediaSubtype, EMediaType, EPenSet, EQuality, EVelcaseVersion>(object, value)) {
    object->Init();
  }
  return object;
}

wisp::ITags* InkTest::Tags(const char* words) {
  auto* array = Keep(factory->CreateArray_Tag());
  array->Init(5, CountWords(words));
  int index = 0;
  ForEachWord(words, [&](int type, int value) {
    array->Set(index++, dynamic_cast<wisp::ITag*>(Word(type, value)));
  });
  wisp::ITags* tags = Keep(factory->CreateTags());
  tags->Init(array);
  return tags;
}

wisp::IProperties* InkTest::Properties(const char* words) {
  auto* array = Keep(factory->CreateArray_Property());
  array->Init(4, CountWords(words));
  int index = 0;
  ForEachWord(words, [&](int type, int value) {
    array->Set(index++, dynamic_cast<wisp::IProperty*>(Word(type, value)));
  });
  wisp::IProperties* properties = Keep(factory->CreateProperties());
  properties->Init(array);
  return properties;
}

wisp::ILinkedList<wisp::IConditions::IOperator>* InkTest::Expression(const char* words) {
  auto* list = Keep(factory->CreateLinkedList_Conditions_Operator());
  list->Init(6);
  ForEachWord(words, [&](int type, int value) {
    list->Add(list->GetTail(), dynamic_cast<wisp::IConditions::IOperator*>(Word(type, value)));
  });
  return list;
}

wisp::IConditions* InkTest::Conditions(const char* words) {
  wisp::IConditions* conditions = Keep(factory->CreateConditions());
  conditions->Init(Expression(words));
  return conditions;
}

wisp::IArray_uint8* InkTest::Array(const Image& bytes) {
  return Filled(Keep(factory->CreateArray_uint8()), bytes);
}

wisp::IArray_int32* InkTest::Array(const Nodes& nodes) {
  return Filled(Keep(factory->CreateArray_int32()), nodes);
}

Nodes InkTest::Content(wisp::IArray_int32* array) {
  return Nodes(array->GetElements(), array->GetElements() + array->GetCount());
}

Image InkTest::Content(wisp::IArray_uint8* array) {
  return Image(array->GetElements(), array->GetElements() + array->GetCount());
}

Image InkTest::ImageOf(ISerializeable* object) {
  wisp::ISerializer* writer = Keep(factory->CreateSerializer());
  writer->Init(helper, kReversed);
  object->Serialize(writer, nullptr);
  const int size = writer->GetSerializedSize();
  return Image(writer->Serialize(), writer->Serialize() + size);
}

ISerializeable* InkTest::FromImage(const Image& image, int type, void* context) {
  wisp::ISerializer* reader = Keep(factory->CreateSerializer());
  reader->Init(helper, kReversed, static_cast<int>(image.size()), Array(image)->GetElements(),
               false);
  return Keep(reader->Deserialize_Serializeable(type, context));
}

InkTest::Operator* InkTest::Bytes(int type, const Image& bytes, wisp::IProperties* properties) {
  wisp::ISerializer* writer = Keep(factory->CreateSerializer());
  writer->Init(helper, kReversed);
  writer->Serialization_Start(type);
  Array(bytes)->Serialize(writer, nullptr);
  writer->Serialization_End(type);
  const int size = writer->GetSerializedSize();
  return dynamic_cast<Operator*>(
      FromImage(Image(writer->Serialize(), writer->Serialize() + size), type, properties));
}

InkTest::Operator* InkTest::Build(int type) { return dynamic_cast<Operator*>(Word(type, 0)); }

wisp::IRecipe* InkTest::Recipe(const Operators& operators) {
  auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
  list->Init(7);
  for (Operator* step : operators) {
    list->Add(list->GetTail(), step);
  }
  wisp::IRecipe* recipe = Keep(factory->CreateRecipe());
  recipe->Init(list);
  return recipe;
}

wisp::IComponent* InkTest::Reference(int type, const char* tags, const char* properties) {
  auto* component = Make<wisp::IComponent>(type);
  component->Init(Tags(tags), Properties(properties));
  return component;
}

wisp::IComponent* InkTest::Stored(int type, const Profile& profile, const Operators& recipe) {
  auto* component = Make<wisp::IComponent>(type);
  component->Init(dynamic_cast<wisp::IProperty*>(Word(34, profile.version)),
                  Conditions(profile.conditions), Tags(profile.tags),
                  Properties(profile.properties), Recipe(recipe));
  return component;
}

wisp::IVelcase* InkTest::Pack(int channel, const Components& components, int family) {
#define LIST(Name, List)                                       \
  auto* array##List = Keep(factory->CreateArray_##Name());     \
  array##List->Init(wisp::I##Name::kArrayType, 0);             \
  for (wisp::IComponent * component : components) {            \
    if (auto* one = dynamic_cast<wisp::I##Name*>(component)) { \
      auto* single = Keep(factory->CreateArray_##Name());      \
      single->Init(wisp::I##Name::kArrayType, 1);              \
      single->Set(0, one);                                     \
      array##List->Append(single);                             \
    }                                                          \
  }                                                            \
  auto* list##List = Keep(factory->Create##List());            \
  list##List->Init(array##List);
  WISP_KINDS(LIST)
#undef LIST
  auto* pack = dynamic_cast<wisp::IVelcase*>(Keep(factory->CreateVelcase()));
  pack->Init(wisp::EVelcaseSchema::Enum(1), wisp::ESupplyFamily::Enum(family), channel,
             wisp::EVelcaseVersion::Enum(3), helper, kReversed, listColorMaps, listChannelMaps,
             listNodes_Neutrals, listNodes_Seeds, listNodes_Deltas, listGrayCurves,
             listAlternateNeutralChannels, listAlternateNeutrals);
  return pack;
}

Image InkTest::File(wisp::IVelcase* pack) {
  const int size = pack->GetSerializedSize();
  const unsigned char* bytes = pack->Serialize();
  return Image(bytes, bytes + size);
}

wisp::IVelcase* InkTest::Read(const Image& file, int family) {
  auto* pack = dynamic_cast<wisp::IVelcase*>(Keep(factory->CreateVelcase()));
  // On a block of exact size, so that a sanitizer sees the first byte behind it.
  pack->Init(static_cast<int>(file.size()), Array(file)->GetElements(), helper, kReversed,
             wisp::ESupplyFamily::Enum(family), static_cast<unsigned int>(file.size()));
  return pack;
}

wisp::IVeltune* InkTest::Veltune(const Packs& packs) {
  auto* array = Keep(factory->CreateArray_Velcase());
  array->Init(3, static_cast<int>(packs.size()));
  int index = 0;
  for (wisp::IVelcase* pack : packs) {
    array->Set(index++, pack);
  }
  auto* veltune = dynamic_cast<wisp::IVeltune*>(Keep(factory->CreateVeltune()));
  veltune->Init(wisp::EPlatform::Enum(platform), wisp::EProductVariant::Enum(productVariant), array,
                mappings, &mode);
  return veltune;
}

}  // namespace velora_test
