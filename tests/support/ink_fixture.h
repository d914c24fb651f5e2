// An ink factory for tests, and components and packs in a few words.
// Room: tests. As the toner fixture: it owns every object that it makes and ends them with the
// test, so a test may raise wherever it likes. Words are type ids with values, "48=3 39=17"; the
// drops of each level are a count, "35=4" stands for 1, 2, 3, 4.
#pragma once

#include <initializer_list>
#include <vector>

#include "tests/support/runtime_fixture.h"
#include "velora/wisp/api/IFactory.h"

namespace velora_test {

namespace wisp = velora::v1::wisp::api;

using Image = std::vector<unsigned char>;
using Nodes = std::vector<int>;

class InkTest : public RuntimeTest<wisp::Configuration> {
 protected:
  using Operator = wisp::IRecipe::IOperator;
  using Operators = std::vector<Operator*>;
  using Components = std::vector<wisp::IComponent*>;
  using Packs = std::vector<wisp::IVelcase*>;
  static constexpr auto kReversed = wisp::ISerializer::ETargetEndianness::Reversed;

  InkTest();
  ~InkTest() override;

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

  ISerializeable* Word(int type, int value);
  wisp::ITags* Tags(const char* words);
  wisp::IProperties* Properties(const char* words);
  wisp::ILinkedList<wisp::IConditions::IOperator>* Expression(const char* words);
  wisp::IConditions* Conditions(const char* words);

  wisp::IArray_uint8* Array(const Image& bytes);
  wisp::IArray_int32* Array(const Nodes& nodes);
  static Nodes Content(wisp::IArray_int32* array);
  static Image Content(wisp::IArray_uint8* array);

  // An operator with stored bytes, [86..89], 92, 93 or 94, as it comes out of an image with these
  // properties for its context.
  Operator* Bytes(int type, const Image& bytes, wisp::IProperties* properties = nullptr);
  // An operator without bytes.
  Operator* Build(int type);
  wisp::IRecipe* Recipe(const Operators& operators);

  // What a stored component says of itself.
  struct Profile {
    const char* tags = "50=1";
    const char* properties = "33=1";
    const char* conditions = "60";
    int version = 1;
  };
  wisp::IComponent* Reference(int type, const char* tags, const char* properties);
  wisp::IComponent* Stored(int type, const Profile& profile, const Operators& recipe);

  wisp::IVelcase* Pack(int channel, const Components& components, int family = 0);
  // The file of a pack, and a pack that was read from a file.
  static Image File(wisp::IVelcase* pack);
  wisp::IVelcase* Read(const Image& file, int family = 0);
  // The image of one root object, and the object of an image.
  Image ImageOf(ISerializeable* object);
  ISerializeable* FromImage(const Image& image, int type, void* context = nullptr);

  // For the printer and the print mode below.
  wisp::IVeltune* Veltune(const Packs& packs);

  int platform = 1;
  int productVariant = 0;
  tWISPPrintModeMapping mode = {PT_DATA_SOURCE_0, PT_MEDIA_0, PT_QUALITY_0, 0, 1};

  wisp::_factory::IFactory* factory;
  wisp::ISerializerHelper* helper;
  wisp::IPrintModeMappings* mappings;

 private:
  std::vector<IObject*> kept;
};

}  // namespace velora_test
