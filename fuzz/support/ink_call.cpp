#include "fuzz/support/ink_call.h"

#include <string.h>

#include <memory>

#include "fuzz/support/promise.h"

namespace fuzz {
namespace {

constexpr const char* kKinds[] = {"color", "gray", "neutral"};
constexpr tWISPPrintModeMapping kModes[] = {{PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1},
                                            {PT_DATA_SOURCE_1, PT_MEDIA_0, PT_QUALITY_0, 1, 2}};

// What is opened once; null while the door is closed.
struct Door {
  ink::_factory::IFactory* factory;
  ink::ISerializerHelper* helper;
  ink::IPrintModeMappings* mappings;
};
Door door;

void Open() {
  door.factory = ink::Open();
  Expect(door.factory != nullptr, "the ink door does not open");
  Expect(ink::Try([] {
           door.helper = door.factory->CreateSerializerHelper();
           door.helper->Init();
           door.mappings = door.factory->CreatePrintModeMappings();
           door.mappings->Init();
         }) == 0,
         "the ink door has no mappings");
}

template <class Object>
void Drop(Object* object) {
  if (object != nullptr) {
    object->Destroy();
  }
}

// The packs as one request's object; null when they are refused. All bytes are in place before.
ink::IVeltune* OpenPacks(const InkCall& call, unsigned char* const* packs) {
  ink::IArray<ink::IVelcase>* array = nullptr;
  ink::IVelcase* velcase = nullptr;
  ink::IVeltune* veltune = nullptr;
  const int code = ink::Try([&] {
    array = door.factory->CreateArray_Velcase();
    const int count = static_cast<int>(call.packs.size());
    array->Init(1, count);
    for (int i = 0; i < count; ++i) {
      const size_t size = call.packs[static_cast<size_t>(i)].size();
      velcase = door.factory->CreateVelcase();
      velcase->Init(static_cast<int>(size), packs[i], door.helper,
                    ink::ISerializer::ETargetEndianness::Reversed,
                    ink::ESupplyFamily::Enum(call.family), static_cast<unsigned int>(size));
      array->Set(i, velcase);
      velcase->Destroy();
      velcase = nullptr;
    }
    veltune = door.factory->CreateVeltune();
    veltune->Init(ink::EPlatform::Enum(call.platform), ink::EProductVariant::Enum(0), array,
                  door.mappings, &kModes[0]);
  });
  Drop(velcase);
  Drop(array);
  if (code != 0) {
    Drop(veltune);
    return nullptr;
  }
  return veltune;
}

// A record as large as a request of its kind needs it, with the locator in it.
Bytes RecordOf(const InkRequest& request) {
  const Bytes& locator = request.locator;
  const size_t claimed =
      request.claimed < 0 ? locator.size() : static_cast<size_t>(request.claimed);
  Bytes record;
  if (request.kind == InkRequest::kColor) {
    const auto length = static_cast<uint16_t>(claimed);
    record.resize(offsetof(WISPColorMap, data) + length);
    memcpy(&record[offsetof(WISPColorMap, payloadLength)], &length, sizeof length);
    for (size_t i = 0; i < locator.size() && i < length; ++i) {
      record[offsetof(WISPColorMap, data) + i] = locator[i];
    }
    return record;
  }
  const auto length = static_cast<uint32_t>(claimed);
  const size_t count =
      locator.size() < VELORA_WISP_MAX_PAYLOAD ? locator.size() : VELORA_WISP_MAX_PAYLOAD;
  if (request.kind == InkRequest::kGray) {
    record.resize(sizeof(WISPGrayCurve));
    memcpy(&record[offsetof(WISPGrayCurve, payloadLength)], &length, sizeof length);
    for (size_t i = 0; i < count; ++i) {
      record[i] = locator[i];
    }
    return record;
  }
  record.resize(sizeof(WISPAlternateNeutral));
  memcpy(&record[offsetof(WISPAlternateNeutral, payloadLength)], &length, sizeof length);
  for (size_t i = 0; i < count; ++i) {
    record[offsetof(WISPAlternateNeutral, nodes) + 2 * i] = locator[i];
  }
  return record;
}

size_t SizeOf(int kind) {
  return kind == InkRequest::kColor  ? VELORA_SIZE_WISP_COLOR_MAP
         : kind == InkRequest::kGray ? sizeof(WISPGrayCurve)
                                     : sizeof(WISPAlternateNeutral);
}

using Block = std::unique_ptr<unsigned char[]>;

Block BlockOf(const Bytes& bytes) {
  Block block(new unsigned char[bytes.size()]);
  memcpy(block.get(), bytes.data(), bytes.size());
  return block;
}

// One request; answers whether it was served, in which case the record has its bytes.
bool Ask(ink::IVeltune* veltune, const InkRequest& request, unsigned char* input, int size,
         unsigned char* output) {
  int written = 0;
  const int code = ink::Try([&] {
    veltune->Update(&kModes[request.other_mode ? 1 : 0]);
    switch (request.kind) {
      case InkRequest::kColor:
        written = veltune->PopulateWISPColorMap(request.index, "path",
                                                reinterpret_cast<WISPColorMap*>(input), size,
                                                reinterpret_cast<WISPColorMap*>(output));
        break;
      case InkRequest::kGray:
        written = veltune->PopulateWISPGrayCurve(request.index, "path",
                                                 reinterpret_cast<WISPGrayCurve*>(input), size,
                                                 reinterpret_cast<WISPGrayCurve*>(output));
        break;
      default:
        written = veltune->PopulateWISPAlternateNeutral(
            request.index, "path", reinterpret_cast<WISPAlternateNeutral*>(input), size,
            reinterpret_cast<WISPAlternateNeutral*>(output));
    }
  });
  return code == 0 && written > 0;
}

int RunOnce(const InkCall& call, Bytes* last, bool counted = true) {
  std::vector<Block> packs, inputs, outputs;
  std::vector<unsigned char*> pointers;
  for (const Bytes& pack : call.packs) {
    packs.push_back(BlockOf(pack));
    pointers.push_back(packs.back().get());
  }
  std::vector<Bytes> blanks;
  for (const InkRequest& request : call.requests) {
    inputs.push_back(BlockOf(RecordOf(request)));
    blanks.push_back(Bytes(SizeOf(request.kind) - static_cast<size_t>(request.short_of), 0xA5));
    outputs.push_back(BlockOf(blanks.back()));
  }

  int served = 0;
  const Promise promise(ImageBytesOf(call.packs, true));
  if (ink::IVeltune* veltune = OpenPacks(call, pointers.data())) {
    for (size_t i = 0; i < call.requests.size(); ++i) {
      const bool done = Ask(veltune, call.requests[i], inputs[i].get(),
                            static_cast<int>(blanks[i].size()), outputs[i].get());
      Expect(done || memcmp(outputs[i].get(), blanks[i].data(), blanks[i].size()) == 0,
             "a refused request wrote to its record");
      served += done ? 1 : 0;
    }
    veltune->Destroy();
  }
  if (counted) {
    promise.Check();
  }
  if (last != nullptr && !outputs.empty()) {
    last->assign(outputs.back().get(), outputs.back().get() + blanks.back().size());
  }
  return served;
}

void ExpectTheKnownRecords() {
  const Unobserved unobserved;
  static const Bytes expected = ReadData("vectors/ink/expected-neutral.bin");
  Bytes record;
  Expect(!expected.empty() && RunOnce(VectorInk(), &record) == 3 && record == expected,
         "known requests no longer give their records");
}

}  // namespace

int Run(const InkCall& call, Bytes* last) {
  static unsigned int runs = 0;
  if (door.factory == nullptr) {
    const Unobserved unobserved;
    Open();
  }
  if (runs == 0) {
    const Unobserved unobserved;
    Expect(RunOnce(VectorInk(), nullptr, false) == 3, "a known request is refused");
  }
  if (runs % 64 == 0) {
    ExpectTheKnownRecords();
  }
  const int served = RunOnce(call, last);
  if (++runs % 512 == 0) {
    CloseInk();
  }
  return served;
}

void CloseInk() {
  if (door.factory == nullptr) {
    return;
  }
  const Unobserved unobserved;
  door.mappings->Destroy();
  door.helper->Destroy();
  door.factory->Destroy();
  ink::Close();
  door = {};
}

const InkCall& VectorInk() {
  static const InkCall call = [] {
    InkCall made;
    made.platform = 2;
    made.family = 3;
    made.packs = {ReadData("vectors/ink/printer.velcase")};
    for (int kind = 0; kind < InkRequest::kKinds; ++kind) {
      InkRequest request;
      request.kind = kind;
      request.locator = VectorLocator(kind);
      made.requests.push_back(request);
    }
    return made;
  }();
  return call;
}

Bytes VectorLocator(int kind) {
  return ReadData(std::string("vectors/ink/locator-") + kKinds[kind] + ".bin");
}

InkCall PlainRequests(const Bytes& pack) {
  // Component, tags and properties, their arrays, one word in each.
  constexpr unsigned char kTypes[] = {25, 26, 28};
  InkCall call;
  call.packs = {pack};
  for (int kind = 0; kind < InkRequest::kKinds; ++kind) {
    InkRequest request;
    request.kind = kind;
    request.locator = {kTypes[kind], 1, 1,  2, 1, 4, 0x80, 0, 107, 0, 1, 2, 0x80, 0, 5, 1, 1, 1, 3,
                       0x80,         0, 50, 1, 1, 0, 0x80, 0, 106, 0, 1, 5, 0x80, 0, 4, 1, 1, 1, 6,
                       0x80,         0, 33, 1, 1, 0, 0x80, 0};
    call.requests.push_back(request);
  }
  return call;
}

}  // namespace fuzz
