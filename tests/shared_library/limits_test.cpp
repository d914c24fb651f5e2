// The largest and deepest that a table call takes, and what is one too much.
#include <gtest/gtest.h>
#include <pthread.h>

#include "tests/shared_library/table_call.h"
#include "tests/support/image_writer.h"
#include "tests/support/process_heap.h"

namespace {

using velora_test::BlobImage;

// The blob call over one pack of this image; the blob is a single byte, 7.
bool Serves(const Bytes& image) {
  TableCall call = BlobCall();
  call.packs = {velora_test::TonerPackOf(image)};
  // The front end keeps 16 bits of a size, and wants 8 or more in them.
  call.packs[0].resize((call.packs[0].size() + 65535) / 65536 * 65536 + 100);
  Bytes buffer;
  const bool served = call.Run(&buffer) == 1;
  EXPECT_EQ(buffer[0], served ? 7 : 0xA5);
  return served;
}

TEST(Limits, InflatedSize) {
  const Silence silence;
  constexpr size_t kMost = 0x400000;
  for (const size_t above : {0, 1}) {
    const auto image = [](size_t filling) {
      BlobImage writer;
      const auto tags = writer.Tags({writer.Value(48, 2), writer.Value(52, 4)});
      const auto version = writer.Value(32, 1), always = writer.Conditions({writer.Add(60)});
      const auto blob = [&](unsigned role, const Bytes& bytes) {
        return writer.Stored(tags, writer.Properties({writer.Value(35, role)}), version, always,
                             writer.Recipe({writer.Data(bytes)}));
      };
      writer.SetComponents({blob(1, {7}), blob(2, Bytes(filling, 9))});
      return writer.Image();
    };
    const size_t most = kMost - 4096;
    const Bytes made = image(most + kMost - image(most).size() + above);
    ASSERT_EQ(made.size(), kMost + above);
    EXPECT_EQ(Serves(made), above == 0);
  }
}

// Components whose recipes are one reference each, to the next one, on a thread's stack of 512 KiB.
TEST(Limits, ChainOfComponents) {
  const Silence silence;
  for (const unsigned above : {0, 1}) {
    BlobImage writer;
    const auto tags = writer.Tags({writer.Value(48, 2), writer.Value(52, 4)});
    const auto version = writer.Value(32, 1), always = writer.Conditions({writer.Add(60)});
    std::vector<BlobImage::Entry> roles, components;
    for (unsigned i = 0; i < 1000 + above; ++i) {
      roles.push_back(writer.Properties({writer.Value(35, 1 + i)}));
    }
    for (size_t i = 0; i < roles.size(); ++i) {
      const auto step =
          i + 1 < roles.size() ? writer.Reference(tags, roles[i + 1]) : writer.Data({7});
      components.push_back(writer.Stored(tags, roles[i], version, always, writer.Recipe({step})));
    }
    writer.SetComponents(components);
    struct Run {
      Bytes image;
      bool served;
    } run = {writer.Image(), false};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    // A sanitizer's frames are many times larger.
    pthread_attr_setstacksize(&attributes,
                              velora_test::CanWatchProcessHeap() ? 512 << 10 : 8 << 20);
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* given) -> void* {
                    Run* of = static_cast<Run*>(given);
                    of->served = Serves(of->image);
                    return nullptr;
                  },
                  &run),
              0);
    pthread_join(thread, nullptr);
    EXPECT_EQ(run.served, above == 0);
  }
}

}  // namespace
