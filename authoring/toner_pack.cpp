// Toner packs through the toner pipeline's objects.
#include "authoring/pack_objects.h"
#include "velora/fenn/api/IFactory.h"
#include "velora/frontend/door/library.h"

namespace velora::authoring {
namespace {

namespace fenn = v2::fenn::api;

struct TonerLayer {
  using Configuration = fenn::Configuration;
  using IFactory = fenn::_factory::IFactory;

  template <class Visit>
  static void ForEachRow(Visit visit) {
    using C = Configuration;
    using common::Vocabulary;
#define TONER_ROW(Name, Interface, Class, Id) visit(#Name, Id, &IFactory::Create##Name);
    VELORA_COMMON_OBJECTS(TONER_ROW)
    FENN_OBJECTS(TONER_ROW)
#undef TONER_ROW
  }

  static void StoreBytes(fenn::IFromData* operation, fenn::IProperties* properties,
                         fenn::IArray_uint8* bytes) {
    operation->Init(properties, bytes);
  }
  static void StoreBytes(fenn::IRecipe::IOperator* operation, fenn::IProperties*,
                         fenn::IArray_uint8* bytes) {
    if (bytes->GetCount() > 0) PLINTH_RAISE(raised::CException_Parameter_Invalid);
    operation->Init();
  }
  // The library reads these two, but has no operation that gives them their bytes.
  static void StoreBytes(fenn::IBuild_Monolithic_GrayCurve*, fenn::IProperties*,
                         fenn::IArray_uint8*) {
    PLINTH_RAISE(raised::CException_NotImplemented);
  }
  static void StoreBytes(fenn::IBuild_Monolithic_ChannelMap*, fenn::IProperties*,
                         fenn::IArray_uint8*) {
    PLINTH_RAISE(raised::CException_NotImplemented);
  }

  static fenn::IArray_uint8* StoredBytes(fenn::IFromData* operation) {
    return operation->GetArray_uint8_Packet();
  }
  static fenn::IArray_uint8* StoredBytes(fenn::IBuild_Monolithic_GrayCurve* operation) {
    return operation->GetArray_uint8_Packet_Encoded();
  }
  static fenn::IArray_uint8* StoredBytes(fenn::IBuild_Monolithic_ChannelMap* operation) {
    return operation->GetArray_uint8_Packet_Encoded();
  }
  static fenn::IArray_uint8* StoredBytes(fenn::IRecipe::IOperator*) { return nullptr; }
};

using Configuration = TonerLayer::Configuration;
constexpr auto kEndianness = fenn::ISerializer::ETargetEndianness::Reversed;

const Words& TonerWords() {
  static const Words words = [] {
    std::vector<Words::Word> rows;
    TonerLayer::ForEachRow([&rows](const char* name, int type, auto) {
      if (type != 0) rows.push_back({name, type});
    });
    return Words(std::move(rows));
  }();
  return words;
}

void SetFile(Bytes* file, const unsigned char* bytes, int size) noexcept {
  file->assign(bytes, bytes + size);
}

int WriteToner(const Pack& pack, WritePlace* place, Bytes* file) {
  volatile int code = 0;
  PLINTH_FRAME(Configuration) {
    TonerLayer::IFactory* factory = g_pFactory;
    ObjectWriter<TonerLayer> writer(frame, factory, place);
#define TONER_LIST(Name, List)                                                               \
  fenn::I##List* list##Name =                                                                \
      writer.MakeList<fenn::I##Name>(factory->Create##List(), factory->CreateArray_##Name(), \
                                     &TonerLayer::IFactory::Create##Name, pack);
    FENN_KINDS(TONER_LIST)
#undef TONER_LIST
    fenn::ISerializerHelper* helper = raised::Defer(frame, factory->CreateSerializerHelper());
    helper->Init();
    fenn::IVelcase* velcase = raised::Defer(frame, factory->CreateVelcase());
#define TONER_LIST(Name, List) , list##Name
    velcase->Init(static_cast<fenn::EVelcaseSchema::Enum>(pack.schema),
                  static_cast<fenn::ESupplyFamily::Enum>(pack.family), pack.channel,
                  static_cast<fenn::EVelcaseVersion::Enum>(pack.version), helper,
                  kEndianness FENN_KINDS(TONER_LIST));
#undef TONER_LIST
    const int size = velcase->GetSerializedSize();
    SetFile(file, velcase->Serialize(), size);
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

int ReadToner(const Bytes& bytes, PackFile* file) {
  volatile int code = 0;
  ObjectReader<TonerLayer> reader(&file->pack);
  PLINTH_FRAME(Configuration) {
    fenn::ISerializerHelper* helper = raised::Defer(frame, g_pFactory->CreateSerializerHelper());
    helper->Init();
    fenn::IVelcase* velcase = raised::Defer(frame, g_pFactory->CreateVelcase());
    velcase->Init(static_cast<int>(bytes.size()), const_cast<unsigned char*>(bytes.data()), helper,
                  kEndianness, static_cast<fenn::ESupplyFamily::Enum>(file->pack.family),
                  static_cast<unsigned int>(bytes.size()));
    file->pack.schema = velcase->GetVelcaseSchema();
    file->pack.channel = velcase->GetChannel();
    file->pack.version = velcase->GetVelcaseVersion();
    file->stream_size = velcase->GetPayloadSize_Compressed();
    file->image_size = velcase->GetPayloadSize_Uncompressed();
    file->checksum = velcase->GetChecksum();
#define TONER_LIST(Name, List) reader.ReadList<fenn::I##Name>(velcase->Get##List());
    FENN_KINDS(TONER_LIST)
#undef TONER_LIST
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

}  // namespace

const PackPipeline& TonerPipeline() {
  static const PackPipeline pipeline{TonerWords, [] { return initLibrary(nullptr); },
                                     releaseLibrary, WriteToner, ReadToner};
  return pipeline;
}

}  // namespace velora::authoring
