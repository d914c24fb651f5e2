// A pack: header, compression and byte sum; and, over a pipeline's kinds of component, the lists.
// Room: velora/common. Owns pathname, lists and written bytes; copies what it reads. Raises
// `CException_Parameter_Invalid` for a bad argument or header field, `CException_This_Invalid` for
// a payload size out of bounds, `CException_General` for a broken stream, and whatever a bad image
// raises.
#pragma once

#include <tuple>

#include "plinth/core/CFactory.h"
#include "velora/common/api/IComponent.h"
#include "velora/common/api/IVelcase.h"

namespace velora::common::core {

using plinth::v1::core::Counted;
using namespace plinth::v1::api::_exports::common::exception;

template <class Configuration>
class CVelcase : public plinth::v1::core::CSerializer<plinth::v1::api::Configuration>,
                 public virtual api::IVelcase<Configuration> {
 public:
  using Base = plinth::v1::core::CSerializer<plinth::v1::api::Configuration>;
  using Interface = api::IVelcase<Configuration>;
  using Pack = typename Interface::Pack;
  using Schema = typename api::EVelcaseSchema<Configuration>::Enum;
  using Family = typename api::ESupplyFamily<Configuration>::Enum;
  using Version = typename api::EVelcaseVersion<Configuration>::Enum;
  using Endianness = typename api::ISerializer::ETargetEndianness::Enum;

  [[gnu::always_inline]] CVelcase()
      : schema(Schema()),
        family(static_cast<Family>(-1)),
        channel(-1),
        version(Version()),
        compressedSize(0),
        veloraSchema(Vocabulary<Configuration>::kVeloraSchema),
        pipeline(0),
        uncompressedSize(0),
        sizeBeforeDeserialization(0),
        checksum(0) {}
  PLINTH_INLINE_DESTRUCTION(CVelcase);
  using Interface::Init;
  void Init() override;
  void Init(api::ISerializerHelper* helper, Endianness endianness) override;
  void Init(api::ISerializerHelper* helper, Endianness endianness, int size, unsigned char* data,
            bool owned) override;
  void Init(Schema newSchema, Family newFamily, int newChannel, Version newVersion,
            api::ISerializerHelper* helper, Endianness endianness) override;
  void Init(Pack* other) override;
  void Init(int size, unsigned char* data, api::ISerializerHelper* helper, Endianness endianness,
            Family expected, const char* newPathname) override;
  void Init(int size, unsigned char* data, api::ISerializerHelper* helper, Endianness endianness,
            Family expected) override;
  void Init(int size, unsigned char* data, api::ISerializerHelper* helper, Endianness endianness,
            Family expected, unsigned int extent) override;
  void Append(Pack* other) override;
  void SortComponents(bool deduplicate) override;
  Schema GetVelcaseSchema() const override;
  Family GetSupplyFamily() const override;
  int GetChannel() const override;
  Version GetVelcaseVersion() const override;
  int GetPayloadSize_Compressed() const override;
  int GetVeloraSchema() const override;
  int GetPayloadSize_Uncompressed() const override;
  api::IArray_uint8* GetArray_uint8_Pathname() override;
  const char* GetPathname() override;
  int GetSize_BeforeDeserialization() const override;
  unsigned int GetChecksum() const override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  using Base::Serialize;
  void Serialize(api::ISerializer* serializer, void* context) override;
  void Sort(bool deduplicate) override;
  bool IsEqualTo(Pack* other) const override;
  bool IsLessThan(Pack* other) const override;
  // The header's pipeline byte, in the version that has one.
  int GetPipeline() const;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

  // Inflates `in` into `out`, which it must fill exactly. Both stay the caller's. A stream that is
  // damaged, too short or too long raises `CException_General`.
  static void ZlibDecompress(api::IArray_uint8* in, api::IArray_uint8* out);
  // A new array with the deflated bytes, which must not be more than `in` has. The caller owns it.
  // Bytes that grow raise `CException_General`.
  static api::IArray_uint8* ZlibCompress(api::IArray_uint8* in);
  // zlib's allocator on the layer's memory: zeroed, null for nothing to allocate.
  static void* ZlibMemAlloc(void* opaque, unsigned int items, unsigned int size);
  static void ZlibMemFree(void* opaque, void* address);

 protected:
  void CheckMembers() const;

  Schema schema;
  Family family;
  int channel;
  Version version;
  // Bytes of the zlib stream, as the header declares them or as they were written.
  int compressedSize;
  int veloraSchema;
  int pipeline;  // 0 where the version has none
  int uncompressedSize;
  // With its final 0; made when it is first asked for.
  Counted<api::IArray_uint8> pathname;
  // 0 for a pack that was not read.
  int sizeBeforeDeserialization;
  unsigned int checksum;
};

// A pipeline's interface of a pack, and its kinds of component in the order of the file's root
// lists.
template <class Interface, class... Kinds>
struct KindsOf;

// The pack of a pipeline, over its kinds.
template <class Configuration, class Kinds>
class CVelcaseOf;

template <class Configuration, class Interface, class... Kinds>
class CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>> : public CVelcase<Configuration>,
                                                                public virtual Interface {
 public:
  using Base = CVelcase<Configuration>;
  using Pack = typename Base::Pack;
  using Schema = typename Base::Schema;
  using Family = typename Base::Family;
  using Version = typename Base::Version;
  using Endianness = typename Base::Endianness;
  template <class Kind>
  using ListOf = api::IComponentList<Configuration, Kind>;

  [[gnu::always_inline]] CVelcaseOf() : fileSize(0), fileBytes(nullptr), initializing(false) {}
  PLINTH_INLINE_DESTRUCTION(CVelcaseOf);
  using Base::Init;
  // Builds a new pack from its lists, of which it shares each.
  void Init(Schema newSchema, Family newFamily, int newChannel, Version newVersion,
            api::ISerializerHelper* helper, Endianness endianness,
            ListOf<Kinds>*... given) override;
  void Init(Pack* other) override;
  void Init(int size, unsigned char* data, api::ISerializerHelper* helper, Endianness endianness,
            Family expected, unsigned int extent) override;
  void Append(Pack* other) override;
  void SortComponents(bool deduplicate) override;
  int GetSerializedSize() override;
  using Base::Serialize;
  unsigned char* Serialize() override;  // the whole file
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 protected:
  void CheckMembers() const;

  template <class Kind>
  ListOf<Kind>* GetList() const {
    CheckThis();
    return Slot<Kind>().Get();
  }

 private:
  // The list of a kind; null only on a blank pack or while an Init runs.
  template <class Kind>
  Counted<ListOf<Kind>>& Slot() {
    return std::get<Counted<ListOf<Kind>>>(lists);
  }
  template <class Kind>
  const Counted<ListOf<Kind>>& Slot() const {
    return std::get<Counted<ListOf<Kind>>>(lists);
  }
  // Reads the next root of the image as the list of the kind; another object there raises
  // `CException_Parameter_Invalid`.
  template <class Kind>
  void ReadList();
  template <class Kind>
  void TakeListOf(Pack* other);
  // Header and stream into one block. A stream above kMaxPayload raises `CException_General`.
  void WriteFile(api::IArray_uint8* compressed, int imageSize);
  // Frees the written bytes; nothing happens where there are none.
  void DropFile();

  std::tuple<Counted<ListOf<Kinds>>...> lists;
  // Both 0 until the pack is written.
  int fileSize;
  unsigned char* fileBytes;
  bool initializing;  // an Init is running: the lists may be missing
};

}  // namespace velora::common::core
