// A pack: the serializer of its own payload, behind a header.
// Room: velora/common. What is read is copied out of the caller's bytes; a pack that was read is
// stripped of its image and cannot be written again. Failures are raised; the classes are named at
// each operation of CVelcase.
#pragma once

#include "plinth/core/api/IArray.h"
#include "plinth/core/api/ISerializer.h"
#include "velora/common/enumeration.h"

namespace velora::common::api {

using plinth::v1::api::IArray_uint8;
using plinth::v1::api::ISerializer;
using plinth::v1::api::ISerializerHelper;

template <class Configuration>
class IVelcase : public virtual ISerializer {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVelcase);
  using Pack = typename Vocabulary<Configuration>::IVelcase;
  using ETargetEndianness = ISerializer::ETargetEndianness;

  using ISerializer::Init;
  // Opens a new pack for writing. Takes a reference on the helper. A schema, family or version out
  // of range raises `CException_Parameter_Invalid`.
  virtual void Init(typename EVelcaseSchema<Configuration>::Enum schema,
                    typename ESupplyFamily<Configuration>::Enum family, int channel,
                    typename EVelcaseVersion<Configuration>::Enum version,
                    ISerializerHelper* helper, ETargetEndianness::Enum endianness) = 0;
  // The copy: header, pathname and lists, without written bytes.
  virtual void Init(Pack* other) = 0;
  // Reads a pack of a family. `size` enters the checksum; the header rules how much is read.
  // Another family than the given one raises `CException_Parameter_Invalid`. The bytes and the path
  // stay the caller's; a null or empty path raises too. A failure leaves the pack blank.
  virtual void Init(int size, unsigned char* data, ISerializerHelper* helper,
                    ETargetEndianness::Enum endianness,
                    typename ESupplyFamily<Configuration>::Enum family, const char* pathname) = 0;
  virtual void Init(int size, unsigned char* data, ISerializerHelper* helper,
                    ETargetEndianness::Enum endianness,
                    typename ESupplyFamily<Configuration>::Enum family) = 0;
  // Adds the other's components behind its own, list by list; the header stays. The components are
  // shared.
  virtual void Append(Pack* other) = 0;
  // Sorts each list. With `deduplicate`, equal components in a list raise `CException_General`.
  virtual void SortComponents(bool deduplicate) = 0;
  // The header: for which supply, in which version. Channels are in [0..127]: 127 is the printer.
  virtual typename EVelcaseSchema<Configuration>::Enum GetVelcaseSchema() const = 0;
  virtual typename ESupplyFamily<Configuration>::Enum GetSupplyFamily() const = 0;
  virtual int GetChannel() const = 0;
  virtual typename EVelcaseVersion<Configuration>::Enum GetVelcaseVersion() const = 0;
  // Bytes of the payload in the file, and of the image that it holds. Of a new pack both are 0;
  // writing sets the first.
  virtual int GetPayloadSize_Compressed() const = 0;
  // The version of the payload's form, as the header has it.
  virtual int GetVeloraSchema() const = 0;
  virtual int GetPayloadSize_Uncompressed() const = 0;
  // Where it was read from, for messages: with its final 0, and "Empty" where no name was given.
  // Both stay the pack's.
  virtual IArray_uint8* GetArray_uint8_Pathname() = 0;
  virtual const char* GetPathname() = 0;
  // The `size` that it was read with, and the sum of that many bytes; 0 for one that was not read.
  virtual int GetSize_BeforeDeserialization() const = 0;
  virtual unsigned int GetChecksum() const = 0;
  // What a pack has only because its interface is an object's: each raises. The first
  // `CException_WrongInitMethod`, the others `CException_NotImplemented`.
  virtual void Init(int type, ISerializer* serializer, void* context) = 0;
  virtual void Serialize(ISerializer* serializer, void* context) = 0;
  virtual void Sort(bool deduplicate) = 0;
  virtual bool IsEqualTo(Pack* other) const = 0;
  virtual bool IsLessThan(Pack* other) const = 0;
  using ISerializer::Serialize;

  // Reads a pack that lies in `extent` bytes: nothing behind them is read, whatever the header
  // says.
  virtual void Init(int size, unsigned char* data, ISerializerHelper* helper,
                    ETargetEndianness::Enum endianness,
                    typename ESupplyFamily<Configuration>::Enum family, unsigned int extent) = 0;
};

}  // namespace velora::common::api
