#include "fuzz/support/model.h"

#include <algorithm>

#include "fuzz/support/promise.h"
#include "velora/wisp/api/door.h"

namespace fuzz {
namespace {

namespace ink = velora::v1::wisp::api;
using plinth::v1::api::ISerializer;

// The root lists of a pack in their order: kind of component, type ids of list and array.
struct List {
  int kind, type, array;
};
constexpr List kTonerLists[] = {{20, 112, 8},  {21, 113, 9},  {22, 114, 10}, {23, 115, 11},
                                {24, 116, 12}, {25, 117, 13}, {26, 118, 14}, {27, 119, 15},
                                {28, 120, 16}, {29, 121, 17}};
#define INK_LIST(Name, List) \
  {ink::I##Name::kType, ink::I##Name::kListType, ink::I##Name::kArrayType},
constexpr List kInkLists[] = {WISP_KINDS(INK_LIST)};
#undef INK_LIST

constexpr int kDropsPerLevel = 35;  // of ink: the one word that is an array of bytes

// Writes a model's parts as entries. A failure leaves it by a jump: no object of it needs an end.
class Writer {
 public:
  Writer(const Model& model, ISerializer* to) : model_(model), to_(to) {}

  void WriteAll() {
    if (model_.ink) {
      WriteLists(kInkLists, std::size(kInkLists));
    } else {
      WriteLists(kTonerLists, std::size(kTonerLists));
    }
  }

  void WriteComponent(const Component& component) {
    to_->Serialization_Start(component.kind);
    to_->Serialize_uint28(component.state);
    WriteWords(107, 5, component.tags);
    WriteWords(model_.ink ? 106 : 108, 4, component.properties);
    if (component.state != 1) {
      WriteWord({model_.ink ? 34 : 32, component.version});
      WriteWords(model_.ink ? 108 : 106, 6, component.condition);
      to_->Serialization_Start(109);
      to_->Serialization_Start(7);
      to_->Serialize_uint28(static_cast<int>(component.recipe.size()));
      for (const Step& step : component.recipe) {
        WriteStep(component, step);
      }
      to_->Serialization_End(7);
      to_->Serialization_End(109);
    }
    to_->Serialization_End(component.kind);
  }

 private:
  void WriteLists(const List* lists, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      to_->Serialization_Start(lists[i].type);
      to_->Serialization_Start(lists[i].array);
      int members = 0;
      for (const Component& component : model_.components) {
        members += component.list == lists[i].kind ? 1 : 0;
      }
      to_->Serialize_uint28(members);
      for (const Component& component : model_.components) {
        if (component.list == lists[i].kind) {
          WriteComponent(component);
        }
      }
      to_->Serialization_End(lists[i].array);
      to_->Serialization_End(lists[i].type);
    }
  }

  void WriteWord(const Word& word) {
    to_->Serialization_Start(word.type);
    if (model_.ink && word.type == kDropsPerLevel) {
      static const Bytes levels(31, 3);
      WriteBytes(levels.data(), word.value & 31);
    } else if (word.type < 80) {  // the operators of conditions are bare
      if (word.type != 60) {
        to_->Serialize_uint28(word.value);
      }
    }
    to_->Serialization_End(word.type);
  }

  void WriteWords(int type, int array, const std::vector<Word>& words) {
    to_->Serialization_Start(type);
    to_->Serialization_Start(array);
    to_->Serialize_uint28(static_cast<int>(words.size()));
    for (const Word& word : words) {
      WriteWord(word);
    }
    to_->Serialization_End(array);
    to_->Serialization_End(type);
  }

  void WriteBytes(const unsigned char* bytes, int size) {
    to_->Serialization_Start(1);
    to_->Serialize_uint28(size);
    if (size > 0) {
      to_->Serialize_Array_uint8(size, const_cast<unsigned char*>(bytes), 0, size);
    }
    to_->Serialization_End(1);
  }

  void WriteStep(const Component& owner, const Step& step) {
    if (step.form == Step::kStored) {
      // Only what comes before its owner, so that no component contains itself.
      static const Component blank = {29, 0, 1, 1, {}, {}, {}, {}};
      const Component& stored = model_.components[static_cast<size_t>(step.component)];
      WriteComponent(&stored < &owner ? stored : blank);
      return;
    }
    to_->Serialization_Start(step.type);
    if (step.form == Step::kBytes) {
      WriteBytes(step.bytes.data(), static_cast<int>(step.bytes.size()));
    } else if (step.form == Step::kReference) {
      to_->Serialize_uint28(1);
      WriteWords(107, 5, step.tags);
      WriteWords(model_.ink ? 106 : 108, 4, step.properties);
    }
    to_->Serialization_End(step.type);
  }

  const Model& model_;
  ISerializer* to_;
};

// What `write` puts into a serializer, as an image; empty where it raised.
template <class Write>
Bytes Written(const Model& model, const Write& write) {
  ink::_factory::IFactory* factory = ink::Open();
  Expect(factory != nullptr, "the ink door does not open");
  ISerializer* to = nullptr;
  ink::ISerializerHelper* helper = nullptr;
  const unsigned char* bytes = nullptr;
  int size = 0;
  Writer* writer = nullptr;
  const int code = ink::Try([&] {
    helper = factory->CreateSerializerHelper();
    helper->Init();
    to = factory->CreateSerializer();
    to->Init(helper, ISerializer::ETargetEndianness::Reversed);
    writer = new Writer(model, to);
    write(*writer);
    size = to->GetSerializedSize();
    bytes = to->Serialize();
  });
  Bytes image;
  if (code == 0) {
    image.assign(bytes, bytes + size);
  }
  delete writer;
  to->Destroy();
  helper->Destroy();
  factory->Destroy();
  ink::Close();
  return image;
}

Step Bare(int type) { return {type, Step::kBare, {}, {}, {}, 0}; }
Step Stored(int type, const Bytes& bytes) { return {type, Step::kBytes, bytes, {}, {}, 0}; }
Step Reference(int type, Word tag, Word property) {
  return {type, Step::kReference, {}, {tag}, {property}, 0};
}

void Add(Model* model, int kind, std::vector<Word> tags, std::vector<Word> properties,
         std::vector<Step> recipe) {
  model->components.push_back({kind, kind, 2, 1, {{60, 0}}, tags, properties, recipe});
}

template <class Element>
Element* Chosen(std::vector<Element>* from, Input* input) {
  const int at = input->Byte();
  return from->empty() ? nullptr : &(*from)[static_cast<size_t>(at) % from->size()];
}

}  // namespace

Model SoundToner() {
  Model model = {false, {}};
  const Word tag = {48, 1}, role = {35, 1}, part = {35, 2};
  Add(&model, 23, {tag}, {part}, {Stored(93, {100, 1, 2, 3})});
  Add(&model, 24, {tag}, {part}, {Stored(94, {5, 0, 0x85, 1})});
  Add(&model, 25, {tag}, {part}, {Stored(95, {0xEA, 0x75, 0xF1})});
  Add(&model, 26, {tag}, {part}, {Stored(96, {0x75, 0xB7})});
  Add(&model, 27, {tag}, {part}, {Stored(97, Bytes(128, 0x11))});
  Add(&model, 28, {tag}, {part}, {Stored(98, {7})});
  Add(&model, 29, {tag, {51, 3}}, {role}, {Stored(99, {1, 2, 3, 4, 5})});
  std::vector<Step> planes;
  for (const int channel : {13, 21, 29, 0}) {
    Add(&model, 22, {tag}, {{33, channel}},
        {Reference(23, tag, part), Reference(24, tag, part), Reference(28, tag, part), Bare(91)});
    planes.push_back(Reference(22, tag, {33, channel}));
  }
  Add(&model, 21, {tag}, {role},
      {Reference(25, tag, part), Reference(26, tag, part), Reference(27, tag, part),
       Reference(28, tag, part), Bare(89)});
  planes.push_back(Bare(86));
  Add(&model, 20, {tag, {51, 2}}, {role}, planes);
  planes.erase(planes.begin() + 3, planes.end());
  planes.push_back(Bare(87));
  Add(&model, 20, {tag, {51, 1}}, {role}, planes);
  return model;
}

Model SoundInk() {
  Model model = {true, {}};
  const Word role = {33, 1}, nodes = {50, 2};
  const auto ink = [](int channel) {
    return std::vector<Word>{{32, channel}, {33, 1},  {35, 4},  {36, 2}, {37, 4},
                             {38, 0},       {39, 17}, {40, 30}, {41, 2}, {43, 1}};
  };
  Bytes flat(137, 9);
  flat.insert(flat.end(), {0xFF, 0xFF, 0xF1, 0xC7});  // no deltas
  Add(&model, 20, {nodes}, {{39, 17}}, {Stored(86, Bytes(17, 40))});
  Add(&model, 21, {nodes}, {{39, 5}}, {Stored(87, Bytes(120, 90))});
  Add(&model, 22, {nodes}, {{39, 9}, {43, 1}}, {Stored(88, {1, 0xF1, 0xE6})});
  Add(&model, 22, {nodes}, {{39, 17}, {43, 3}}, {Stored(88, {0, 0xFF, 0xDE})});
  Add(&model, 24, {nodes}, ink(0),
      {Reference(20, nodes, {39, 17}), Reference(21, nodes, {39, 5}), Reference(22, nodes, {39, 9}),
       Reference(22, nodes, {39, 17}), Bare(90)});
  Add(&model, 24, {nodes}, ink(13), {Stored(92, flat)});
  Add(&model, 24, {nodes}, ink(21), {Stored(92, flat)});
  Add(&model, 24, {nodes}, ink(29),
      {Reference(24, nodes, {32, 13}), Reference(24, nodes, {32, 21}), Bare(96)});
  std::vector<Step> planes, curves;
  for (const int channel : {0, 13, 21, 29}) {
    Add(&model, 27, {nodes}, ink(channel), {Stored(94, Bytes(17, 8))});
    planes.push_back(Reference(24, nodes, {32, channel}));
    curves.push_back(Reference(27, nodes, {32, channel}));
  }
  planes.push_back(Bare(91));
  curves.push_back(Bare(95));
  Add(&model, 25, {{50, 1}}, {role}, planes);
  Add(&model, 26, {{50, 1}}, {role}, {Stored(93, Bytes(17, 7))});
  Add(&model, 28, {{50, 1}}, {role}, curves);
  return model;
}

void Change(Model* model, Input* input) {
  for (int changes = input->Byte() & 15; changes > 0; --changes) {
    const int change = input->Byte();
    Component* component = Chosen(&model->components, input);
    if (component == nullptr) {
      return;
    }
    const int where = input->Byte();
    std::vector<Word>* words = where % 3 == 0   ? &component->tags
                               : where % 3 == 1 ? &component->properties
                                                : &component->condition;
    std::vector<Step>* recipe = &component->recipe;
    switch (change % 16) {
      case 0:
        if (Word* word = Chosen(words, input)) {
          word->value = input->Byte();
        }
        break;
      case 1:
        words->push_back({input->Byte() % 127 + 1, input->Byte()});
        break;
      case 2:
        if (!words->empty()) {
          words->pop_back();
        }
        break;
      case 3:
        if (Word* word = Chosen(words, input)) {
          word->type = input->Byte() % 127 + 1;
        }
        break;
      case 4: {
        Component copy = *component;
        copy.version = where;
        model->components.push_back(copy);
        break;
      }
      case 5:
        model->components.erase(model->components.begin() + (component - model->components.data()));
        break;
      case 6:
        component->kind = 20 + where % 10;
        break;
      case 7:
        component->list = 20 + where % 10;
        break;
      case 8: {
        const Component* other = Chosen(&model->components, input);
        if (!other->recipe.empty() && recipe->size() < 32) {
          const Step copied = other->recipe[static_cast<size_t>(where) % other->recipe.size()];
          const auto at =
              static_cast<long>(static_cast<size_t>(input->Byte()) % (recipe->size() + 1));
          recipe->insert(recipe->begin() + at, copied);
        }
        break;
      }
      case 9:
        if (!recipe->empty()) {
          recipe->erase(recipe->begin() + where % static_cast<long>(recipe->size()));
        }
        break;
      case 10:
        if (Step* step = Chosen(recipe, input)) {
          const auto size = static_cast<size_t>(input->Short() % 6000);
          step->bytes.assign(size, static_cast<unsigned char>(where));
          const Bytes head = input->Take(static_cast<size_t>(input->Byte()));
          std::copy_n(head.begin(), std::min(head.size(), size), step->bytes.begin());
          step->form = Step::kBytes;
        }
        break;
      case 11:
        if (recipe->size() < 32) {
          const int inner = input->Byte() % static_cast<int>(model->components.size());
          recipe->insert(recipe->begin(), {0, Step::kStored, {}, {}, {}, inner});
        }
        break;
      case 12:
        std::reverse(recipe->begin(), recipe->end());
        break;
      case 13:
        if (Step* step = Chosen(recipe, input)) {
          step->type = where % 127 + 1;
          step->form = Step::Form(input->Byte() % 3);
        }
        break;
      case 14:
        component->state = where;
        break;
      default:
        if (Step* step = Chosen(recipe, input)) {
          std::vector<Word>* own = where % 2 == 0 ? &step->tags : &step->properties;
          own->push_back({input->Byte() % 127 + 1, input->Byte()});
        }
    }
  }
}

Bytes ImageOf(const Model& model) {
  return Written(model, [](Writer& writer) { writer.WriteAll(); });
}

void Damage(Bytes* image, Input* input) {
  for (int places = input->Byte() & 7; places > 0 && !image->empty(); --places) {
    const int how = input->Byte();
    const auto value = static_cast<unsigned char>(input->Byte());
    const auto at =
        image->begin() + static_cast<long>(static_cast<size_t>(input->Short()) % image->size());
    switch (how % 5) {
      case 0:
        *at = static_cast<unsigned char>(*at ^ 1 << value % 8);
        break;
      case 1:
        *at = value;
        break;
      case 2:
        image->insert(at, value);
        break;
      case 3:
        image->erase(at);
        break;
      default:
        image->resize(static_cast<size_t>(at - image->begin()) + 1);
    }
  }
}

}  // namespace fuzz
