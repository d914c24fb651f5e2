// What was read, sorted and written is read again as the same, and written again as the same bytes.
// The input names the changes to a sound pack's content, or the shape of a printer family, whose
// print modes have to give their tables besides.
#include <string.h>

#include <stdexcept>

#include "authoring/family.h"
#include "fuzz/support/ink_call.h"
#include "fuzz/support/model.h"
#include "fuzz/support/packs.h"
#include "fuzz/support/promise.h"
#include "velora/fenn/api/IFactory.h"

namespace fuzz {

namespace fenn = velora::v2::fenn::api;
using plinth::v1::api::ISerializeable;
using plinth::v1::api::ISerializer;
using plinth::v1::api::ISerializerHelper;

constexpr int kMostLists = 10;

// The objects of one round trip, ended at its end however far it came.
template <class Factory>
struct Trip {
  explicit Trip(Factory* from) : factory(from) {}
  ~Trip() {
    for (ISerializeable** object = first; object < first + 2 * kMostLists; ++object) {
      if (*object != nullptr) {
        (*object)->Destroy();
      }
    }
    for (plinth::v1::api::IObject* object : {static_cast<plinth::v1::api::IObject*>(reader),
                                             static_cast<plinth::v1::api::IObject*>(again),
                                             static_cast<plinth::v1::api::IObject*>(writer),
                                             static_cast<plinth::v1::api::IObject*>(rewriter),
                                             static_cast<plinth::v1::api::IObject*>(helper)}) {
      if (object != nullptr) {
        object->Destroy();
      }
    }
  }

  ISerializer* Open(ISerializer** slot) {
    *slot = factory->CreateSerializer();
    return *slot;
  }

  Factory* factory;
  ISerializerHelper* helper = nullptr;
  ISerializer *reader = nullptr, *again = nullptr, *writer = nullptr, *rewriter = nullptr;
  ISerializeable* first[2 * kMostLists] = {};
  ISerializeable** second = first + kMostLists;
  bool written = false;
};

// Raises where the image is refused, the sort meets equals, or a curve has not its 17 nodes.
template <class Factory>
void Go(Trip<Factory>* trip, const int* types, int lists, unsigned char* bytes, int size) {
  constexpr auto kReversed = ISerializer::ETargetEndianness::Reversed;
  trip->helper = trip->factory->CreateSerializerHelper();
  trip->helper->Init();
  trip->Open(&trip->reader)->Init(trip->helper, kReversed, size, bytes, false);
  for (int i = 0; i < lists; ++i) {
    trip->first[i] = trip->reader->Deserialize_Serializeable(types[i], nullptr);
  }
  for (int i = 0; i < lists; ++i) {
    trip->first[i]->Sort(true);
  }
  trip->Open(&trip->writer)->Init(trip->helper, kReversed);
  for (int i = 0; i < lists; ++i) {
    trip->first[i]->Serialize(trip->writer, nullptr);
  }
  const int written = trip->writer->GetSerializedSize();
  unsigned char* image = trip->writer->Serialize();
  trip->written = true;
  trip->Open(&trip->again)->Init(trip->helper, kReversed, written, image, false);
  for (int i = 0; i < lists; ++i) {
    trip->second[i] = trip->again->Deserialize_Serializeable(types[i], nullptr);
    Expect(trip->second[i]->IsEqualTo(trip->first[i]), "a list is read as another one");
    Expect(!trip->second[i]->IsLessThan(trip->first[i]), "a list is less than its equal");
  }
  trip->Open(&trip->rewriter)->Init(trip->helper, kReversed);
  for (int i = 0; i < lists; ++i) {
    trip->second[i]->Serialize(trip->rewriter, nullptr);
  }
  Expect(trip->rewriter->GetSerializedSize() == written &&
             memcmp(trip->rewriter->Serialize(), image, static_cast<size_t>(written)) == 0,
         "a list is written as other bytes");
}

template <class Factory>
void RoundTrip(Factory* factory, const int* types, int lists, Bytes image) {
  const Promise promise;
  {
    Trip<Factory> trip(factory);
    const int code =
        ink::Try([&] { Go(&trip, types, lists, image.data(), static_cast<int>(image.size())); });
    Expect(code == 0 || !trip.written, "what was written is not read and written again");
  }
  promise.Check();
}

// Opens the toner layer beside the ink door, and closes it.
struct Toner {
  Toner() : door(ink::Open()) {
    BootRecord* record = _plinth_v1_Boot_Posix_So();
    Expect(_velora_v2_Initialize_Posix_So(record) != 0, "the toner layer does not open");
    _plinth_v1_FreeBootRecord_Posix_So(record);
    Expect(ink::Try([this] {
             factory = static_cast<fenn::_factory::IFactory*>(_velora_v2_CreateFactory_Posix_So());
             factory->Init();
           }) == 0,
           "the toner layer has no factory");
  }
  ~Toner() {
    factory->Destroy();
    door->Destroy();
    _velora_v2_Cleanup_Thread_Posix_Lib();
    _velora_v2_Cleanup_Process_Posix_Lib();
    ink::Close();
  }

  ink::_factory::IFactory* door;
  fenn::_factory::IFactory* factory = nullptr;
};

void RoundTrip(bool ink, const Bytes& image) {
  const Toner toner;
#define LIST(Name, List) fenn::I##Name::kListType,
  static constexpr int kTonerLists[] = {FENN_KINDS(LIST)};
#undef LIST
#define LIST(Name, List) ink::I##Name::kListType,
  static constexpr int kInkLists[] = {WISP_KINDS(LIST)};
#undef LIST
  if (ink) {
    RoundTrip(toner.door, kInkLists, 8, image);
  } else {
    RoundTrip(toner.factory, kTonerLists, 10, image);
  }
}

// False where the shape does not fit into its packs. Small shapes, so that a run takes seconds at
// most with sanitizers; the tests of families have the large ones.
bool RoundTripFamily(Input* input) {
  namespace authoring = velora::authoring;
  authoring::FamilyShape shape;
  const bool ink = input->Byte() % 2 == 1;
  shape.pipeline = ink ? authoring::Pipeline::kInk : authoring::Pipeline::kToner;
  shape.modes = 1 + input->Below(8);
  shape.platforms = 1 + input->Below(13);
  shape.variants = 1 + input->Below(6);
  shape.condition = 1 + input->Below(100);
  shape.bases = 4 + input->Below(21);
  shape.links = input->Below(4);
  shape.own_parts = input->Below(30);
  shape.decoys = input->Below(30);
  shape.packs = 1 + input->Below(6);
  shape.shares = input->Byte() % 2 == 0;
  shape.seed = static_cast<unsigned>(input->Short());
  try {
    const authoring::Family family(shape);
    for (const Bytes& file : family.files()) {
      RoundTrip(ink, ImageOf(file, ink));
    }
    const std::string answer = family.AskSome(2);
    Expect(answer.empty(), answer.c_str());
  } catch (const std::runtime_error&) {
    return false;
  }
  return true;
}

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  Input input(data, size);
  const int what = input.Byte();
  if (what >= 0x40 && what < 0x80) {
    return RoundTripFamily(&input) ? 0 : -1;
  }
  Model model = what % 2 == 0 ? SoundToner() : SoundInk();
  Change(&model, &input);
  const Bytes image = ImageOf(model);
  if (image.empty()) {
    return -1;
  }
  RoundTrip(model.ink, image);
  return 0;
}
