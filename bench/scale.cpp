// What a pack of many components costs: writing it, reading it, and a table call over two packs
// that hold it in halves, which are read, merged, sorted and looked up in. At 100, 1000 and 4000
// components, each about a kilobyte inflated; the time a component should stay the same, and the
// peak of the heap a small multiple of the image. And what a table of a whole printer family costs:
// of one for a single platform, and of one whose print modes are for many, three times that at
// most.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/family.h"
#include "authoring/pack.h"
#include "authoring/pack_pipeline.h"
#include "authoring/table_call.h"
#include "authoring/toner_job.h"
#include "bench/heap.h"

namespace {

using namespace velora::authoring;

// ---- packs of many components

// A pack that a table call finds its blob in, and `count` components of the same kind beside it,
// for other print modes and with bytes of their own.
struct Material {
  Pack pack;
  TableCall call;
  Bytes expected;
};

Material MakeMaterial(int count) {
  // Pieces of a common stock, so that the pack is compressed about ten times, as sound packs are.
  std::mt19937 random(1);
  std::vector<Bytes> stock(64, Bytes(50));
  for (Bytes& piece : stock) {
    for (auto& byte : piece) byte = static_cast<unsigned char>(random());
  }
  const auto bytes = [&](int pieces) {
    Bytes made;
    while (pieces-- > 0) {
      const Bytes& piece = stock[random() % stock.size()];
      made.insert(made.end(), piece.begin(), piece.end());
    }
    return made;
  };
  TonerJob job;
  job.blobs = {{PrintMode{2, 0, 0, 0}, bytes(18), {}}};
  const TonerProduct product = AuthorToner(job);
  Material material;
  material.call = product.calls[0].call;
  material.expected = product.calls[0].expected;
  for (const NamedPack& named : product.packs) {
    for (const Component& component : named.pack.components) {
      material.pack.components.push_back(component);
      material.pack.components.back().condition = Condition();
    }
  }
  const TypeNames& names = TypeNames::Of(Pipeline::kToner);
  const Condition always_true = Condition::Is(names.TypeOf(Role::kCondition, "Platform"), 1);
  const int theme = names.TypeOf(Role::kCondition, "ThemeType");
  const Component model = material.pack.components.back();
  for (int i = 0; i < count; ++i) {
    Component component = model;
    component.version = 1 + i % 15;
    component.condition = always_true && Condition::Is(theme, 2 + i % 5);
    for (Value& tag : component.tags) {
      if (names.NameOf(tag.type) == "ThemeType") tag.value = 2 + i % 5;
    }
    component.recipe.back().bytes = bytes(17 + i % 4);
    material.pack.components.push_back(component);
  }
  return material;
}

const Material& MaterialOf(int count) {
  static std::map<int, Material> made;
  if (made.count(count) == 0) made[count] = MakeMaterial(count);
  return made[count];
}

void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "scale: %s\n", what);
    std::exit(1);
  }
}

// The library's own objects write and read: no file on the way, and no limit of a caller's record.
class OpenLibrary {
 public:
  OpenLibrary() { Require(pipeline_.open(), "the library cannot be opened"); }
  ~OpenLibrary() { pipeline_.close(); }
  const PackPipeline* operator->() const { return &pipeline_; }

 private:
  const PackPipeline& pipeline_ = PipelineOf(Pipeline::kToner);
};

Bytes Write(const Pack& pack) {
  const OpenLibrary library;
  WritePlace place;
  Bytes file;
  Require(library->write(pack, &place, &file) == 0, "a pack cannot be written");
  return file;
}

PackFile Read(const Bytes& bytes) {
  PackFile file{};
  file.pack.family = 0;
  const OpenLibrary library;
  Require(library->read(bytes, &file) == 0, "a pack cannot be read");
  return file;
}

// ---- measuring

struct Halves {
  TableCall call;
  int image_size = 0;  // of both
};

Halves HalvesOf(const Material& material) {
  Pack halves[2] = {material.pack, material.pack};
  for (Pack& half : halves) half.components.clear();
  for (size_t i = 0; i < material.pack.components.size(); ++i) {
    halves[i % 2].components.push_back(material.pack.components[i]);
  }
  Halves made;
  made.call = material.call;
  made.call.packs.clear();
  for (const Pack& half : halves) {
    made.call.packs.push_back(Write(half));
    made.image_size += Read(made.call.packs.back()).image_size;
    // The front end keeps 16 bits of a size, and refuses what is then negative or too small.
    Bytes& file = made.call.packs.back();
    while (static_cast<int16_t>(file.size()) < 100) file.push_back(0);
  }
  return made;
}

// Runs `work` for the benchmark, and reports what a component takes and the heap's peak over
// images.
template <class Work>
void Measure(benchmark::State& state, int image_size, const Work& work) {
  double seconds = 0;
  long most = 0;
  for (auto _ : state) {
    const long before = bytesInUse;
    bytesAtPeak = before;
    const auto start = std::chrono::steady_clock::now();
    work();
    seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    most = std::max<long>(most, bytesAtPeak - before);
  }
  state.counters["us_per_component"] =
      seconds * 1e6 / static_cast<double>(state.iterations()) / static_cast<double>(state.range(0));
  state.counters["peak_over_image"] = static_cast<double>(most) / image_size;
}

void BM_Write(benchmark::State& state) {
  const Material& material = MaterialOf(static_cast<int>(state.range(0)));
  const int image_size = Read(Write(material.pack)).image_size;
  Measure(state, image_size, [&] { Write(material.pack); });
}

void BM_Read(benchmark::State& state) {
  const Bytes file = Write(MaterialOf(static_cast<int>(state.range(0))).pack);
  Measure(state, Read(file).image_size, [&] { Read(file); });
}

void BM_Call(benchmark::State& state) {
  const Material& material = MaterialOf(static_cast<int>(state.range(0)));
  const Halves halves = HalvesOf(material);
  const Device device(DefaultLibrary());
  const QuietErrors quiet;
  Measure(state, halves.image_size, [&] {
    const TableResult result = device.Rebuild(halves.call);
    Require(result.success && result.buffer == material.expected, "the call gives other bytes");
  });
}

// A table of a whole printer family, print mode by print mode: a toner call, or an ink session.
void BM_Family(benchmark::State& state) {
  FamilyShape shape;
  shape.pipeline = state.range(0) == 0 ? Pipeline::kToner : Pipeline::kInk;
  shape.modes = static_cast<int>(state.range(1));
  shape.platforms = static_cast<int>(state.range(2));
  shape.variants = static_cast<int>(state.range(3));
  const Family family(shape);
  const Device device(DefaultLibrary());
  const InkDevice ink_device(DefaultLibrary());
  const QuietErrors quiet;
  int mode = 0;
  for (auto _ : state) {
    mode = (mode + 1) % family.mode_count();
    bool served = false;
    try {
      served =
          shape.pipeline == Pipeline::kToner
              ? device.Rebuild(family.CallOf(mode, 1, 0)).success
              : ink_device.Ask(family.CallerOf(mode, 1, 0), {family.RequestOf(mode, 1)})[0].code ==
                    0;
    } catch (const std::runtime_error&) {  // the packs do not load
    }
    if (!served) {
      state.SkipWithError("a table is refused");
      break;
    }
  }
  state.counters["file_KiB"] = family.file_size() / 1024.0;
  state.counters["image_KiB"] = family.image_size() / 1024.0;
  state.counters["components"] = family.component_count();
}

BENCHMARK(BM_Write)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Call)->Arg(100)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Family)
    ->ArgNames({"ink", "modes", "platforms", "variants"})
    ->Args({0, 200, 1, 1})
    ->Args({0, 216, 13, 6})
    ->Args({1, 200, 1, 1})
    ->Args({1, 600, 13, 6})
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
