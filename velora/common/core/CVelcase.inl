// Bodies of CVelcase.h, for the files that instantiate it. One file: header, compression and
// getters are one class, and each needs the fields of the others.
#pragma once

#include <stdio.h>
#include <string.h>
#include <zlib.h>

#include "plinth/runtime/api/Trace.h"
#include "velora/common/core/CList.inl"
#include "velora/common/core/CVelcase.h"
#include "velora/common/core/Create.h"
#include "velora/common/core/PackLayout.h"
#include "velora/common/core/checksum.h"
#include "velora/reason.h"

namespace velora::common::core {

// A pack needs at least a helper.
template <class Configuration>
void CVelcase<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// The plain serializer: no header, whose fields stay blank.
template <class Configuration>
void CVelcase<Configuration>::Init(api::ISerializerHelper* helper, Endianness endianness) {
  Base::Init(helper, endianness);
}

template <class Configuration>
void CVelcase<Configuration>::Init(api::ISerializerHelper* helper, Endianness endianness, int size,
                                   unsigned char* data, bool owned) {
  Base::Init(helper, endianness, size, data, owned);
}

// The checks come before anything is taken, so no frame is needed. Where the channel is not checked
// here, the pipeline's pack checks it when it is read.
template <class Configuration>
void CVelcase<Configuration>::Init(Schema newSchema, Family newFamily, int newChannel,
                                   Version newVersion, api::ISerializerHelper* helper,
                                   Endianness endianness) {
  this->BeginInit();
  api::EVelcaseSchema<Configuration>::Check(newSchema);
  api::ESupplyFamily<Configuration>::Check(newFamily);
  if constexpr (Vocabulary<Configuration>::kChecksChannelFirst) {
    using EChannel = api::EChannel<Configuration>;
    EChannel::Check(static_cast<typename EChannel::Enum>(newChannel));
  }
  api::EVelcaseVersion<Configuration>::Check(newVersion);
  Base::Init(helper, endianness);
  // Behind the base's Init, which makes the object blank first.
  schema = newSchema;
  family = newFamily;
  channel = newChannel;
  version = newVersion;
  pipeline = Vocabulary<Configuration>::kHasPipeline ? 1 : 0;
}

// Header and sizes of the source, and its helper for writing. The lists are the derived class's.
template <class Configuration>
void CVelcase<Configuration>::Init(Pack* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Base::Init(other->GetSerializerHelper(), other->GetTargetEndianness());
  // A pack of the layer is of this class.
  const auto* source = static_cast<const CVelcase*>(other->GetThis_Concrete());
  schema = source->schema;
  family = source->family;
  channel = source->channel;
  version = source->version;
  compressedSize = source->compressedSize;
  veloraSchema = source->veloraSchema;
  pipeline = source->pipeline;
  uncompressedSize = source->uncompressedSize;
  // Shared: a path does not change once it is there.
  pathname.Share(source->pathname.Get());
  sizeBeforeDeserialization = source->sizeBeforeDeserialization;
  checksum = source->checksum;
}

template <class Configuration>
void CVelcase<Configuration>::Init(int size, unsigned char* data, api::ISerializerHelper* helper,
                                   Endianness endianness, Family expected,
                                   const char* newPathname) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame&) {
    if (newPathname == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    // Virtual, so the derived class reads its lists before the path is taken.
    this->Init(size, data, helper, endianness, expected);
    const int length = static_cast<int>(strlen(newPathname));
    if (length == 0) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    pathname.Take(Create<Configuration, plinth::v1::core::CArray_uint8>());
    pathname->Init(length + 1);
    snprintf(reinterpret_cast<char*>(pathname->GetElements()), static_cast<size_t>(length) + 1,
             "%s", newPathname);
  });
}

template <class Configuration>
void CVelcase<Configuration>::Init(int size, unsigned char* data, api::ISerializerHelper* helper,
                                   Endianness endianness, Family expected) {
  // No bound on the bytes: the header is trusted with the stream's length.
  this->Init(size, data, helper, endianness, expected, 0xFFFFFFFFu);
}

template <class Configuration>
void CVelcase<Configuration>::Init(int size, unsigned char* data, api::ISerializerHelper* helper,
                                   Endianness endianness, Family expected, unsigned int extent) {
  using Words = Vocabulary<Configuration>;
  using Layout = PackLayout<Configuration>;
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    plinth::v1::api::Trace& trace = plinth::v1::api::CurrentTrace();
    // `trace.byte` follows the field that is looked at, so a raise from here on has its place in
    // the file.
    trace.inImage = false;
    trace.byte = 0;
    // The caller's `size` is believed for the checksum alone; `extent` bounds what is read.
    if (size < 1 || size < Layout::kPayloadEnd || data == nullptr ||
        extent < static_cast<unsigned int>(Layout::kHeaderSize)) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    api::ESupplyFamily<Configuration>::Check(expected);
    const Schema readSchema = static_cast<Schema>(data[Layout::kSchema]);
    const Family readFamily = static_cast<Family>(data[Layout::kFamily]);
    const int readChannel = data[Layout::kChannel];
    const Version readVersion = static_cast<Version>(data[Layout::kVersion]);
    api::EVelcaseSchema<Configuration>::Check(readSchema);
    trace.byte = Layout::kFamily;
    api::ESupplyFamily<Configuration>::Check(readFamily);
    if (readFamily != expected) {
      trace.cause = VELORA_REASON_FAMILY;
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    trace.byte = Layout::kChannel;
    if constexpr (Words::kChecksChannelFirst) {
      using EChannel = api::EChannel<Configuration>;
      EChannel::Check(static_cast<typename EChannel::Enum>(readChannel));
    }
    trace.byte = Layout::kVersion;
    api::EVelcaseVersion<Configuration>::Check(readVersion);
    trace.byte = Layout::kPayload;
    const int payload = GetBigEndian(data + Layout::kPayload);
    if (payload == 0 || static_cast<unsigned int>(payload) > Words::kMaxPayload) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    // The size of the payload was checked ahead of the fields in it.
    const int readPipeline = Words::kHasPipeline ? data[Layout::kPipeline] : 0;
    trace.byte = Layout::kPipeline;
    if (Words::kHasPipeline && readPipeline == 0) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    trace.byte = Layout::kUncompressed;
    const int imageSize = GetBigEndian(data + Layout::kUncompressed);
    if (imageSize < 1 || imageSize > Words::kMaxUncompressed) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    // A header can lie about the stream's length: never behind the bytes that are there.
    trace.byte = Layout::kPayload;
    const int declared = payload - Layout::kPayloadExtra;
    const unsigned int present = extent - Layout::kHeaderSize;
    const int streamSize = declared > 0 && static_cast<unsigned int>(declared) > present
                               ? static_cast<int>(present)
                               : declared;
    if (streamSize < 1) {
      PLINTH_RAISE(CException_General);
    }
    trace.byte = Layout::kHeaderSize;
    using Bytes = plinth::v1::core::CArray_uint8;
    api::IArray_uint8* compressed = Defer<api::IArray_uint8>(frame, Create<Configuration, Bytes>());
    // Lent: the stream is the caller's.
    compressed->Init(streamSize, data + Layout::kHeaderSize, false);
    api::IArray_uint8* image = Defer<api::IArray_uint8>(frame, Create<Configuration, Bytes>());
    image->Init(imageSize);
    ZlibDecompress(compressed, image);
    // The image is the serializer's if this succeeds, and the frame's otherwise.
    Base::Init(helper, endianness, image->GetCount(), image->GetElements(),
               image->IsOwned_Elements());
    image->ClearOwnership_Elements();
    schema = readSchema;
    family = readFamily;
    channel = readChannel;
    version = readVersion;
    compressedSize = declared;
    veloraSchema = data[Layout::kVeloraSchema];
    pipeline = readPipeline;
    uncompressedSize = imageSize;
    sizeBeforeDeserialization = size;
    // A plain sum of bytes, modulo 2^32.
    checksum = SumBytes(data, 0, size);
  });
}

// The checks alone; the derived class appends its lists.
template <class Configuration>
void CVelcase<Configuration>::Append(Pack* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
}

// A pack without lists has nothing to sort.
template <class Configuration>
void CVelcase<Configuration>::SortComponents(bool) {}

template <class Configuration>
auto CVelcase<Configuration>::GetVelcaseSchema() const -> Schema {
  this->CheckThis();
  return schema;
}

template <class Configuration>
auto CVelcase<Configuration>::GetSupplyFamily() const -> Family {
  this->CheckThis();
  return family;
}

template <class Configuration>
auto CVelcase<Configuration>::GetChannel() const -> int {
  this->CheckThis();
  return channel;
}

template <class Configuration>
auto CVelcase<Configuration>::GetVelcaseVersion() const -> Version {
  this->CheckThis();
  return version;
}

template <class Configuration>
auto CVelcase<Configuration>::GetPayloadSize_Compressed() const -> int {
  this->CheckThis();
  return compressedSize;
}

template <class Configuration>
auto CVelcase<Configuration>::GetVeloraSchema() const -> int {
  this->CheckThis();
  return veloraSchema;
}

template <class Configuration>
auto CVelcase<Configuration>::GetPipeline() const -> int {
  this->CheckThis();
  return pipeline;
}

template <class Configuration>
auto CVelcase<Configuration>::GetPayloadSize_Uncompressed() const -> int {
  this->CheckThis();
  return uncompressedSize;
}

template <class Configuration>
auto CVelcase<Configuration>::GetSize_BeforeDeserialization() const -> int {
  this->CheckThis();
  return sizeBeforeDeserialization;
}

template <class Configuration>
auto CVelcase<Configuration>::GetChecksum() const -> unsigned int {
  this->CheckThis();
  return checksum;
}

// Changes a pack that has no path yet; out of memory raises.
template <class Configuration>
api::IArray_uint8* CVelcase<Configuration>::GetArray_uint8_Pathname() {
  this->CheckThis();
  if (!pathname) {
    constexpr char kNone[] = "Empty";
    pathname.Take(Create<Configuration, plinth::v1::core::CArray_uint8>());
    pathname->Init(static_cast<int>(sizeof kNone));
    memcpy(pathname->GetElements(), kNone, sizeof kNone);
  }
  return pathname.Get();
}

template <class Configuration>
const char* CVelcase<Configuration>::GetPathname() {
  return reinterpret_cast<const char*>(GetArray_uint8_Pathname()->GetElements());
}

template <class Configuration>
void CVelcase<Configuration>::Init(int, api::ISerializer*, void*) {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration>
void CVelcase<Configuration>::Serialize(api::ISerializer*, void*) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
void CVelcase<Configuration>::Sort(bool) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
bool CVelcase<Configuration>::IsEqualTo(Pack*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
bool CVelcase<Configuration>::IsLessThan(Pack*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
void CVelcase<Configuration>::CheckThis() const {
  CheckMembers();
}

// No reader would take a pack with sizes beyond these.
template <class Configuration>
void CVelcase<Configuration>::CheckMembers() const {
  Base::CheckMembers();
  if (compressedSize > Vocabulary<Configuration>::kMaxPayload ||
      uncompressedSize > Vocabulary<Configuration>::kMaxUncompressed) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
void CVelcase<Configuration>::Reset() {
  Base::Reset();
  schema = Schema();
  // No family and no channel has this number; 0 is one of each.
  family = static_cast<Family>(-1);
  channel = -1;
  version = Version();
  compressedSize = 0;
  veloraSchema = Vocabulary<Configuration>::kVeloraSchema;
  pipeline = 0;
  uncompressedSize = 0;
  pathname.Forget();
  sizeBeforeDeserialization = 0;
  checksum = 0;
}

template <class Configuration>
void CVelcase<Configuration>::Delete() {
  pathname.Drop();
  Base::Delete();
}

// ---- compression

// Out of memory answers null and does not raise: a jump out of zlib would leave its state half
// changed.
template <class Configuration>
void* CVelcase<Configuration>::ZlibMemAlloc(void*, unsigned int items, unsigned int size) {
  // In 64 bits, so that no product wraps; what an int does not hold is refused, as everywhere.
  const unsigned long long bytes = static_cast<unsigned long long>(items) * size;
  if (bytes == 0 || bytes > 0x7FFFFFFF) {
    return nullptr;
  }
  return operator new(static_cast<size_t>(bytes), plinth::v1::api::Slots<Configuration>().platform,
                      false, false);
}

template <class Configuration>
void CVelcase<Configuration>::ZlibMemFree(void*, void* address) {
  if (address != nullptr) {
    operator delete(address, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
}

// Stream and state are freed in the tail, whichever way the body ends: hence volatile.
template <class Configuration>
void CVelcase<Configuration>::ZlibDecompress(api::IArray_uint8* in, api::IArray_uint8* out) {
  z_stream* volatile stream = nullptr;
  volatile bool open = false;
  PLINTH_FRAME(Configuration) {
    if (in == nullptr || out == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    z_stream* inflating = Create<Configuration, z_stream>();
    memset(static_cast<void*>(inflating), 0, sizeof *inflating);
    stream = inflating;
    inflating->zalloc = &ZlibMemAlloc;
    inflating->zfree = &ZlibMemFree;
    // A window of 32 KB, with a zlib header and its checksum.
    if (inflateInit2(inflating, 15) != Z_OK) {
      plinth::v1::api::CurrentTrace().cause = VELORA_REASON_NO_MEMORY;
      PLINTH_RAISE(CException_General);
    }
    open = true;
    inflating->next_in = in->GetElements();
    inflating->avail_in = static_cast<uInt>(in->GetCount());
    inflating->next_out = out->GetElements();
    inflating->avail_out = static_cast<uInt>(out->GetCount());
    // One call: all input is there, and all room for the output.
    const int result = inflate(inflating, Z_FINISH);
    if (result != Z_STREAM_END || inflating->avail_out != 0) {
      plinth::v1::api::Trace& trace = plinth::v1::api::CurrentTrace();
      trace.byte += static_cast<int>(inflating->total_in);
      trace.cause = result == Z_MEM_ERROR ? VELORA_REASON_NO_MEMORY : trace.cause;
      PLINTH_RAISE(CException_General);
    }
  }
  PLINTH_TAIL {
    if (open) {
      inflateEnd(stream);
    }
    operator delete(stream, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  PLINTH_END
}

// Level 9 and the most memory: a pack is written once and read often.
template <class Configuration>
api::IArray_uint8* CVelcase<Configuration>::ZlibCompress(api::IArray_uint8* in) {
  z_stream* volatile stream = nullptr;
  volatile bool open = false;
  api::IArray_uint8* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    if (in == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    using Bytes = plinth::v1::core::CArray_uint8;
    api::IArray_uint8* out = Defer<api::IArray_uint8>(frame, Create<Configuration, Bytes>());
    // As many bytes as the input has: that is the room for the stream.
    out->Init(in);
    // No allocator is given: deflating uses zlib's own.
    z_stream* deflating = Create<Configuration, z_stream>();
    memset(static_cast<void*>(deflating), 0, sizeof *deflating);
    stream = deflating;
    if (deflateInit2(deflating, 9, Z_DEFLATED, 15, 9, Z_DEFAULT_STRATEGY) != Z_OK) {
      PLINTH_RAISE(CException_General);
    }
    open = true;
    deflating->next_in = in->GetElements();
    deflating->avail_in = static_cast<uInt>(in->GetCount());
    deflating->next_out = out->GetElements();
    deflating->avail_out = static_cast<uInt>(out->GetCount());
    if (deflate(deflating, Z_FINISH) != Z_STREAM_END || deflating->avail_in != 0) {
      PLINTH_RAISE(CException_General);
    }
    out->Truncate(out->GetCount() - static_cast<int>(deflating->avail_out));
    result = HandOver(frame, out);
  }
  PLINTH_TAIL {
    if (open) {
      deflateEnd(stream);
    }
    operator delete(stream, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  PLINTH_END
  return result;
}

}  // namespace velora::common::core
