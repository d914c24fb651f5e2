// The toner fixture with images of single objects.
// Room: tests.
#pragma once

#include "tests/support/toner_fixture.h"

namespace velora_test {

class CommonTest : public TonerTest {
 protected:
  // The image of one root object, and the root of one type that an image holds.
  Image ImageOf(ISerializeable* object) {
    fenn::ISerializer* writer = Keep(factory->CreateSerializer());
    writer->Init(helper, kReversed);
    object->Serialize(writer, nullptr);
    const int size = writer->GetSerializedSize();
    return Image(writer->Serialize(), writer->Serialize() + size);
  }
  template <class T = ISerializeable>
  T* FromImage(const Image& image, int type) {
    fenn::ISerializer* reader = Keep(factory->CreateSerializer());
    reader->Init(helper, kReversed, static_cast<int>(image.size()), Array(image)->GetElements(),
                 false);
    return dynamic_cast<T*>(Keep(reader->Deserialize_Serializeable(type, nullptr)));
  }
  fenn::IComponent* Blank(int type) {
    return dynamic_cast<fenn::IComponent*>(Keep(helper->CreateSerializeable(type)));
  }
};

}  // namespace velora_test
