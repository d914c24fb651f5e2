#include "tests/support/toner_fixture.h"

namespace velora_test {

template class PipelineTest<TonerPipeline>;

ISerializeable* TonerTest::Word(int type, int value) {
  ISerializeable* object = Keep(helper->CreateSerializeable(type));
  using namespace fenn;
  namespace common = velora::common::api;
  if (!Give<ITag, EPlatform, ESupplyFamily, EProductVariant, ETableType, EThemeType, EMediaType,
            EAxisType>(object, value) &&
      !Give<IProperty, common::EComponentVersion<C>, EChannel, common::EVariant<C>, EComponentRole,
            EDimensionality>(object, value) &&
      !Give<Condition, EPlatform, ESupplyFamily, EProductVariant, ETableType, EThemeType,
            EMediaType, EAxisType, EVelcaseVersion>(object, value)) {
    object->Init();
  }
  return object;
}

TonerTest::Operator* TonerTest::Bytes(int type, const Image& bytes) {
  auto* data = Make<fenn::IPacket::IOperator::IFromData>(type);
  data->Init(Properties(""), Array(bytes));
  return data;
}

fenn::IVelcase* TonerTest::Pack(int channel, Elements<IComponent*> components, int family) {
  fenn::IVelcase* pack = Keep(factory->CreateVelcase());
#define LIST(Name, List) \
  , Fill(components, Keep(factory->CreateArray_##Name()), Keep(factory->Create##List()))
  pack->Init(fenn::EVelcaseSchema::Enum(1), fenn::ESupplyFamily::Enum(family), channel,
             fenn::EVelcaseVersion::Enum(3), helper, kReversed FENN_KINDS(LIST));
#undef LIST
  return pack;
}

fenn::IVeltune* TonerTest::Veltune(Elements<IVelcase*> packs) {
  fenn::IVeltune* veltune = Keep(factory->CreateVeltune());
  veltune->Init(fenn::EPlatform::Enum(platform), fenn::EProductVariant::Enum(productVariant),
                ArrayOf(packs), mappings, ctr_table_type(table), ctr_theme_type(theme),
                ctr_media_type(media), ctr_axis_type(axis), &rawData, &processing);
  return veltune;
}

}  // namespace velora_test
