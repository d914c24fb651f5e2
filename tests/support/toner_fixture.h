// A toner factory for tests, and components and packs in a few words.
// Room: tests. The fixture owns every object that it makes and ends them with the test, so a test
// may raise wherever it likes. What goes wrong while words are made into objects is raised.
//
// Words are type ids with values, "48=3 49=1"; ids without a value stand alone, "60", "66=3 81".
#pragma once

#include <initializer_list>
#include <vector>

#include "tests/support/runtime_fixture.h"
#include "velora/fenn/api/IFactory.h"
#include "velora/frontend/toolkit/CT_PROCESSING.h"
#include "velora/frontend/toolkit/RawData.h"

namespace velora_test {

namespace fenn = velora::v2::fenn::api;

using Image = std::vector<unsigned char>;

class TonerTest : public RuntimeTest<fenn::Configuration> {
 protected:
  using Operator = fenn::IRecipe::IOperator;
  using Operators = std::initializer_list<Operator*>;
  using Components = std::initializer_list<fenn::IComponent*>;
  using Packs = std::initializer_list<fenn::IVelcase*>;
  static constexpr auto kReversed = fenn::ISerializer::ETargetEndianness::Reversed;

  TonerTest();
  ~TonerTest() override;

  template <class T>
  T* Keep(T* object) {
    kept.push_back(object);
    return object;
  }

  // One word: a blank object by its type id, brought to life with its value, if it has one.
  ISerializeable* Word(int type, int value);
  fenn::ITags* Tags(const char* words);
  fenn::IProperties* Properties(const char* words);
  fenn::ILinkedList<fenn::IConditions::IOperator>* Expression(const char* words);
  fenn::IConditions* Conditions(const char* words);

  fenn::IArray_uint8* Array(const Image& bytes);
  // A packet's operator with its bytes; [93..99].
  Operator* Bytes(int type, const Image& bytes);
  // An operator without bytes.
  Operator* Build(int type);
  fenn::IRecipe* Recipe(Operators operators);

  // What a stored component says of itself.
  struct Profile {
    const char* tags = "48=1";
    const char* properties = "35=1";
    const char* conditions = "60";
    int version = 1;
  };
  fenn::IComponent* Reference(int type, const char* tags, const char* properties);
  fenn::IComponent* Stored(int type, const Profile& profile, Operators recipe);

  fenn::IVelcase* Pack(int channel, Components components, int family = 0);
  // The file of a pack, and a pack that was read from a file.
  static Image File(fenn::IVelcase* pack);
  fenn::IVelcase* Read(const Image& file, int family = 0);

  // Over `rawData` and `processing`, for the printer and the print mode below.
  fenn::IVeltune* Veltune(Packs packs);

  int platform = 1;
  int productVariant = 0;
  int table = CTR_TABLE_CMYK;
  int theme = CTR_THEME_0;
  int media = CTR_MEDIA_P;
  int axis = CTR_AXIS_P;
  RawData rawData{'P', 'P'};
  CT_PROCESSING processing = {};

  fenn::_factory::IFactory* factory;
  fenn::ISerializerHelper* helper;
  fenn::IPrintModeMappings* mappings;

 private:
  std::vector<IObject*> kept;
};

}  // namespace velora_test
