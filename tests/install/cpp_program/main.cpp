// A caller in C++: the exported classes beside the flat functions, and the ink door's interfaces.
#include <velora/frontend/toolkit/keys.h>
#include <velora/velora.h>
#include <velora/wisp/api/door.h>

#include <cstdio>
#include <cstring>

namespace ink = velora::v1::wisp::api;

namespace {

bool KeysCompare() {
  const ReconKey key('D', 'C', 'P', 'K');
  const ReconKey same(key.getValue());
  const ReconKey gray('D', 'P');
  return key.getValue() == 0x4443504Bu && same == key && gray != key;
}

// Sideways, down and to what an object is not; and a range that is checked.
bool InterfacesCast(ink::_factory::IFactory* factory) {
  plinth::v1::api::IObject* object = nullptr;
  int code = ink::Try([&] {
    object = factory->CreateColorMap();
    ink::EPlatform::Check(ink::EPlatform::Enum(1));
    ink::ISerializer::ETargetEndianness::Check(ink::ISerializer::ETargetEndianness::Reversed);
  });
  if (code != 0) return false;
  const bool cast = dynamic_cast<ink::IColorMap*>(object) != nullptr &&
                    dynamic_cast<ink::IComponent*>(object) != nullptr &&
                    dynamic_cast<plinth::v1::api::ISerializeable*>(object) != nullptr &&
                    dynamic_cast<ink::IGrayCurve*>(object) == nullptr &&
                    dynamic_cast<ink::IArray_uint8*>(object) == nullptr &&
                    dynamic_cast<ink::IPrintModeMappings*>(object) == nullptr;
  object->Destroy();
  code = ink::Try([] { ink::EPlatform::Check(ink::EPlatform::Enum(0)); });
  if (code != 3000) return false;
  code = ink::Try([] {
    ink::ISerializer::ETargetEndianness::Check(ink::ISerializer::ETargetEndianness::Enum(3));
  });
  return cast && code == 3000;
}

}  // namespace

int main() {
  if (_velora_HelloWorld(7) != 7) return 1;
  if (std::strcmp(velora_version(), VELORA_VERSION) != 0) return 2;
  if (!KeysCompare()) return 3;
  ink::_factory::IFactory* factory = ink::Open();
  if (factory == nullptr) return 4;
  const bool cast = InterfacesCast(factory);
  factory->Destroy();
  ink::Close();
  return cast ? 0 : 5;
}
