// Pack files: header, stream, limits of writer and reader, and the life of a pack.
#include <functional>
#include <random>

#include "tests/support/toner_fixture.h"
#include "velora/fenn/core/CVelcase.h"

namespace velora_test {
namespace {

using Version = velora::common::api::properties::IComponentVersion<fenn::Configuration>;
using Zlib = velora::common::core::CVelcase<fenn::Configuration>;

class PackTest : public TonerTest {
 protected:
  PackTest() : sound(File(Pack(127, {Stored(29, {}, {Bytes(99, Image(64, 5))})}, 4))) {}

  int ReadCode(const Image& file, int family = 4) {
    return CodeOf([&] { Read(file, family); });
  }
  // A pack whose blob does not compress below 7/8 of its size.
  fenn::IVelcase* PackOf(size_t size) {
    std::minstd_rand random(7);
    Image bytes(size);
    for (unsigned char& byte : bytes) {
      byte = static_cast<unsigned char>(random() >> 8 & 127);
    }
    return Pack(127, {Stored(29, {}, {Bytes(99, bytes)})});
  }

  Image sound;
};

TEST_F(PackTest, WhatTheHeaderSays) {
  const int size = static_cast<int>(sound.size());
  EXPECT_EQ(Image(sound.begin(), sound.begin() + 10),
            (Image{1, 4, 127, 3, 0, 0, 0, static_cast<unsigned char>(size - 8), 2, 1}));
  Image other = sound;
  other[8] = 77;  // whatever the schema and the pipeline say is passed on
  other[9] = 255;
  fenn::IVelcase* pack = Read(other, 4);
  EXPECT_EQ(pack->GetPayloadSize_Compressed(), size - 14);
  EXPECT_EQ(pack->GetSize_BeforeDeserialization(), size);
  EXPECT_EQ(pack->GetVeloraSchema(), 77);
  EXPECT_EQ(pack->GetPipeline(), 255);
  EXPECT_EQ(pack->GetPayloadSize_Uncompressed(), sound[12] << 8 | sound[13]);
}

// An overstated payload field is no failure when the stream is whole.
TEST_F(PackTest, HeaderFields) {
  const struct {
    int code;
    std::vector<const char*> changes;
  } rows[] = {{0, {"2 0", "3 F", "4 0 6 40 0", "8 0"}},
              {3000, {"0 0", "0 2", "1 5", "1 A", "2 80", "3 0", "3 10", "9 0"}},
              {4000,
               {"4 0 0 0 0", "4 0 6 40 1", "4 80 0 0 0", "4 FF FF FF FF", "A 0 0 0 0", "A 0 40 0 1",
                "A FF 0 0 0"}},
              {1, {"4 0 0 0 6", "4 0 0 0 1", "4 0 0 0 14", "A 0 0 0 1", "A 0 40 0 0", "E 0"}}};
  for (const auto& row : rows) {
    for (const char* change : row.changes) {
      EXPECT_EQ(ReadCode(Changed(sound, change)), row.code) << change;
    }
  }
  EXPECT_EQ(ReadCode(sound, 5), 3000);
  EXPECT_EQ(ReadCode(sound, 10), 3000);
  EXPECT_EQ(ReadCode(File(Pack(127, {}, 127)), 127), 0);
  Image longer = sound;
  longer.push_back(200);
  EXPECT_EQ(Read(longer, 4)->GetChecksum(), Read(sound, 4)->GetChecksum() + 200);
}

// The size alone decides on nothing but 8 bytes, the extent on what is read.
TEST_F(PackTest, SizeExtentAndPathname) {
  fenn::IVelcase* pack = Keep(factory->CreateVelcase());
  const auto init = [&](int size, unsigned char* bytes, const char* pathname) {
    return CodeOf([&] {
      pack->Init(size, bytes, helper, kReversed, fenn::ESupplyFamily::Enum(4), pathname);
    });
  };
  for (int least : {-1, 7, 8}) {
    EXPECT_EQ(init(least, sound.data(), "a/b.velcase"), least < 8 ? 3000 : 0) << least;
  }
  EXPECT_STREQ(pack->GetPathname(), "a/b.velcase");
  fenn::IVelcase* copy = Keep(factory->CreateVelcase());
  copy->Init(pack);
  EXPECT_EQ(copy->GetPathname(), pack->GetPathname());
  EXPECT_EQ(pack->GetArray_uint8_Pathname()->GetCount(), 12);
  const int size = static_cast<int>(sound.size());
  EXPECT_EQ(init(size, nullptr, "a"), 3000);
  EXPECT_EQ(init(size, sound.data(), nullptr), 3000);
  EXPECT_EQ(init(size, sound.data(), ""), 3000);
  EXPECT_EQ(CodeOf([&] { pack->GetPathname(); }), 4000);
  for (long cut : {8L, 13L, 14L, static_cast<long>(sound.size()) - 1}) {
    EXPECT_EQ(ReadCode(Image(sound.begin(), sound.begin() + cut)), cut < 14 ? 3000 : 1) << cut;
  }
}

// Each Init of a pack, on a live one. A pack that was read has a list of another kind where its
// helper makes one.
TEST_F(PackTest, AFailedInitLeavesALivePackBlank) {
  class Odd : public plinth::v1::core::CObject, public virtual ISerializerHelper {
   public:
    explicit Odd(ISerializerHelper* all) : all(all) {}
    ISerializeable* CreateSerializeable(int type) override {
      return all->CreateSerializeable(type == 121 ? 120 : type);
    }
    ISerializerHelper* all;
  };
  auto* odd = Keep(new (Slots<C>().platform, false, true) Odd(helper));
  static_cast<IObject*>(odd)->Init();
  const int size = static_cast<int>(sound.size());
  const auto family = fenn::ESupplyFamily::Enum(4);
  const auto schema = fenn::EVelcaseSchema::Enum(1);
  const auto version = fenn::EVelcaseVersion::Enum(3);
  Image header = Changed(sound, "0 2"), broken = Changed(sound, "E 0");
  fenn::IVelcase* blank = Keep(factory->CreateVelcase());
  const struct {
    int code;
    std::function<void(fenn::IVelcase*)> init;
  } rows[] = {
      {3000, [&](auto* p) { p->Init(nullptr, kReversed); }},
      {3000, [&](auto* p) { p->Init(helper, kReversed, 0, nullptr, false); }},
      {3000, [&](auto* p) { p->Init(schema, family, 127, version, nullptr, kReversed); }},
      {3000,
       [&](auto* p) {
         p->Init(schema, family, 127, fenn::EVelcaseVersion::Enum(0), helper, kReversed);
       }},
      {3000, [&](auto* p) { p->Init(static_cast<fenn::IVelcase*>(nullptr)); }},
      {4000, [&](auto* p) { p->Init(blank); }},
      {3000, [&](auto* p) { p->Init(7, sound.data(), helper, kReversed, family); }},
      {3000, [&](auto* p) { p->Init(size, header.data(), helper, kReversed, family); }},
      {1, [&](auto* p) { p->Init(size, broken.data(), helper, kReversed, family, 99u); }},
      {3000, [&](auto* p) { p->Init(size, sound.data(), helper, kReversed, family, ""); }},
      {3000, [&](auto* p) { p->Init(size, sound.data(), odd, kReversed, family); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    ExpectInitFails(Read(sound, 4), row.code, [&](auto* p) { row.init(p); });
  }
}

// A copy shares the lists, so what is appended to it shows in the first.
TEST_F(PackTest, MergingAndSorting) {
  const auto blob = [this](unsigned char byte) {
    return Stored(29, {"48=1", "35=1", "60", byte}, {Bytes(99, {byte})});
  };
  fenn::IVelcase* first = Pack(127, {blob(3), blob(2)});
  fenn::IVelcase* copy = Keep(factory->CreateVelcase());
  copy->Init(first);
  EXPECT_EQ(copy->GetPackets_Blob(), first->GetPackets_Blob());
  EXPECT_EQ(copy->GetVelcaseVersion(), 3);
  copy->Append(Pack(0, {blob(1), Stored(25, {}, {Bytes(95, {1})})}));
  EXPECT_EQ(first->GetPackets_MonoDCT()->GetArray()->GetCount(), 1);
  auto* blobs = first->GetPackets_Blob()->GetArray();
  ASSERT_EQ(blobs->GetCount(), 3);
  const auto versions = [&] {
    std::vector<int> all;
    for (int i = 0; i < blobs->GetCount(); ++i) {
      auto* version = dynamic_cast<Version*>(blobs->Get(i)->GetComponentVersion());
      all.push_back(version->GetComponentVersion());
    }
    return all;
  };
  EXPECT_EQ(versions(), (std::vector<int>{3, 2, 1}));
  copy->SortComponents(true);
  EXPECT_EQ(versions(), (std::vector<int>{1, 2, 3}));

  EXPECT_STREQ(first->GetPathname(), "Empty");
  EXPECT_EQ(CodeOf([&] { first->Append(nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { first->IsEqualTo(copy); }), 2);
  EXPECT_EQ(CodeOf([&] { first->IsLessThan(copy); }), 2);
  EXPECT_EQ(CodeOf([&] { first->Sort(true); }), 2);
  EXPECT_EQ(CodeOf([&] { first->Serialize(nullptr, nullptr); }), 2);
  EXPECT_EQ(CodeOf([&] { first->Init(); }), 3);
  EXPECT_EQ(CodeOf([&] { first->Init(0, nullptr, nullptr); }), 3);
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<fenn::IVelcase*>(nullptr)); }), 3000);
#define NAME(Name, List) #Name,
#define LIST(Name, List) , strcmp(missing, #Name) == 0 ? nullptr : first->Get##List()
  for (const char* missing : {FENN_KINDS(NAME)}) {
    EXPECT_EQ(CodeOf([&] {
                copy->Init(fenn::EVelcaseSchema::Enum(1), fenn::ESupplyFamily::Enum(0), 127,
                           fenn::EVelcaseVersion::Enum(3), helper, kReversed FENN_KINDS(LIST));
              }),
              3000)
        << missing;
  }
#undef NAME
#undef LIST
  fenn::IVelcase* doubled = Pack(127, {blob(3)});
  doubled->Append(Pack(0, {blob(3)}));
  EXPECT_EQ(CodeOf([&] { doubled->SortComponents(true); }), 1);
  EXPECT_EQ(CodeOf([&] { Veltune({Pack(127, {blob(3)}), Pack(0, {blob(3)})}); }), 1);
  EXPECT_EQ(CodeOf([&] { Veltune({Pack(127, {blob(3)}), Pack(0, {blob(4)})}); }), 0);
  EXPECT_EQ(CodeOf([&] { Veltune({Pack(127, {}, 4), Pack(0, {}, 5)}); }), 4000);
  EXPECT_EQ(CodeOf([&] { Veltune({}); }), 4000);
}

TEST_F(PackTest, LimitOfTheWriter) {
  EXPECT_EQ(CodeOf([&] { PackOf(460000)->Serialize(); }), 0);
  fenn::IVelcase* pack = PackOf(480000);
  EXPECT_EQ(CodeOf([&] { pack->Serialize(); }), 1);
  EXPECT_EQ(CodeOf([&] { pack->Serialize(); }), 4000) << "by its compressed size";
}

TEST_F(PackTest, Compression) {
  fenn::IArray_uint8* packed = Keep(Zlib::ZlibCompress(Array(Image(500, 9))));
  EXPECT_EQ(packed->Get(1), 0xDA) << "the best level";
  fenn::IArray_uint8* dense = Array({1, 2, 3});
  EXPECT_EQ(CodeOf([&] { Zlib::ZlibCompress(dense); }), 1) << "it gets no smaller";
  EXPECT_EQ(CodeOf([&] { Zlib::ZlibCompress(nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { Zlib::ZlibDecompress(nullptr, packed); }), 3000);
  EXPECT_EQ(CodeOf([&] { Zlib::ZlibDecompress(packed, nullptr); }), 3000);
  sound.back() ^= 1;
  EXPECT_EQ(ReadCode(sound), 1) << "the checksum";
  EXPECT_EQ(Zlib::ZlibMemAlloc(nullptr, 0, 5), nullptr);
  EXPECT_EQ(Zlib::ZlibMemAlloc(nullptr, 5, 0), nullptr);
}

}  // namespace
}  // namespace velora_test
