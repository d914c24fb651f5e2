// A small object to write and read, the helper that makes it, and a fixture with images in hex.
// Room: tests. Types below 30 read nothing of their own, leaf types below 100 have one byte, branch
// types from there have a count and that many nested nodes. Who makes an object owns it.
#pragma once

#include <string.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "plinth/core/CSerializer.h"
#include "tests/support/runtime_fixture.h"

namespace velora_test {

using namespace plinth::v1::core;

class Node;
using NodeArray = CArray<Configuration, Node>;
using NodeList = CLinkedList<Configuration, Node>;
// With the change of states in reach.
struct Serializer : CSerializer<Configuration> {
  using CSerializer<Configuration>::Transition;
};

template <class Class>
Class* Make() {
  return new (Slots<Configuration>().platform, false, true) Class;
}

class Node : public CSerializeable {
 public:
  static constexpr int kFirstLeaf = 30;
  static constexpr int kFirstBranch = 100;

  using CSerializeable::Init;
  // A leaf.
  void Init(int newType, int newValue) {
    CObject::Init();
    serializeableType = newType;
    value = newValue;
    children.Take(Make<NodeArray>());
    children->Init(4, 0);
  }
  void Init(int type, ISerializer* serializer, void* newContext) override {
    PLINTH_FRAME(Configuration) {
      Init(type, 0);
      context = newContext;
      if (type >= kFirstLeaf && type < kFirstBranch) {
        value = serializer->Deserialize_uint8();
      } else if (type >= kFirstBranch) {
        children->Init(4, serializer, newContext);
      }
    }
    PLINTH_CATCH {
      Delete();
      PLINTH_RETHROW;
    }
    PLINTH_END
  }
  void Serialize(ISerializer* serializer, void* newContext) override {
    serializer->Serialization_Start(serializeableType);
    if (serializeableType < kFirstBranch) {
      serializer->Serialize_uint8(static_cast<unsigned char>(value));
    } else {
      serializer->Serialize_uint28(children->GetCount());
    }
    for (int i = 0; i < children->GetCount(); ++i) {
      children->Get(i)->Serialize(serializer, newContext);
    }
    serializer->Serialization_End(serializeableType);
  }
  // Makes it a branch.
  void Add(Node* child) {
    NodeArray* one = Make<NodeArray>();
    Node* block[] = {child};
    one->Init(4, 1, block, false);
    children->Append(one);
    one->Destroy();
  }
  int GetValue() const { return value; }
  IArray<Node>* GetChildren() const { return children.Get(); }
  // With which it was read.
  void* GetContext() const { return context; }
  bool IsEqualTo(ISerializeable* other) const override {
    return static_cast<Node*>(Comparable(other))->value == value;
  }
  bool IsLessThan(ISerializeable* other) const override {
    return value < static_cast<Node*>(Comparable(other))->value;
  }
  void Delete() override {
    children.Drop();
    CSerializeable::Delete();
  }

 private:
  int value = 0;
  Counted<IArray<Node>> children;
  void* context = nullptr;
};

// Arrays for the ids 1, 2 and 4, nodes from 20 on.
class NodeHelper : public CObject, public virtual ISerializerHelper {
 public:
  ISerializeable* CreateSerializeable(int type) override {
    if (type == 1) {
      return Make<CArray_uint8>();
    }
    if (type == 2) {
      return Make<CArray_int32>();
    }
    if (type == 4) {
      return Make<NodeArray>();
    }
    if (type < 20 || type > 127) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    return Make<Node>();
  }
};

struct Destroyer {
  template <class T>
  void operator()(T* object) const {
    object->Destroy();
  }
};
// A test's reference. Never inside a callable that may raise.
template <class T>
using Held = std::unique_ptr<T, Destroyer>;

inline Held<Node> Leaf(int type, int value) {
  Node* node = Make<Node>();
  node->Init(type, value);
  return Held<Node>(node);
}

// The nodes of a text: "112(32=5 113())" is a branch over a leaf and an empty branch.
std::vector<Held<Node>> Trees(const std::string& text);

template <class Scalar, class Array>
Held<IArray<Scalar>> ArrayOf(std::initializer_list<Scalar> values) {
  Held<IArray<Scalar>> array(Make<Array>());
  array->Init(static_cast<int>(values.size()));
  std::copy(values.begin(), values.end(), array->GetElements());
  return array;
}
inline Held<IArray_uint8> Bytes(std::initializer_list<unsigned char> values) {
  return ArrayOf<unsigned char, CArray_uint8>(values);
}
inline Held<IArray_int32> Ints(std::initializer_list<int> values) {
  return ArrayOf<int, CArray_int32>(values);
}

using Image = std::vector<unsigned char>;

// "70 01 AC" and back.
Image Hex(const std::string& text);
std::string ToHex(const unsigned char* bytes, int count);

class CoreTest : public RuntimeTest<> {
 protected:
  using Endianness = ISerializer::ETargetEndianness;

  CoreTest();
  Held<ISerializer> Writer(Endianness::Enum endianness = Endianness::Reversed);
  // An exact copy on the platform's heap, so that a read behind its end is seen.
  static unsigned char* Block(const Image& image);
  // On a copy of the image, which it owns.
  Held<ISerializer> Reader(const Image& image, Endianness::Enum endianness = Endianness::Reversed);
  // The image of what has been written.
  static std::string ImageOf(ISerializer* writer);
  // Opens an image and reads a root of each type; what that raised, or 0. Leaves nothing behind.
  int ReadCode(Image image, const std::vector<int>& types);
  int ReadCode(const std::string& hex, const std::vector<int>& types) {
    return ReadCode(Hex(hex), types);
  }

  Held<ISerializerHelper> helper;
};

}  // namespace velora_test
