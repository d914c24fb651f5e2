// A PackPipeline over a layer's objects: the one function that makes it.
//
// Room: authoring, for the files that instantiate it; see pack_layer.h. The library is up while the
// pipeline's functions run.
#pragma once

#include "authoring/lookup_watcher.h"
#include "authoring/object_reader.h"
#include "authoring/object_writer.h"
#include "velora/common/api/IVelcase.h"

namespace velora::authoring {

template <class Layer>
const TypeNames& LayerTypeNames() {
  static const TypeNames names = [] {
    std::vector<TypeNames::Entry> rows;
    Layer::ForEachStored([&rows](const char* name, int type, auto) {
      rows.push_back({name, type});
    });
    return TypeNames(std::move(rows));
  }();
  return names;
}

template <class Layer>
typename common::api::ESupplyFamily<typename Layer::Configuration>::Enum FamilyOf(
    const Pack& pack) {
  using Family = common::api::ESupplyFamily<typename Layer::Configuration>;
  return static_cast<typename Family::Enum>(pack.family);
}

template <class Layer, class First, class... Rows>
void InitVelcase(typename Layer::IVelcase* velcase, ObjectWriter<Layer>* writer, const Pack& pack,
                 KindRows<First, Rows...>) {
  using C = typename Layer::Configuration;
  velcase->Init(static_cast<typename common::api::EVelcaseSchema<C>::Enum>(pack.schema),
                FamilyOf<Layer>(pack), pack.channel,
                static_cast<typename common::api::EVelcaseVersion<C>::Enum>(pack.version),
                writer->MakeHelper(), kImageEndianness, writer->template MakeList<Rows>(pack)...);
}

template <class Layer, class First, class... Rows>
void ReadLists(typename Layer::IVelcase* velcase, ObjectReader<Layer>* reader,
               KindRows<First, Rows...>) {
  (reader->template ReadList<Rows>(velcase), ...);
}

template <class Layer>
int WritePackFile(const Pack& pack, WritePlace* place, Bytes* file) {
  volatile int code = 0;
  PLINTH_FRAME(typename Layer::Configuration) {
    ObjectWriter<Layer> writer(frame, place);
    typename Layer::IVelcase* velcase = raised::Defer(frame, Layer::Factory()->CreateVelcase());
    InitVelcase<Layer>(velcase, &writer, pack, typename Layer::Kinds());
    const int size = velcase->GetSerializedSize();
    SetBytes<typename Layer::Configuration>(file, velcase->Serialize(), size);
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

template <class Layer>
int WriteReferenceImage(const Step& reference, WritePlace* place, Bytes* image) {
  volatile int code = 0;
  PLINTH_FRAME(typename Layer::Configuration) {
    ObjectWriter<Layer> writer(frame, place);
    auto* object = writer.MakeStep(reference, reference.properties);
    raised::ISerializer* serializer = raised::Defer(frame, Layer::Factory()->CreateSerializer());
    serializer->Init(writer.MakeHelper(), kImageEndianness);
    object->Serialize(serializer, nullptr);
    const int size = serializer->GetSerializedSize();
    SetBytes<typename Layer::Configuration>(image, serializer->Serialize(), size);
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

template <class Layer>
int ReadPackFile(const Bytes& bytes, PackFile* file) {
  volatile int code = 0;
  ObjectReader<Layer> reader(&file->pack);
  PLINTH_FRAME(typename Layer::Configuration) {
    raised::ISerializerHelper* helper =
        raised::Defer(frame, Layer::Factory()->CreateSerializerHelper());
    helper->Init();
    typename Layer::IVelcase* velcase = raised::Defer(frame, Layer::Factory()->CreateVelcase());
    velcase->Init(static_cast<int>(bytes.size()), const_cast<unsigned char*>(bytes.data()), helper,
                  kImageEndianness, FamilyOf<Layer>(file->pack),
                  static_cast<unsigned int>(bytes.size()));
    file->pack.schema = velcase->GetVelcaseSchema();
    file->pack.channel = velcase->GetChannel();
    file->pack.version = velcase->GetVelcaseVersion();
    file->stream_size = velcase->GetPayloadSize_Compressed();
    file->image_size = velcase->GetPayloadSize_Uncompressed();
    file->checksum = velcase->GetChecksum();
    ReadLists<Layer>(velcase, &reader, typename Layer::Kinds());
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

template <class Layer>
const PackPipeline& PipelineOver() {
  static const PackPipeline pipeline{
      LayerTypeNames<Layer>,      Layer::Open,         Layer::Close,       WritePackFile<Layer>,
      WriteReferenceImage<Layer>, ReadPackFile<Layer>, Layer::FindMisread, Layer::kLargestFile,
      LookupWatcher<Layer>::Watch};
  return pipeline;
}

}  // namespace velora::authoring
