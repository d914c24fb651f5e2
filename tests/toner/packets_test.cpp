// Packets: bytes through recipes, references, chains and rings; the cache of one print mode.
#include <string>

#include "tests/support/toner_fixture.h"

namespace velora_test {
namespace {

class PacketsTest : public TonerTest {
 protected:
  fenn::IComponent* Link(int type, const char* tags, Operators recipe) {
    return Stored(type, {tags, "35=1", "60", 1}, recipe);
  }
  fenn::IPacket* Find(fenn::IVeltune* veltune, int type, const char* tags) {
    fenn::IComponent* key = Reference(type, tags, "35=1");
#define LOCATE(Name, List)                                           \
  if (auto* one = dynamic_cast<fenn::I##Name*>(key)) {               \
    return dynamic_cast<fenn::IPacket*>(Keep(veltune->Locate(one))); \
  }
    FENN_KINDS(LOCATE)
#undef LOCATE
    return nullptr;
  }
  Image BytesOf(fenn::IPacket* packet, fenn::IVeltune* veltune) {
    fenn::IArray_uint8* array = Keep(packet->BuildArray_uint8_Packet(veltune));
    return Image(array->GetElements(), array->GetElements() + array->GetCount());
  }
};

TEST_F(PacketsTest, EachKindTakesItsOwnOperatorAndReference) {
  for (int kind = 0; kind < 7; ++kind) {
    const int type = 23 + kind, data = 93 + kind;
    const int otherType = 23 + (kind + 1) % 7, otherData = 93 + (kind + 1) % 7;
    const struct {
      const char* name;
      std::vector<Operator*> recipe;
      int code;
    } rows[] = {{"bytes", {Bytes(data, {1, 2})}, 0},
                {"no bytes", {Bytes(data, {})}, 0},
                {"reference", {Reference(type, "48=5", "35=1")}, 0},
                {"bytes of another kind", {Bytes(otherData, {1, 2})}, 4000},
                {"reference to another kind", {Reference(otherType, "48=5", "35=1")}, 4000},
                {"a build operator", {Build(86)}, 4000},
                {"nothing", {}, 4000},
                {"left over", {Bytes(data, {1}), Bytes(data, {2})}, 4000},
                {"reference to nowhere", {Reference(type, "48=6", "35=1")}, 1}};
    for (const auto& row : rows) {
      fenn::IComponent* component = Link(type, "48=1", {});
      for (Operator* step : row.recipe) {
        auto* operators = component->GetRecipe()->GetLinkedList_Operators();
        operators->Add(operators->GetTail(), step);
      }
      fenn::IVeltune* veltune =
          Veltune({Pack(127, {component, Link(type, "48=5", {Bytes(data, {1, 2})})})});
      auto* packet = dynamic_cast<fenn::IPacket*>(component);
      EXPECT_EQ(CodeOf([&] { BytesOf(packet, veltune); }), row.code) << type << ' ' << row.name;
      EXPECT_EQ(CodeOf([&] { packet->GetArray_uint8_Packet(); }), row.code == 0 ? 0 : 4000);
    }
  }
}

TEST_F(PacketsTest, ReferencesLeadThroughPacks) {
  fenn::IVeltune* veltune = Veltune({
      Pack(127, {Link(29, "48=1", {Reference(29, "48=2", "35=1")}),
                 Link(29, "48=3", {Bytes(99, {7, 8, 9})})}),
      Pack(0, {Link(29, "48=2", {Reference(29, "48=3", "35=1")})}),
  });
  EXPECT_EQ(BytesOf(Find(veltune, 29, "48=1"), veltune), (Image{7, 8, 9}));
}

TEST_F(PacketsTest, OnePrintModeIsKept) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {Link(29, "48=1", {Bytes(99, {7})})})});
  fenn::IPacket* packet = Find(veltune, 29, "48=1");
  fenn::IComponent::Callbacks record = {};
  std::string calls;
  record.context = &calls;
  record.build = [](void* context) {
    static_cast<std::string*>(context)->append("b");
    return 0;
  };
  record.buildDone = [](void* context) {
    static_cast<std::string*>(context)->append("B");
    return 0;
  };
  record.resolve = [](void* context) {
    static_cast<std::string*>(context)->append("r");
    return 0;
  };
  record.resolveDone = [](void* context) {
    static_cast<std::string*>(context)->append("R");
    return 0;
  };
  packet->SetCallbacks(&record);
  fenn::IArray_uint8* first = Keep(packet->BuildArray_uint8_Packet(veltune));
  EXPECT_EQ(calls, "brRB");
  EXPECT_EQ(Keep(packet->BuildArray_uint8_Packet(veltune)), first);
  EXPECT_EQ(calls, "brRB");
  veltune->Update(ctr_table_type(1), ctr_theme_type(1), ctr_media_type(0), ctr_axis_type(1),
                  &rawData, &processing);
  EXPECT_EQ(Keep(packet->BuildArray_uint8_Packet(veltune)), first);  // the recipe's own bytes
  EXPECT_EQ(calls, "brRBbrRB");
  EXPECT_EQ(packet->GetRecipe()->GetLinkedList_Operators()->GetCount(), 1);

  // A copy brings its bytes along, for the print mode that they were built for.
  fenn::IPacket_Blob* copy = Keep(factory->CreatePacket_Blob());
  copy->Init(static_cast<fenn::IComponent*>(packet));
  EXPECT_EQ(copy->GetArray_uint8_Packet(), first);
  Keep(copy->BuildArray_uint8_Packet(veltune));
  EXPECT_EQ(calls, "brRBbrRB");
  // The earlier bytes stay until a new build has finished.
  auto* operators = packet->GetRecipe()->GetLinkedList_Operators();
  operators->Add(operators->GetTail(), Build(86));
  veltune->Update(ctr_table_type(1), ctr_theme_type(2), ctr_media_type(0), ctr_axis_type(1),
                  &rawData, &processing);
  EXPECT_EQ(CodeOf([&] { packet->BuildArray_uint8_Packet(veltune); }), 4000);
  EXPECT_EQ(packet->GetArray_uint8_Packet(), first);
}

TEST_F(PacketsTest, StatesThatCannotBuild) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {})});
  const auto build = [&](fenn::IComponent* component) {
    return CodeOf(
        [&] { dynamic_cast<fenn::IPacket*>(component)->BuildArray_uint8_Packet(veltune); });
  };
  EXPECT_EQ(build(Reference(29, "48=1", "35=1")), 4000);
  EXPECT_EQ(build(dynamic_cast<fenn::IComponent*>(Keep(helper->CreateSerializeable(29)))), 4000);
  auto* stored = dynamic_cast<fenn::IPacket*>(Link(29, "48=1", {Bytes(99, {1})}));
  EXPECT_EQ(CodeOf([&] { stored->BuildArray_uint8_Packet(nullptr); }), 3000);

  // A resolved packet gives what it has; a null argument makes none.
  auto* packet = Keep(factory->CreatePacket_Blob());
  auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
  const auto resolve = [&](auto* operators, fenn::IProperties* properties, fenn::IVeltune* with) {
    return CodeOf([&] { packet->Init(operators, properties, with); });
  };
  list->Init(Recipe({Bytes(99, {5})})->GetLinkedList_Operators());
  EXPECT_EQ(resolve(list, nullptr, veltune), 3000);
  list->Init(Recipe({Bytes(99, {5})})->GetLinkedList_Operators());
  EXPECT_EQ(resolve(list, Properties(""), nullptr), 3000);
  EXPECT_EQ(resolve(static_cast<decltype(list)>(nullptr), Properties(""), veltune), 3000);
  EXPECT_EQ(resolve(list, Properties(""), veltune), 0);
  EXPECT_EQ(BytesOf(packet, veltune), Image{5});
}

TEST_F(PacketsTest, RingsAndLongChainsEnd) {
  const auto code = [this](int length, bool ring) {
    const auto tags = [](int i) {
      return "48=" + std::to_string(i % 13 + 1) + " 49=" + std::to_string(i / 13 % 10) +
             " 52=" + std::to_string(i / 130 + 1);
    };
    auto* array = Keep(factory->CreateArray_Packet_Blob());
    array->Init(17, length);
    for (int i = 0; i < length; ++i) {
      const std::string own = tags(i), next = tags((i + 1) % length);
      Operator* step = i + 1 < length || ring
                           ? static_cast<Operator*>(Reference(29, next.c_str(), "35=1"))
                           : Bytes(99, {1});
      array->Set(i, dynamic_cast<fenn::IPacket_Blob*>(Link(29, own.c_str(), {step})));
    }
    auto* list = Keep(factory->CreatePackets_Blob());
    list->Init(array);
    fenn::IVelcase* pack = Pack(127, {});
    pack->GetPackets_Blob()->Append(list);
    fenn::IVeltune* veltune = Veltune({pack});
    return CodeOf([&] { BytesOf(Find(veltune, 29, "48=1 49=0 52=1"), veltune); });
  };
  EXPECT_EQ(code(1, true), 1);
  EXPECT_EQ(code(2, true), 1);
  EXPECT_EQ(code(60, true), 1);
  EXPECT_EQ(code(60, false), 0);
  EXPECT_EQ(code(1000, false), 0);
  EXPECT_EQ(code(1001, false), 1);
}

TEST_F(PacketsTest, Operators) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {})});
  auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
  list->Init(7);
  auto* scalar = Keep(factory->CreatePacket_DeltaScalar_Operator_FromData());
  EXPECT_EQ(CodeOf([&] { scalar->GetArray_uint8_Packet(); }), 4000);
  EXPECT_EQ(CodeOf([&] { scalar->Init(nullptr, static_cast<unsigned char>(0)); }), 3000);
  EXPECT_EQ(CodeOf([&] { scalar->Init(); }), 3);
  scalar->Init(Properties(""), static_cast<unsigned char>(0));
  EXPECT_EQ(scalar->GetArray_uint8_Packet()->GetCount(), 1);
  EXPECT_EQ(scalar->GetArray_uint8_Packet()->Get(0), 0);
  EXPECT_EQ(scalar->Resolve(list, Properties(""), veltune), list);
  auto* copy = Keep(factory->CreatePacket_DeltaScalar_Operator_FromData());
  copy->Init(static_cast<fenn::IPacket::IOperator::IFromData*>(scalar));
  EXPECT_EQ(copy->GetArray_uint8_Packet(), scalar->GetArray_uint8_Packet());
  EXPECT_EQ(CodeOf([&] { copy->Init(Properties(""), static_cast<fenn::IArray_uint8*>(nullptr)); }),
            3000);

  for (int type : {86, 87, 88, 89, 91, 98}) {
    Operator* step = type == 98 ? scalar : Build(type);
    EXPECT_EQ(CodeOf([&] { step->Resolve(nullptr, Properties(""), veltune); }), 3000) << type;
    EXPECT_EQ(CodeOf([&] { step->Resolve(list, nullptr, veltune); }), 3000) << type;
    EXPECT_EQ(CodeOf([&] { step->Resolve(list, Properties(""), nullptr); }), 3000) << type;
    if (type != 98) {
      EXPECT_EQ(CodeOf([&] { step->Resolve(list, Properties(""), veltune); }), 4000) << type;
    }
  }
}

}  // namespace
}  // namespace velora_test
