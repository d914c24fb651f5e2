#include "tests/core/node.h"

#include <stdio.h>
#include <stdlib.h>

#include "plinth/core/CArray.inl"
#include "plinth/core/CLinkedList.inl"

namespace plinth::v1::core {

template class CArrayBody<api::Configuration, velora_test::Node>;
template class CArray<api::Configuration, velora_test::Node>;
template class CLinkedList<api::Configuration, velora_test::Node>;

}  // namespace plinth::v1::core

namespace velora_test {

Image Hex(const std::string& text) {
  Image bytes;
  for (size_t i = 0; i + 1 < text.size(); i += 3) {
    bytes.push_back(static_cast<unsigned char>(strtoul(text.substr(i, 2).c_str(), nullptr, 16)));
  }
  return bytes;
}

std::string ToHex(const unsigned char* bytes, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    char digits[4];
    snprintf(digits, sizeof digits, i == 0 ? "%02X" : " %02X", bytes[i]);
    text += digits;
  }
  return text;
}

static std::vector<Held<Node>> Trees(const char*& at) {
  std::vector<Held<Node>> nodes;
  while (*at != '\0' && *at != ')') {
    char* end;
    Held<Node> node = Leaf(static_cast<int>(strtol(at, &end, 10)), 0);
    at = end + 1;
    if (*end == '=') {
      const int type = node->GetSerializeableType();
      node->Init(type, static_cast<int>(strtol(at, &end, 10)));
      at = end;
    } else {
      for (const Held<Node>& child : Trees(at)) {
        node->Add(child.get());
      }
      ++at;
    }
    at += *at == ' ';
    nodes.push_back(std::move(node));
  }
  return nodes;
}

std::vector<Held<Node>> Trees(const std::string& text) {
  const char* at = text.c_str();
  return Trees(at);
}

CoreTest::CoreTest() : helper(Make<NodeHelper>()) { helper->Init(); }

Held<ISerializer> CoreTest::Writer(Endianness::Enum endianness) {
  Held<ISerializer> serializer(Make<Serializer>());
  serializer->Init(helper.get(), endianness);
  return serializer;
}

unsigned char* CoreTest::Block(const Image& image) {
  auto* bytes = new (Slots<Configuration>().platform, false, true) unsigned char[image.size()];
  std::copy(image.begin(), image.end(), bytes);
  return bytes;
}

Held<ISerializer> CoreTest::Reader(const Image& image, Endianness::Enum endianness) {
  Held<ISerializer> serializer(Make<Serializer>());
  serializer->Init(helper.get(), endianness, static_cast<int>(image.size()), Block(image), true);
  return serializer;
}

std::string CoreTest::ImageOf(ISerializer* writer) {
  const int size = writer->GetSerializedSize();
  return ToHex(writer->Serialize(), size);
}

int CoreTest::ReadCode(Image image, const std::vector<int>& types) {
  const int before = heap.live;
  const int size = static_cast<int>(image.size());
  image.shrink_to_fit();
  const int code = CodeOf([&] {
    PLINTH_FRAME(Configuration) {
      ISerializer* serializer = Defer<ISerializer>(frame, Make<Serializer>());
      serializer->Init(helper.get(), Endianness::Reversed, size, image.data(), false);
      for (int type : types) {
        Defer(frame, serializer->Deserialize_Serializeable(type, nullptr));
      }
    }
    PLINTH_END
  });
  EXPECT_EQ(heap.live, before) << ToHex(image.data(), size);
  return code;
}

}  // namespace velora_test
