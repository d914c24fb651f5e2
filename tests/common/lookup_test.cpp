// The choice of the one component that fits: filters, preferences, and the list's order at last.
#include <map>
#include <random>

#include "tests/support/toner_fixture.h"
#include "velora/common/core/CVeltune.inl"
#include "velora/fenn/core/CPrintModeParameters.h"

namespace velora_test {
namespace {

using velora::common::core::Create;

class LookupTest : public TonerTest {
 protected:
  LookupTest() {
    parameters = Veltune({Pack(127, {}, 4), Pack(0, {}, 4)})->GetPrintModeParameters();
  }
  fenn::IPackets_Blob* ListOf(const std::vector<fenn::IComponent*>& components) {
    auto* array = Keep(factory->CreateArray_Packet_Blob());
    array->Init(17, static_cast<int>(components.size()));
    for (size_t i = 0; i < components.size(); ++i) {
      array->Set(static_cast<int>(i), dynamic_cast<fenn::IPacket_Blob*>(components[i]));
    }
    auto* list = Keep(factory->CreatePackets_Blob());
    list->Init(array);
    return list;
  }

  fenn::IPrintModeParameters* parameters;
};

// The key is "48=3 49=1" with "35=1 36=2".
TEST_F(LookupTest, Choice) {
  const Profile plain = {"48=3", "35=1"};
  const struct {
    const char* name;
    std::vector<Profile> candidates;
    int result;  // the place of the one that is chosen, or minus the code
  } rows[] = {
      {"nothing", {}, -1},
      {"one", {plain}, 0},
      {"a condition filters", {{"48=3", "35=1", "66=2", 15}, plain}, 1},
      {"tags filter", {{"48=4", "35=1", "60", 15}, plain}, 1},
      {"properties filter", {{"48=3", "35=2", "60", 15}, plain}, 1},
      {"nothing fits", {{"48=4", "35=1"}, {"48=3", "35=2"}}, -1},
      {"the newest", {{"48=3", "35=1", "66=1 67=4 80", 2}, {"48=3", "35=1", "60", 3}}, 1},
      {"the most specific", {{"48=3 49=1", "35=1 36=2"}, {"48=3", "35=1", "66=1"}}, 1},
      {"operators count", {{"48=3", "35=1", "66=1"}, {"48=3", "35=1", "66=2 82"}}, 1},
      {"the default counts", {{"48=3", "35=1", "60 66=1 80"}, {"48=3", "35=1", "66=1 82 82"}}, 1},
      {"equal scores", {{"48=3", "35=1 36=2", "60 82 82"}, {"48=3 49=1", "35=1", "66=1 66=1"}}, 1},
      {"most tags", {{"48=3", "35=1 36=2"}, {"48=3 49=1", "35=1"}}, 1},
      {"most properties", {plain, {"48=3", "35=1 36=2"}}, 1},
      {"tags without a match", {{"48=3 48=5 50=1", "35=1"}, {"48=3 49=1", "35=1"}}, 1},
      {"the first", {plain, plain, plain}, 0},
      {"the first best",
       {{"48=3", "35=1"}, {"48=3", "35=1", "60", 2}, {"48=3", "35=1", "60", 2}},
       1},
      {"a condition that fails stops all", {plain, {"48=4", "35=2", "61=1"}}, -4000},
      {"a malformed condition too", {plain, {"48=4", "35=2", "80"}}, -4000},
  };
  fenn::IComponent* component = Reference(29, "48=3 49=1", "35=1 36=2");
  auto* key = dynamic_cast<fenn::IPacket_Blob*>(component);
  using velora::common::core::CVeltune;
  const auto locate = [this, key](fenn::IPackets_Blob* list) {
    return CVeltune<fenn::Configuration>::Locate_FromComponentList(key, list, parameters);
  };
  for (const auto& row : rows) {
    std::vector<fenn::IComponent*> candidates;
    for (const Profile& profile : row.candidates) {
      candidates.push_back(Stored(29, profile, {Bytes(99, {1})}));
    }
    fenn::IPackets_Blob* list = ListOf(candidates);
    fenn::IPacket_Blob* volatile found = nullptr;
    const int code = CodeOf([&] { found = locate(list); });
    int place = 0;
    while (found != nullptr && list->GetArray()->Get(place) != found) {
      ++place;
    }
    EXPECT_EQ(found != nullptr ? place : -code, row.result) << row.name;
    EXPECT_EQ(list->GetArray()->GetCount(), static_cast<int>(candidates.size())) << row.name;
  }

  // Version 0 comes from an image alone; one candidate is not scored.
  auto* version = dynamic_cast<fenn::IProperty*>(FromImage({32, 1, 0, 0, 0x80, 0}, 32));
  fenn::IComponent* sound = Stored(29, plain, {Bytes(99, {1})});
  fenn::IComponent* zero = Make<fenn::IComponent>(29);
  zero->Init(version, sound->GetConditions(), sound->GetTags(), sound->GetProperties(),
             sound->GetRecipe());
  const struct {
    std::vector<fenn::IComponent*> candidates;
    int code;
  } zeros[] = {
      {{zero}, 0}, {{zero, zero}, 1}, {{zero, sound}, 0}, {{component}, 1}  // it has no condition
  };
  for (const auto& row : zeros) {
    fenn::IPackets_Blob* list = ListOf(row.candidates);
    EXPECT_EQ(CodeOf([&] { locate(list); }), row.code) << row.candidates.size();
  }
  EXPECT_EQ(CodeOf([&] { locate(nullptr); }), 3000);
}

// A finder answers its first keys by asking each list, the others by an index.
TEST_F(LookupTest, ManyLookupsFindWhatSingleOnesFind) {
  using velora::common::core::CVeltune;
  using Finder = velora::common::core::Finder<fenn::Configuration>;
  std::mt19937 random(1);
  const auto words = [&random](std::initializer_list<int> types, int values, unsigned most) {
    std::string text;
    for (unsigned count = random() % (most + 1); count > 0; --count) {
      const int type = types.begin()[random() % types.size()];
      text += std::to_string(type) + '=' + std::to_string(1 + random() % values) + ' ';
    }
    return text;
  };
  std::map<int, int> places;
  for (int values : {2, 3, 5, 6}) {
    std::vector<fenn::ITags*> tags;
    std::vector<fenn::IProperties*> properties;
    for (int i = 0; i < 40; ++i) {
      tags.push_back(Tags(words({48, 49, 52}, values, 5).c_str()));
      properties.push_back(Properties(words({33, 36, 33}, values, 3).c_str()));
    }
    std::vector<fenn::IComponent*> components;
    for (int i = 0; i < 120; ++i) {
      const char* conditions[] = {"60", "66=1", "66=2", "66=1 66=1 80"};
      fenn::IComponent* model = Stored(
          29, {"48=1", "35=1", conditions[random() % 4], static_cast<int>(1 + random() % 2)}, {});
      components.push_back(Make<fenn::IComponent>(29));
      components.back()->Init(model->GetComponentVersion(), model->GetConditions(),
                              tags[random() % tags.size()], properties[random() % 40],
                              model->GetRecipe());
    }
    fenn::IPackets_Blob* list = ListOf(components);
    Finder finder;
    finder.Init(velora::common::core::ComponentsOf<fenn::Configuration, fenn::IPacket_Blob>(list),
                parameters, nullptr);
    for (int i = 0; i < 150; ++i) {
      fenn::IComponent* component = Make<fenn::IComponent>(29);
      // Some keys have lists of the components, some a word that no component has.
      component->Init(i % 3 == 0 ? tags[random() % 40]
                                 : Tags((words({48, 49, 52}, values + 1, 5) + "54=1").c_str()),
                      i % 4 == 0 ? properties[random() % 40]
                                 : Properties((words({33, 36}, values + 1, 2) + "34=1").c_str()));
      auto* key = dynamic_cast<fenn::IPacket_Blob*>(component);
      volatile int place = -1;
      const int code = CodeOf([&] { place = finder.Find(component); });
      fenn::IPacket_Blob* volatile found = nullptr;
      EXPECT_EQ(CodeOf([&] {
                  found = CVeltune<fenn::Configuration>::Locate_FromComponentList(key, list,
                                                                                  parameters);
                }),
                code);
      ASSERT_EQ(found, code == 0 ? list->GetArray()->Get(place) : nullptr) << values << ' ' << i;
      ++places[static_cast<int>(place)];
    }
  }
  EXPECT_GT(places.size(), 40u);
  EXPECT_GT(places[-1], 50);
}

TEST_F(LookupTest, WhatIsFoundIsACopy) {
  fenn::IComponent* stored = Stored(29, {"48=1", "35=1"}, {Bytes(99, {7})});
  fenn::IVeltune* veltune = Veltune({Pack(127, {stored})});
  auto* key = dynamic_cast<fenn::IPacket_Blob*>(Reference(29, "48=1", "35=1"));
  fenn::IComponent::Callbacks record = {};
  int calls = 0;
  record.context = &calls;
  record.locate = [](void* context) { return ++*static_cast<int*>(context); };
  key->SetCallbacks(&record);
  fenn::IPacket_Blob* found = Keep(veltune->LocatePacket_Blob(key));
  EXPECT_EQ(calls, 2);  // before and after
  EXPECT_NE(static_cast<void*>(found->GetThis_Concrete()),
            static_cast<void*>(stored->GetThis_Concrete()));
  EXPECT_EQ(found->GetRecipe(), stored->GetRecipe());
  Keep(found->BuildArray_uint8_Packet(veltune));
  EXPECT_EQ(found->GetArray_uint8_Packet()->Get(0), 7);
  EXPECT_EQ(CodeOf([&] { dynamic_cast<fenn::IPacket*>(stored)->GetArray_uint8_Packet(); }), 4000);
  EXPECT_EQ(CodeOf([&] { veltune->LocatePacket_Blob(nullptr); }), 3000);
  auto* other = dynamic_cast<fenn::IPacket_Blob*>(Reference(29, "48=2", "35=1"));
  EXPECT_EQ(CodeOf([&] { veltune->LocatePacket_Blob(other); }), 1);
}

TEST_F(LookupTest, PacksByChannel) {
  EXPECT_EQ(parameters->FindVelcase(0)->GetChannel(), 0);
  EXPECT_EQ(parameters->GetSupplyFamily(), 4);
  EXPECT_EQ(parameters->GetVelcaseVersion(127), 3);
  for (int channel : {13, 126, -1, 128}) {
    EXPECT_EQ(CodeOf([&] { parameters->FindVelcase(channel); }), 4000) << channel;
    EXPECT_EQ(CodeOf([&] { parameters->GetVelcaseVersion(channel); }), 4000) << channel;
  }
  fenn::IVelcase* twin = Pack(0, {});
  fenn::IPrintModeParameters* others = Veltune({twin, Pack(0, {})})->GetPrintModeParameters();
  EXPECT_EQ(others->FindVelcase(0), twin);
  EXPECT_EQ(CodeOf([&] { others->GetSupplyFamily(); }), 4000);
  using Parameters = velora::v2::fenn::core::CPrintModeParameters;
  ExpectData<Parameters, fenn::IPrintModeParameters>(parameters);
  fenn::IPrintModeParameters* copy = Keep(Create<C, Parameters>());
  copy->Init(parameters);
  EXPECT_EQ(copy->GetArray_Velcases(), parameters->GetArray_Velcases());
  EXPECT_EQ(copy->GetPrintModeMapping(), parameters->GetPrintModeMapping());
  EXPECT_EQ(CodeOf([&] { copy->Init(1, 0, nullptr); }), 3000);
  for (const int wrong : {0, 1, 2, 3, 4}) {
    copy->Init(parameters);
    ExpectInitFails(copy, 3000, [&](auto* p) {
      p->Init(fenn::EPlatform::Enum(wrong == 0 ? 0 : 1),
              fenn::EProductVariant::Enum(wrong == 1 ? 6 : 0), wrong == 2 ? nullptr : mappings,
              wrong == 3 ? nullptr : parameters->GetArray_Velcases(),
              ctr_table_type(wrong == 4 ? 9 : 0), ctr_theme_type(0), ctr_media_type(0),
              ctr_axis_type(0));
    });
  }
  copy->Init(1, 0, parameters->GetArray_Velcases());
  EXPECT_EQ(CodeOf([&] { copy->GetPrintModeMapping(); }), 4000) << "of no print mode";
}

}  // namespace
}  // namespace velora_test
