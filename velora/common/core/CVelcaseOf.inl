// Bodies of CVelcaseOf in CVelcase.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CVelcase.inl"

namespace velora::common::core {

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::Init(
    Schema newSchema, Family newFamily, int newChannel, Version newVersion,
    api::ISerializerHelper* helper, Endianness endianness, ListOf<Kinds>*... given) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame&) {
    if (((given == nullptr) || ...)) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    Base::Init(newSchema, newFamily, newChannel, newVersion, helper, endianness);
    initializing = true;
    (Slot<Kinds>().Share(given), ...);
    initializing = false;
  });
}

// A layer's packs share their lists with a copy, or have them copied.
template <class Configuration, class Interface, class... Kinds>
template <class Kind>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::TakeListOf(Pack* other) {
  ListOf<Kind>* source =
      static_cast<CVelcaseOf*>(other->GetThis_Concrete())->template GetList<Kind>();
  if constexpr (Vocabulary<Configuration>::kCopiesLists) {
    Slot<Kind>().Take(Create<Configuration, CComponentList<Configuration, Kind>>());
    Slot<Kind>()->Init(source);
  } else {
    Slot<Kind>().Share(source);
  }
}

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::Init(Pack* other) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame&) {
    Base::Init(other);
    initializing = true;
    (TakeListOf<Kinds>(other), ...);
    initializing = false;
  });
}

template <class Configuration, class Interface, class... Kinds>
template <class Kind>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::ReadList() {
  // A root of the image; its reference becomes the slot's.
  auto* read = this->Deserialize_Serializeable(Kind::kListType, nullptr);
  Slot<Kind>().Take(Nested<Configuration, ListOf<Kind>>(read));
}

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::Init(int size, unsigned char* data,
                                                                   api::ISerializerHelper* helper,
                                                                   Endianness endianness,
                                                                   Family expected,
                                                                   unsigned int extent) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame&) {
    Base::Init(size, data, helper, endianness, expected, extent);
    initializing = true;
    if constexpr (!Vocabulary<Configuration>::kChecksChannelFirst) {
      using EChannel = api::EChannel<Configuration>;
      EChannel::Check(static_cast<typename EChannel::Enum>(this->channel));
    }
    (ReadList<Kinds>(), ...);
    // The image and its records are let go: the lists hold all that is needed.
    this->Delete_States();
    initializing = false;
  });
}

// The other must be a pack of the same layer; list by list, each of its kind.
template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::Append(Pack* other) {
  Base::Append(other);
  // What was appended before a failure stays.
  auto* source = static_cast<CVelcaseOf*>(other->GetThis_Concrete());
  (Slot<Kinds>()->Append(source->template GetList<Kinds>()), ...);
}

// A raise leaves the lists before it sorted. Equals in one list raise where `deduplicate` is set.
template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::SortComponents(bool deduplicate) {
  CheckThis();
  (Slot<Kinds>()->Sort(deduplicate), ...);
}

// Bytes of the whole file. The first call writes it.
template <class Configuration, class Interface, class... Kinds>
int CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::GetSerializedSize() {
  Serialize();
  return fileSize;
}

// The file stays the pack's, and is written once: later calls give the same bytes. A pack that was
// read has no states to write with, and raises `CException_This_Invalid`.
template <class Configuration, class Interface, class... Kinds>
unsigned char* CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::Serialize() {
  CheckThis();
  if (fileBytes != nullptr) {
    return fileBytes;
  }
  PLINTH_FRAME(Configuration) {
    (Slot<Kinds>()->Serialize(this, nullptr), ...);
    // The serializer's own, not this class's: the image without the header.
    const int imageSize = Base::Base::GetSerializedSize();
    using Bytes = plinth::v1::core::CArray_uint8;
    api::IArray_uint8* image = Defer<api::IArray_uint8>(frame, Create<Configuration, Bytes>());
    image->Init(imageSize, Base::Base::Serialize(), false);
    WriteFile(Defer(frame, Base::ZlibCompress(image)), imageSize);
  }
  PLINTH_CATCH {
    DropFile();
    PLINTH_RETHROW;
  }
  PLINTH_END
  return fileBytes;
}

// Sizes and bytes are this object's at once, so that the caller's catch drops them.
template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::WriteFile(
    api::IArray_uint8* compressed, int imageSize) {
  using Layout = PackLayout<Configuration>;
  using Words = Vocabulary<Configuration>;
  const int streamSize = compressed->GetCount();
  const int size = Layout::kHeaderSize + streamSize;
  fileSize = Layout::kHeaderSize;
  this->compressedSize = streamSize;
  // A reader would refuse it.
  if (streamSize > Words::kMaxPayload) {
    PLINTH_RAISE(CException_General);
  }
  unsigned char* bytes = new (plinth::v1::api::Slots<Configuration>().platform, true,
                              true) unsigned char[static_cast<size_t>(size)];
  fileBytes = bytes;
  fileSize = size;
  bytes[Layout::kSchema] = static_cast<unsigned char>(this->schema);
  bytes[Layout::kFamily] = static_cast<unsigned char>(this->family);
  bytes[Layout::kChannel] = static_cast<unsigned char>(this->channel);
  bytes[Layout::kVersion] = static_cast<unsigned char>(this->version);
  SetBigEndian(bytes + Layout::kPayload, streamSize + Layout::kPayloadExtra);
  bytes[Layout::kVeloraSchema] = static_cast<unsigned char>(this->veloraSchema);
  if constexpr (Words::kHasPipeline) {
    bytes[Layout::kPipeline] = static_cast<unsigned char>(this->pipeline);
  }
  SetBigEndian(bytes + Layout::kUncompressed, imageSize);
  if (compressed->GetCount() != streamSize) {
    PLINTH_RAISE(CException_General);
  }
  memcpy(bytes + Layout::kHeaderSize, compressed->GetElements(), static_cast<size_t>(streamSize));
}

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::DropFile() {
  if (fileBytes != nullptr) {
    operator delete[](fileBytes, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  fileBytes = nullptr;
  fileSize = 0;
}

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::CheckThis() const {
  CheckMembers();
}

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::CheckMembers() const {
  Base::CheckMembers();
  // While an Init runs, the base class asks before the lists are there.
  const bool complete = initializing || (static_cast<bool>(Slot<Kinds>()) && ...);
  if (!complete || fileSize < 0 || (fileBytes != nullptr) != (fileSize > 0)) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::Reset() {
  Base::Reset();
  (Slot<Kinds>().Forget(), ...);
  fileSize = 0;
  fileBytes = nullptr;
  initializing = false;
}

template <class Configuration, class Interface, class... Kinds>
void CVelcaseOf<Configuration, KindsOf<Interface, Kinds...>>::Delete() {
  DropFile();
  (Slot<Kinds>().Drop(), ...);
  Base::Delete();
}

}  // namespace velora::common::core
