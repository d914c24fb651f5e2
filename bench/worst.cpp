// The worst packs that could be thought of, against a sound one of the same inflated size: a table
// call over each, at six sizes. The aim is at most ten times as long as the sound one, and at most
// 2.5 times as long at twice the size; docs/limits.md tells where they keep to it and where not.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "authoring/table_call.h"
#include "bench/heap.h"
#include "plinth/core/serializer/states.h"
#include "tests/support/image_writer.h"
#include "velora/common/Configuration.h"

namespace {

using velora_test::BlobImage;
using Bytes = std::vector<unsigned char>;
using Entry = BlobImage::Entry;
using Entries = std::vector<Entry>;

using Serializer = plinth::v1::core::CSerializer<velora::v2::fenn::api::Configuration>;
// Objects that may be reached for each entry.
constexpr size_t kPerEntry = Serializer::Deduplicated::kMaxReachedPerEntry;

// A blob's image that grows up to a size, with what its components share.
struct Growing : BlobImage {
  explicit Growing(size_t most) : most(most) {
    tags = Tags({Value(48, 2), Value(52, 4)});
    properties = Role(1);
    always = Conditions({Add(60)});
    recipe = Recipe({Data({7})});
    components.push_back(Stored(tags, properties, Value(32, 1), always, recipe));
  }
  Entry Role(unsigned role) { return Properties({Value(35, role)}); }
  // As long as there is room, with what one component takes, its reference and the padding.
  bool HasRoom(size_t component, size_t padding = 0) {
    used += component + 2 * padding;
    pads += padding;
    return used + 1000 < most && pads + 20 < MostPads();
  }
  size_t MostPads() const {
    return static_cast<size_t>(Serializer::MostEntries(static_cast<int>(most))) - Count();
  }
  // A blob that nothing refers to fills the image up, for the bounds go by its size. Entries of two
  // bytes go last, so that the others have short numbers; each lets so many more objects be
  // reached.
  Bytes Finish() {
    SetComponents(components);
    const size_t content = Image().size();
    if (content + 20 < most) {
      pads = std::min({pads, MostPads() - 10, (most - content - 10) / 2});
      if (content + 2 * pads + 20 < most) Data(Bytes(most - content - 2 * pads - 20));
    }
    Bytes image = Image();
    if (pads > 0) {
      image.push_back(80);
      image.resize(image.size() + 2 * pads);
      image.insert(image.end(), {0x80, 0});
    }
    return image;
  }

  size_t most, used = 0, pads = 0;
  Entry tags, properties, always, recipe;
  Entries components;
};

// Blobs for other print modes, with bytes and conditions of their own.
Bytes Sound(size_t size) {
  Growing image(size);
  for (unsigned i = 1; image.HasRoom(170); ++i) {
    const auto condition =
        image.Conditions({image.Value(71, i % 128), image.Value(72, i / 128), image.Add(81)});
    Bytes bytes(90, 7);
    memcpy(bytes.data(), &i, sizeof i);
    image.components.push_back(image.Stored(image.tags, image.Role(1 + i), image.Value(32, 1),
                                            condition, image.Recipe({image.Data(bytes)})));
  }
  return image.Finish();
}

// As many references as entries, from a list of tags to one of them.
Bytes References(size_t size) {
  Growing image(size);
  const size_t count = std::min(size / 4, image.MostPads() - 20);
  const Entry tags = image.Tags(Entries(count, image.Value(48, 2)));
  image.components.push_back(
      image.Stored(tags, image.Role(2), image.Value(32, 1), image.always, image.recipe));
  image.pads = count;
  return image.Finish();
}

// The same in a condition, where each has a block of its own.
Bytes ListElements(size_t size) {
  Growing image(size);
  const size_t count = std::min(size / 4, image.MostPads() - 20);
  const Entry condition = image.Conditions(Entries(count, image.Value(71, 3)));
  image.components.push_back(
      image.Stored(image.tags, image.Role(2), image.Value(32, 1), condition, image.recipe));
  image.pads = count;
  return image.Finish();
}

Bytes Dictionaries(size_t size) {
  Bytes image = Growing(0).Finish();
  const Bytes smallest = {60, 0, 0, 0x80, 0};
  while (image.size() + smallest.size() <= size) {
    image.insert(image.end(), smallest.begin(), smallest.end());
  }
  return image;
}

Bytes SmallestEntries(size_t size) {
  Growing image(size);
  image.pads = size;
  return image.Finish();
}

// Conditions of the largest kind, equal and each its own, in as many components as may reach them.
Bytes LargeConditions(size_t size) {
  Growing image(size);
  Entries conditions;
  const Entry version = image.Value(32, 1);
  for (int copy = 0; copy < 32; ++copy) {
    const Entry leaf = image.Value(71, 4), either = image.Add(81);
    Entries operators(1, leaf);
    for (int i = 0; i < 499; ++i) {
      operators.push_back(leaf);
      operators.push_back(either);
    }
    conditions.push_back(image.Conditions(operators));
    image.HasRoom(3020);
  }
  for (unsigned i = 2; image.HasRoom(36, 1020 / kPerEntry + 1 - 4); ++i) {
    image.components.push_back(image.Stored(image.tags, image.Role(i), version,
                                            conditions[i % conditions.size()], image.recipe));
  }
  return image.Finish();
}

// A chain of 1000 components, each found among all of them and among as many others as there is
// room for.
Bytes LongChain(size_t size) {
  Growing image(size);
  const Entry version = image.Value(32, 1);
  Entries roles;
  for (unsigned i = 0; i < 999; ++i) {
    roles.push_back(image.Role(1 + i));
  }
  image.components.clear();
  for (size_t i = 0; i < roles.size(); ++i) {
    const Entry recipe = i + 1 < roles.size()
                             ? image.Recipe({image.Reference(image.tags, roles[i + 1])})
                             : image.recipe;
    image.components.push_back(image.Stored(image.tags, roles[i], version, image.always, recipe));
    image.HasRoom(70);
  }
  for (unsigned i = 2000; image.HasRoom(36); ++i) {
    image.components.push_back(
        image.Stored(image.tags, image.Role(i), version, image.always, image.recipe));
  }
  return image.Finish();
}

// Components that differ in nothing but the end of what each holds twice at every level.
template <unsigned kLevels>
Bytes DeepSharing(size_t size) {
  Growing image(size);
  const Entry version = image.Value(32, 1);
  constexpr size_t kReached = (16u << kLevels);
  for (unsigned i = 2; image.HasRoom(40 + 28 * kLevels, kReached / kPerEntry); ++i) {
    Entry recipe = image.Recipe(
        {image.Data({1, static_cast<unsigned char>(i), static_cast<unsigned char>(i >> 8)})});
    for (unsigned level = 1; level < kLevels; ++level) {
      const Entry held = image.Stored(image.tags, image.properties, version, image.always, recipe);
      recipe = image.Recipe({held, held});
    }
    image.components.push_back(
        image.Stored(image.tags, image.properties, version, image.always, recipe));
  }
  return image.Finish();
}

struct Packed {
  velora::authoring::TableCall call;
  size_t image;
};

Packed Pack(const Bytes& image) {
  Packed packed;
  packed.image = image.size();
  packed.call.platform = 2;
  packed.call.mode = {2, 3, 2, 0};
  packed.call.size = 27;
  packed.call.packs = {velora_test::TonerPackOf(image)};
  if (packed.call.packs[0].size() - 14 > 409600)
    std::fprintf(stderr, "worst: too large a stream\n");
  return packed;
}

void BM_Call(benchmark::State& state, Bytes (*make)(size_t)) {
  const Packed packed = Pack(make(static_cast<size_t>(state.range(0)) << 10));
  const velora::authoring::Device device;
  const velora::authoring::QuietErrors quiet;
  bool served = false;
  long most = 0;
  for (auto _ : state) {
    const long before = bytesInUse;
    bytesAtPeak = before;
    served = device.Rebuild(packed.call).success;
    most = std::max<long>(most, bytesAtPeak - before);
  }
  state.counters["served"] = served;
  state.counters["image_KiB"] = static_cast<double>(packed.image >> 10);
  state.counters["stream_KiB"] = static_cast<double>(packed.call.packs[0].size() >> 10);
  state.counters["peak_over_image"] = static_cast<double>(most) / static_cast<double>(packed.image);
}

#define WORST(Name)                      \
  BENCHMARK_CAPTURE(BM_Call, Name, Name) \
      ->Arg(64)                          \
      ->Arg(128)                         \
      ->Arg(256)                         \
      ->Arg(512)                         \
      ->Arg(1024)                        \
      ->Arg(2048)                        \
      ->Unit(benchmark::kMillisecond)
WORST(Sound);
WORST(References);
WORST(ListElements);
WORST(Dictionaries);
WORST(SmallestEntries);
WORST(LargeConditions);
WORST(LongChain);
WORST(DeepSharing<3>);
WORST(DeepSharing<8>);
WORST(DeepSharing<13>);

}  // namespace

BENCHMARK_MAIN();
