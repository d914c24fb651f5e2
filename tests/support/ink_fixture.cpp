#include "tests/support/ink_fixture.h"

#include <string.h>

#include <numeric>
#include <string>

namespace velora_test {

template class PipelineTest<InkPipeline>;

ISerializeable* InkTest::Word(int type, int value) {
  ISerializeable* object = Keep(helper->CreateSerializeable(type));
  using namespace wisp;
  namespace common = velora::common::api;
  if (auto* drops = dynamic_cast<properties::IDropsPerLevel*>(object)) {
    Image levels(static_cast<size_t>(value));
    std::iota(levels.begin(), levels.end(), static_cast<unsigned char>(1));
    drops->Init(Array(levels));
  } else if (!Give<ITag, EPlatform, ESupplyFamily, EProductVariant, EColorspace, EMediaSubtype,
                   EMediaType, EPenSet, EQuality>(object, value) &&
             !Give<IProperty, common::EComponentVersion<C>, EChannel, common::EVariant<C>,
                   EComponentRole, EAny<int>, EAny<unsigned int>, ELossyCompressionLevel,
                   EResolution, EDeltaRange, ENodeCount>(object, value) &&
             !Give<Condition, EPlatform, ESupplyFamily, EProductVariant, EColorspace, EMediaSubtype,
                   EMediaType, EPenSet, EQuality, EVelcaseVersion>(object, value)) {
    object->Init();
  }
  return object;
}

IArray_int32* InkTest::Array(const Nodes& nodes) {
  return Filled(Keep(factory->CreateArray_int32()), nodes);
}

Nodes InkTest::Content(IArray_int32* array) {
  return Nodes(array->GetElements(), array->GetElements() + array->GetCount());
}

InkTest::Operator* InkTest::Bytes(int type, const Image& bytes, IProperties* properties) {
  ISerializer* writer = Keep(factory->CreateSerializer());
  writer->Init(helper, kReversed);
  writer->Serialization_Start(type);
  Array(bytes)->Serialize(writer, nullptr);
  writer->Serialization_End(type);
  return dynamic_cast<Operator*>(FromImage(File(writer), type, properties));
}

wisp::IComponent* InkTest::Gathered(int type, const Profile& profile, int part, Elements<int> inks,
                                    int gatherer) {
  Operators recipe;
  for (const int ink : inks) {
    recipe.push_back(Reference(part, "50=2", ("32=" + std::to_string(ink)).c_str()));
  }
  recipe.push_back(Build(gatherer));
  return Stored(type, profile, recipe);
}

Image InkTest::FlatChannel(int value) {
  constexpr unsigned char kZeros[] = {0xFF, 0xFF, 0xF1, 0xC7};  // 4208 and 568 deltas of 0
  Image bytes(137 + sizeof kZeros, static_cast<unsigned char>(value));
  memcpy(&bytes[137], kZeros, sizeof kZeros);
  return bytes;
}

wisp::IVelcase* InkTest::Pack(int channel, Elements<IComponent*> components, int family) {
  wisp::IVelcase* pack = Keep(factory->CreateVelcase());
#define LIST(Name, List) \
  , Fill(components, Keep(factory->CreateArray_##Name()), Keep(factory->Create##List()))
  pack->Init(wisp::EVelcaseSchema::Enum(1), wisp::ESupplyFamily::Enum(family), channel,
             wisp::EVelcaseVersion::Enum(3), helper, kReversed WISP_KINDS(LIST));
#undef LIST
  return pack;
}

wisp::IVeltune* InkTest::Veltune(Elements<IVelcase*> packs) {
  wisp::IVeltune* veltune = Keep(factory->CreateVeltune());
  veltune->Init(wisp::EPlatform::Enum(platform), wisp::EProductVariant::Enum(productVariant),
                ArrayOf(packs), mappings, &mode);
  return veltune;
}

}  // namespace velora_test
