// What an ink request costs: a whole colour map from a pack, whose inks are strings or components
// of nodes; the same answer from the cache; and, as the floor, what cannot be left out of a miss:
// the four inks' deltas decoded and their pyramids refined on plain arrays. The floor of a hit is
// the copy of the record.
//
// The pack is lossless, two print modes of RGB to CMYK tables. A miss uses an index of its own, so
// it finds the inks of earlier ones no better prepared than the first one does.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include "authoring/icc.h"
#include "authoring/ink_job.h"
#include "authoring/table_call.h"
#include "velora/velora.h"
#include "velora/wisp/api/component_lists.h"
#include "velora/wisp/core/delta_code.h"
#include "velora/wisp/core/pyramid.h"

namespace {

using namespace velora::authoring;
namespace core = velora::v1::wisp::core;

constexpr int kRepeat = 200;

void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "ink_request: %s\n", what);
    std::exit(1);
  }
}

InkProduct MakeProduct(InkForm form) {
  const std::vector<SampledTable> tables = SampleTables(FindProfiles(), 2);
  Require(tables.size() == 2, "no ICC profiles; run scripts/setup");
  InkJob job;
  job.form = form;
  job.tables = {{InkMode{0, 0, 0, 1, 0}, tables[0].bytes},
                {InkMode{1, 0, 0, 1, 0}, tables[1].bytes}};
  return AuthorInk(job);
}

// Asks once for both print modes, many times each, and lets one row have one figure of it.
void Ask(benchmark::State& state, InkForm form, double InkResult::*figure) {
  const InkProduct product = MakeProduct(form);
  const InkDevice device(DefaultLibrary());
  for (auto _ : state) {
    std::vector<InkRequest> requests;
    for (const InkAnswer& answer : product.answers) requests.push_back(answer.request);
    const std::vector<InkResult> results = device.Ask(product.caller, requests, kRepeat);
    for (std::size_t i = 0; i < results.size(); ++i) {
      Require(results[i].record == product.answers[i].expected, "another record came out");
    }
    state.SetIterationTime(results[0].*figure * 1e-6);
  }
}

// The four strings of the first print mode.
std::vector<Bytes> StringsOf(const InkProduct& product) {
  std::vector<Bytes> strings;
  for (const Component& component : product.pack.components) {
    if (component.kind == velora::v1::wisp::api::IChannelMap::kType && strings.size() < 4) {
      strings.push_back(component.recipe[0].bytes);
    }
  }
  return strings;
}

void Pyramid(benchmark::State& state) {
  const std::vector<Bytes> strings = StringsOf(MakeProduct(InkForm::kString));
  constexpr int kPlain = core::kNeutrals + core::kSeeds;
  constexpr int kDeltas = core::kDeltas9 + core::kDeltas17;
  std::vector<int> values(kPlain + kDeltas), cube(core::kCube);
  for (auto _ : state) {
    for (const Bytes& bytes : strings) {
      for (int i = 0; i < kPlain; ++i) values[i] = bytes[i];
      int* deltas = values.data() + kPlain;
      core::DecodeDeltas(bytes.data() + kPlain, static_cast<int>(bytes.size()) - kPlain, 1, deltas,
                         kDeltas);
      core::BuildCube(values.data(), values.data() + core::kNeutrals, deltas,
                      deltas + core::kDeltas9, cube.data());
      benchmark::DoNotOptimize(cube.data());
    }
  }
}

void Copy(benchmark::State& state) {
  Bytes from(VELORA_SIZE_WISP_COLOR_MAP, 1), to(from.size());
  for (auto _ : state) {
    std::memcpy(to.data(), from.data(), from.size());
    benchmark::DoNotOptimize(to.data());
    benchmark::ClobberMemory();
  }
}

BENCHMARK_CAPTURE(Ask, miss_nodes, InkForm::kNodes, &InkResult::miss)
    ->Unit(benchmark::kMicrosecond)
    ->UseManualTime()
    ->Iterations(5);
BENCHMARK_CAPTURE(Ask, miss_string, InkForm::kString, &InkResult::miss)
    ->Unit(benchmark::kMicrosecond)
    ->UseManualTime()
    ->Iterations(5);
BENCHMARK(Pyramid)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Ask, hit, InkForm::kNodes, &InkResult::hit)
    ->Unit(benchmark::kMicrosecond)
    ->UseManualTime()
    ->Iterations(5);
BENCHMARK(Copy)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
