// Packets: bytes through recipes, references, chains and rings; the cache of one print mode.
#include <pthread.h>

#include <functional>
#include <string>

#include "tests/support/process_heap.h"
#include "tests/support/toner_fixture.h"

namespace velora_test {
namespace {

class PacketsTest : public TonerTest {
 protected:
  fenn::IComponent* Link(int type, const char* tags, Elements<Operator*> recipe) {
    return Stored(type, {tags, "35=1"}, recipe);
  }
  fenn::IPacket* FindBlob(fenn::IVeltune* veltune, const char* tags) {
    return Keep(veltune->Locate(dynamic_cast<fenn::IPacket_Blob*>(Reference(29, tags, "35=1"))));
  }
  fenn::IArray_uint8* Built(fenn::IPacket* packet, fenn::IVeltune* veltune) {
    return Keep(packet->BuildArray_uint8_Packet(veltune));
  }
};

TEST_F(PacketsTest, EachKindTakesItsOwnOperatorAndReference) {
  for (int kind = 0; kind < 7; ++kind) {
    const int type = 23 + kind, data = 93 + kind, other = (kind + 1) % 7;
    const struct {
      const char* name;
      Operators recipe;
      int code;
    } rows[] = {{"bytes", {Bytes(data, {1, 2})}, 0},
                {"no bytes", {Bytes(data, {})}, 0},
                {"reference", {Reference(type, "48=5", "35=1")}, 0},
                {"bytes of another kind", {Bytes(93 + other, {1, 2})}, 4000},
                {"reference to another kind", {Reference(23 + other, "48=5", "35=1")}, 4000},
                {"a build operator", {Build(86)}, 4000},
                {"nothing", {}, 4000},
                {"left over", {Bytes(data, {1}), Bytes(data, {2})}, 4000},
                {"reference to nowhere", {Reference(type, "48=6", "35=1")}, 1}};
    for (const auto& row : rows) {
      fenn::IComponent* component = Link(type, "48=1", row.recipe);
      fenn::IVeltune* veltune =
          Veltune({Pack(127, {component, Link(type, "48=5", {Bytes(data, {1, 2})})})});
      auto* packet = dynamic_cast<fenn::IPacket*>(component);
      EXPECT_EQ(CodeOf([&] { Built(packet, veltune); }), row.code) << type << ' ' << row.name;
      EXPECT_EQ(CodeOf([&] { packet->GetArray_uint8_Packet(); }), row.code == 0 ? 0 : 4000);
    }
  }
}

TEST_F(PacketsTest, OnePrintModeIsKept) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {Link(29, "48=1", {Bytes(99, {7})})})});
  fenn::IPacket* packet = FindBlob(veltune, "48=1");
  fenn::IComponent::Callbacks record = {};
  std::string calls;
  record.context = &calls;
  record.build = [](void* to) { return static_cast<std::string*>(to)->append("b"), 0; };
  record.buildDone = [](void* to) { return static_cast<std::string*>(to)->append("B"), 0; };
  record.resolve = [](void* to) { return static_cast<std::string*>(to)->append("r"), 0; };
  record.resolveDone = [](void* to) { return static_cast<std::string*>(to)->append("R"), 0; };
  packet->SetCallbacks(&record);
  const auto change = [&](int newTheme) {
    veltune->Update(ctr_table_type(table), ctr_theme_type(newTheme), ctr_media_type(media),
                    ctr_axis_type(axis), &rawData, &processing);
  };
  fenn::IArray_uint8* first = Built(packet, veltune);
  EXPECT_EQ(calls, "brRB");
  EXPECT_EQ(Built(packet, veltune), first);
  EXPECT_EQ(calls, "brRB");
  change(1);
  EXPECT_EQ(Built(packet, veltune), first);  // the recipe's own bytes
  EXPECT_EQ(calls, "brRBbrRB");
  EXPECT_EQ(packet->GetRecipe()->GetLinkedList_Operators()->GetCount(), 1);

  // A copy brings its bytes along, for the print mode that they were built for.
  fenn::IPacket_Blob* copy = Keep(factory->CreatePacket_Blob());
  copy->Init(static_cast<fenn::IComponent*>(packet));
  EXPECT_EQ(copy->GetArray_uint8_Packet(), first);
  Built(copy, veltune);
  EXPECT_EQ(calls, "brRBbrRB");
  // The earlier bytes stay until a new build has finished.
  auto* operators = packet->GetRecipe()->GetLinkedList_Operators();
  operators->Add(operators->GetTail(), Build(86));
  change(2);
  EXPECT_EQ(CodeOf([&] { packet->BuildArray_uint8_Packet(veltune); }), 4000);
  EXPECT_EQ(packet->GetArray_uint8_Packet(), first);
}

TEST_F(PacketsTest, StatesThatCannotBuild) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {})});
  auto* reference = dynamic_cast<fenn::IPacket*>(Reference(29, "48=1", "35=1"));
  auto* stored = dynamic_cast<fenn::IPacket*>(Link(29, "48=1", {Bytes(99, {1})}));
  auto* packet = Keep(factory->CreatePacket_Blob());
  EXPECT_EQ(CodeOf([&] { reference->BuildArray_uint8_Packet(veltune); }), 4000);
  EXPECT_EQ(CodeOf([&] { packet->BuildArray_uint8_Packet(veltune); }), 4000);
  EXPECT_EQ(CodeOf([&] { stored->BuildArray_uint8_Packet(nullptr); }), 3000);

  // A resolved packet gives what it has; a null argument makes none.
  auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
  const auto resolve = [&](auto* operators, fenn::IProperties* properties, fenn::IVeltune* with) {
    list->Init(Recipe({Bytes(99, {5})})->GetLinkedList_Operators());
    return CodeOf([&] { packet->Init(operators, properties, with); });
  };
  EXPECT_EQ(resolve(list, nullptr, veltune), 3000);
  EXPECT_EQ(resolve(list, Properties(""), nullptr), 3000);
  EXPECT_EQ(resolve(static_cast<decltype(list)>(nullptr), Properties(""), veltune), 3000);
  EXPECT_EQ(resolve(list, Properties(""), veltune), 0);
  EXPECT_EQ(Content(Built(packet, veltune)), Image{5});
}

void OnASmallStack(std::function<void()> body) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  const size_t kib = CanWatchProcessHeap() ? 512 : 8192;  // a sanitizer's frames are larger
  pthread_attr_setstacksize(&attributes, kib << 10);
  const auto run = [](void* given) -> void* {
    (*static_cast<std::function<void()>*>(given))();
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &body), 0);
  pthread_join(thread, nullptr);
}

TEST_F(PacketsTest, RingsAndLongChainsEnd) {
  const auto code = [this](int length, bool ring) {
    const auto tags = [](int i) {
      return "48=" + std::to_string(i % 13 + 1) + " 49=" + std::to_string(i / 13 % 10) +
             " 52=" + std::to_string(i / 130 + 1);
    };
    Components links;
    for (int i = 0; i < length; ++i) {
      Operator* step = Bytes(99, {1});
      if (i + 1 < length || ring) {
        step = Reference(29, tags((i + 1) % length).c_str(), "35=1");
      }
      links.push_back(Link(29, tags(i).c_str(), {step}));
    }
    fenn::IVeltune* veltune = Veltune({Pack(127, links), Pack(0, {})});
    const int whole = CodeOf([&] { Built(FindBlob(veltune, "48=1 49=0 52=1"), veltune); });
    // Behind a failure as behind a build, the chain from its second link on.
    const std::string second = tags(1);
    EXPECT_EQ(CodeOf([&] { Built(FindBlob(veltune, second.c_str()), veltune); }), ring ? 1 : 0);
    return whole;
  };
  OnASmallStack([&] {
    ASSERT_TRUE(runtime.record.threadContextManager->RegisterThread(runtime.record.bootManager));
    EXPECT_EQ(code(1, true), 1);
    EXPECT_EQ(code(60, true), 1);
    EXPECT_EQ(code(1000, false), 0);
    EXPECT_EQ(code(1001, false), 1);
    CleanupThread(Slots<FlatConfiguration>());
  });
}

TEST_F(PacketsTest, OperatorsResolveWithAllTheirArguments) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {})});
  auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
  list->Init(7);
  auto* scalar = Keep(factory->CreatePacket_DeltaScalar_Operator_FromData());
  EXPECT_EQ(CodeOf([&] { scalar->Init(nullptr, static_cast<unsigned char>(0)); }), 3000);
  scalar->Init(Properties(""), static_cast<unsigned char>(9));
  EXPECT_EQ(Content(scalar->GetArray_uint8_Packet()), Image{9});
  for (int type : {86, 87, 88, 89, 91, 98}) {
    Operator* step = type == 98 ? scalar : Build(type);
    EXPECT_EQ(CodeOf([&] { step->Resolve(list, Properties(""), veltune); }), type == 98 ? 0 : 4000);
  }
}

}  // namespace
}  // namespace velora_test
