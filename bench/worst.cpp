// The worst packs that could be thought of, against a sound one of the same inflated size: a table
// call over each, at six sizes. Each takes at most ten times as long as the sound one, and at most
// 2.5 times as long at twice the size.
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

using Serializer = plinth::v1::core::CSerializer<plinth::v1::api::Configuration>;

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
  // As long as there is room, with what one component and its reference take.
  bool HasRoom(size_t component) {
    used += component;
    return used + 1000 < std::min(most, packable) && Count() + 20 < MostEntries();
  }
  size_t MostEntries() const {
    return static_cast<size_t>(Serializer::MostEntries(static_cast<int>(most)));
  }
  size_t MostPads() const { return MostEntries() - Count(); }
  // A blob that nothing refers to fills the image up, for the bounds go by its size. Entries of two
  // bytes go last, so that the others have short numbers.
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
  size_t packable = 1400u << 10;  // more of the content would not fit into a pack
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

// Conditions that fill a quarter of the image, equal and each its own. Their components come to
// them in turn, for the versions decide about the order.
Bytes LargeConditions(size_t size) {
  Growing image(size);
  Entries conditions;
  const Entry leaf = image.Value(71, 4), either = image.Add(81);
  for (int copy = 0; copy < 4; ++copy) {
    Entries operators(1, leaf);
    for (size_t i = 0; i < size / 64; ++i) {
      operators.push_back(leaf);
      operators.push_back(either);
    }
    conditions.push_back(image.Conditions(operators));
    image.HasRoom(size / 16);
  }
  for (unsigned i = 2; image.HasRoom(40); ++i) {
    image.components.push_back(image.Stored(image.tags, image.Role(i), image.Value(32, i),
                                            conditions[i % conditions.size()], image.recipe));
  }
  return image.Finish();
}

// Conditions around one list, as long as the number of entries lets it be.
Bytes SharedList(size_t size) {
  Growing image(size);
  const Entry list =
      image.AddList(6, Entries(std::min(size, image.packable) / 16, image.Value(71, 4)));
  image.HasRoom(size / 8);
  const Entry version = image.Value(32, 1);
  for (unsigned i = 2; image.HasRoom(45); ++i) {
    image.components.push_back(
        image.Stored(image.tags, image.Role(i), version, image.Add(106, {}, {list}), image.recipe));
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

// A component whose recipe holds the next one twice, at each of so many levels down to its bytes.
Entry Tower(Growing& image, unsigned levels, unsigned number) {
  Entry recipe = image.Recipe({image.Data(
      {1, static_cast<unsigned char>(number), static_cast<unsigned char>(number >> 8)})});
  const Entry version = image.Value(32, 1);
  for (unsigned level = 1; level < levels; ++level) {
    const Entry held = image.Stored(image.tags, image.properties, version, image.always, recipe);
    recipe = image.Recipe({held, held});
  }
  return recipe;
}

// Components that differ in nothing but the end of their towers.
template <unsigned kLevels>
Bytes Towers(size_t size) {
  Growing image(size);
  const Entry version = image.Value(32, 1);
  for (unsigned i = 2; image.HasRoom(40 + 28 * kLevels); ++i) {
    image.components.push_back(image.Stored(image.tags, image.properties, version, image.always,
                                            Tower(image, kLevels, i)));
  }
  return image.Finish();
}

// Components whose recipes are rows of high towers, in ever another order; a third of the image is
// towers.
Bytes RowsOfTowers(size_t size) {
  Growing image(size);
  constexpr unsigned kLevels = 80, kRow = 12;
  image.packable = 800u << 10;
  const Entry version = image.Value(32, 1);
  Entries towers;
  do {
    towers.push_back(image.Stored(image.tags, image.properties, version, image.always,
                                  Tower(image, kLevels, static_cast<unsigned>(towers.size()))));
  } while (image.HasRoom(28 * kLevels) && image.used < size / 3);
  for (unsigned i = 1; image.HasRoom(68); ++i) {
    Entries row;
    unsigned rest = i * 2654435761u;
    for (unsigned place = 0; place < kRow; ++place) {
      row.push_back(towers[rest % towers.size()]);
      rest = rest / 7 + i;
    }
    row.push_back(image.Data({static_cast<unsigned char>(i), static_cast<unsigned char>(i >> 8)}));
    image.components.push_back(
        image.Stored(image.tags, image.properties, version, image.always, image.Recipe(row)));
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
WORST(SharedList);
WORST(LongChain);
WORST(Towers<3>);
WORST(Towers<13>);
WORST(Towers<80>);
WORST(RowsOfTowers);

}  // namespace

BENCHMARK_MAIN();
