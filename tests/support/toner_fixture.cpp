#include "tests/support/toner_fixture.h"

#include <stdlib.h>
#include <string.h>

namespace velora_test {

namespace {

namespace common = velora::common::api;
using C = fenn::Configuration;

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

}  // namespace

TonerTest::TonerTest()
    : factory(static_cast<fenn::_factory::IFactory*>(_velora_v2_CreateFactory_Posix_Lib())) {
  Keep(factory)->Init();
  helper = Keep(factory->CreateSerializerHelper());
  helper->Init();
  mappings = factory->CreatePrintModeMappings();
  mappings->Init();
}

TonerTest::~TonerTest() {
  while (!kept.empty()) {
    kept.back()->Destroy();
    kept.pop_back();
  }
  mappings->Destroy();
}

ISerializeable* TonerTest::Word(int type, int value) {
  ISerializeable* object = Keep(helper->CreateSerializeable(type));
  using namespace fenn;
  if (!Give<ITag, EPlatform, ESupplyFamily, EProductVariant, ETableType, EThemeType, EMediaType,
            EAxisType>(object, value) &&
      !Give<IProperty, common::EComponentVersion<C>, EChannel, common::EVariant<C>, EComponentRole,
            EDimensionality>(object, value) &&
      !Give<IConditions::IOperator, EPlatform, ESupplyFamily, EProductVariant, ETableType,
            EThemeType, EMediaType, EAxisType, EVelcaseVersion>(object, value)) {
    object->Init();
  }
  return object;
}

fenn::ITags* TonerTest::Tags(const char* words) {
  auto* array = Keep(factory->CreateArray_Tag());
  array->Init(5, CountWords(words));
  int index = 0;
  ForEachWord(words, [&](int type, int value) {
    array->Set(index++, dynamic_cast<fenn::ITag*>(Word(type, value)));
  });
  fenn::ITags* tags = Keep(factory->CreateTags());
  tags->Init(array);
  return tags;
}

fenn::IProperties* TonerTest::Properties(const char* words) {
  auto* array = Keep(factory->CreateArray_Property());
  array->Init(4, CountWords(words));
  int index = 0;
  ForEachWord(words, [&](int type, int value) {
    array->Set(index++, dynamic_cast<fenn::IProperty*>(Word(type, value)));
  });
  fenn::IProperties* properties = Keep(factory->CreateProperties());
  properties->Init(array);
  return properties;
}

fenn::ILinkedList<fenn::IConditions::IOperator>* TonerTest::Expression(const char* words) {
  auto* list = Keep(factory->CreateLinkedList_Conditions_Operator());
  list->Init(6);
  ForEachWord(words, [&](int type, int value) {
    list->Add(list->GetTail(), dynamic_cast<fenn::IConditions::IOperator*>(Word(type, value)));
  });
  return list;
}

fenn::IConditions* TonerTest::Conditions(const char* words) {
  fenn::IConditions* conditions = Keep(factory->CreateConditions());
  conditions->Init(Expression(words));
  return conditions;
}

fenn::IArray_uint8* TonerTest::Array(const Image& bytes) {
  fenn::IArray_uint8* array = Keep(factory->CreateArray_uint8());
  array->Init(static_cast<int>(bytes.size()));
  if (!bytes.empty()) {
    memcpy(array->GetElements(), bytes.data(), bytes.size());
  }
  return array;
}

TonerTest::Operator* TonerTest::Bytes(int type, const Image& bytes) {
  auto* data =
      dynamic_cast<fenn::IPacket::IOperator::IFromData*>(Keep(helper->CreateSerializeable(type)));
  data->Init(Properties(""), Array(bytes));
  return data;
}

TonerTest::Operator* TonerTest::Build(int type) { return dynamic_cast<Operator*>(Word(type, 0)); }

fenn::IRecipe* TonerTest::Recipe(Operators operators) {
  auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
  list->Init(7);
  for (Operator* step : operators) {
    list->Add(list->GetTail(), step);
  }
  fenn::IRecipe* recipe = Keep(factory->CreateRecipe());
  recipe->Init(list);
  return recipe;
}

fenn::IComponent* TonerTest::Reference(int type, const char* tags, const char* properties) {
  auto* component = dynamic_cast<fenn::IComponent*>(Keep(helper->CreateSerializeable(type)));
  component->Init(Tags(tags), Properties(properties));
  return component;
}

fenn::IComponent* TonerTest::Stored(int type, const Profile& profile, Operators recipe) {
  auto* component = dynamic_cast<fenn::IComponent*>(Keep(helper->CreateSerializeable(type)));
  component->Init(dynamic_cast<fenn::IProperty*>(Word(32, profile.version)),
                  Conditions(profile.conditions), Tags(profile.tags),
                  Properties(profile.properties), Recipe(recipe));
  return component;
}

fenn::IVelcase* TonerTest::Pack(int channel, Components components, int family) {
#define LIST(Name, List)                                       \
  auto* array##List = Keep(factory->CreateArray_##Name());     \
  array##List->Init(fenn::I##Name::kArrayType, 0);             \
  for (fenn::IComponent * component : components) {            \
    if (auto* one = dynamic_cast<fenn::I##Name*>(component)) { \
      auto* single = Keep(factory->CreateArray_##Name());      \
      single->Init(fenn::I##Name::kArrayType, 1);              \
      single->Set(0, one);                                     \
      array##List->Append(single);                             \
    }                                                          \
  }                                                            \
  auto* list##List = Keep(factory->Create##List());            \
  list##List->Init(array##List);
  FENN_KINDS(LIST)
#undef LIST
  fenn::IVelcase* pack = Keep(factory->CreateVelcase());
  pack->Init(fenn::EVelcaseSchema::Enum(1), fenn::ESupplyFamily::Enum(family), channel,
             fenn::EVelcaseVersion::Enum(3), helper, kReversed, listColorMaps, listGrayCurves,
             listChannelMaps, listPackets_ColorDCT, listPackets_ColorResidue, listPackets_MonoDCT,
             listPackets_MonoResidue, listPackets_MonoCBAT, listPackets_DeltaScalar,
             listPackets_Blob);
  return pack;
}

Image TonerTest::File(fenn::IVelcase* pack) {
  const int size = pack->GetSerializedSize();
  const unsigned char* bytes = pack->Serialize();
  return Image(bytes, bytes + size);
}

fenn::IVelcase* TonerTest::Read(const Image& file, int family) {
  fenn::IVelcase* pack = Keep(factory->CreateVelcase());
  // On a block of exact size, so that a sanitizer sees the first byte behind it.
  pack->Init(static_cast<int>(file.size()), Array(file)->GetElements(), helper, kReversed,
             fenn::ESupplyFamily::Enum(family), static_cast<unsigned int>(file.size()));
  return pack;
}

fenn::IVeltune* TonerTest::Veltune(Packs packs) {
  auto* array = Keep(factory->CreateArray_Velcase());
  array->Init(3, static_cast<int>(packs.size()));
  int index = 0;
  for (fenn::IVelcase* pack : packs) {
    array->Set(index++, pack);
  }
  auto* veltune = Keep(factory->CreateVeltune());
  veltune->Init(fenn::EPlatform::Enum(platform), fenn::EProductVariant::Enum(productVariant), array,
                mappings, ctr_table_type(table), ctr_theme_type(theme), ctr_media_type(media),
                ctr_axis_type(axis), &rawData, &processing);
  return veltune;
}

}  // namespace velora_test
