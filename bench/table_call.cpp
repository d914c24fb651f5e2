// What a table call costs: the call through libvelora.so, the same arithmetic bare, and Little CMS
// sampling the same table from its profile; each warm, and as the first in a fresh process.
//
// The pack is lossless, one RGB to CMYK table of four channels, about 30 KB inflated. The floor is
// what cannot be left out: inflate, coefficient streams, transforms, sums and a digest a channel,
// with the library's own decoders and without objects, boot, lookup or checks. A first run is timed
// inside a process that has loaded its libraries and its input, and done nothing else.
#include "authoring/table_call.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "authoring/rebuild.h"
#include "bench/request.h"
#include "velora/velora.h"

namespace {

// ---- three ways to the table

class Ways {
 public:
  explicit Ways(Request request) : request_(std::move(request)), device_(DefaultLibrary()) {
    call_.mode = Mode();
    call_.packs = {request_[kPack]};
    call_.reference = request_[kReference];
    for (int color = 0; color < 4; ++color) {
      call_.widths[color] = request_[kWidths + color];
      planes_[color] = Bytes(request_[kReference].begin() + color * VELORA_SIZE_PLANE,
                             request_[kReference].begin() + (color + 1) * VELORA_SIZE_PLANE);
      packets_[color].scalar = request_[kScalars][color];
      packets_[color].dct = request_[kDct + color];
      packets_[color].residue = request_[kResidue + color];
    }
    call_.size = VELORA_SIZE_RGB_TO_CMYK;
    stream_.assign(request_[kPack].begin() + 14, request_[kPack].end());
    image_size_ = std::stoul(TextOf(request_[kImageSize]));
    const std::string profiles = TextOf(request_[kProfiles]);
    const size_t first = profiles.find('\n');
    const size_t second = profiles.find('\n', first + 1);
    source_ = {profiles.substr(0, first), "", ProfileKind::kRgbSource};
    output_ = {profiles.substr(first + 1, second - first - 1), "", ProfileKind::kCmykOutput};
    intent_ = static_cast<Intent>(std::stoi(profiles.substr(second + 1)));
  }

  Bytes Take(const std::string& way) const {
    return way == "velora" ? Velora() : way == "floor" ? Floor() : LittleCms();
  }
  const Bytes& wanted() const { return request_[kWanted]; }
  size_t image_size() const { return image_size_; }

 private:
  Bytes Velora() const {
    TableResult result = device_.Rebuild(call_);
    Require(result.success, "the call failed");
    return std::move(result.buffer);
  }

  Bytes Floor() const {
    Bytes image(image_size_);
    uLongf size = image.size();
    Require(uncompress(image.data(), &size, stream_.data(), stream_.size()) == Z_OK,
            "the stream is broken");
    benchmark::DoNotOptimize(image.data());
    Bytes table;
    table.reserve(VELORA_SIZE_RGB_TO_CMYK);
    for (int color = 0; color < 4; ++color) {
      const Bytes plane = RebuildPlane(planes_[color], request_[kWidths + color], packets_[color]);
      benchmark::DoNotOptimize(Digest(plane));
      table.insert(table.end(), plane.begin(), plane.end());
    }
    return table;
  }

  Bytes LittleCms() const { return SampleTable(source_, output_, intent_); }

  Request request_;
  Device device_;
  TableCall call_;
  Bytes planes_[4];
  Packets packets_[4];
  Bytes stream_;
  size_t image_size_;
  Profile source_;
  Profile output_;
  Intent intent_;
};

// ---- the two times of a way

void Warm(benchmark::State& state, const Ways* ways, const std::string& way) {
  const QuietErrors quiet;
  Require(ways->Take(way) == ways->wanted(), "another table came out");
  for (auto _ : state) {
    benchmark::DoNotOptimize(ways->Take(way));
  }
  state.counters["inflated"] = static_cast<double>(ways->image_size());
}

// In the fresh process: prints the seconds of one run.
int FirstRun(const std::string& way, const std::string& path) {
  const Ways ways(Load(path));
  double seconds = 0;
  {
    const QuietErrors quiet;
    const auto start = std::chrono::steady_clock::now();
    const Bytes table = ways.Take(way);
    seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    Require(table == ways.wanted(), "another table came out");
  }
  std::printf("%.9f\n", seconds);
  return 0;
}

void First(benchmark::State& state, const std::string& program, const std::string& way,
           const std::string& path) {
  const std::string command = "'" + program + "' --first " + way + " '" + path + "'";
  for (auto _ : state) {
    std::FILE* child = popen(command.c_str(), "r");
    double seconds = -1;
    Require(child != nullptr && std::fscanf(child, "%lf", &seconds) == 1, "no fresh process");
    Require(pclose(child) == 0, "the fresh process failed");
    state.SetIterationTime(seconds);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == "--first") {
    return FirstRun(argv[2], argv[3]);
  }
  benchmark::Initialize(&argc, argv);
  const std::string path = std::string(argv[0]) + ".request";
  Request request;
  try {
    request = MakeRequest();
  } catch (const std::exception& failure) {
    Require(false, failure.what());
  }
  Save(request, path);
  const Ways ways(request);
  const std::string program = argv[0];
  for (const std::string way : {"velora", "floor", "lcms"}) {
    benchmark::RegisterBenchmark(("warm/" + way).c_str(), [&ways, way](benchmark::State& state) {
      Warm(state, &ways, way);
    })->Unit(benchmark::kMicrosecond);
  }
  for (const std::string way : {"velora", "floor", "lcms"}) {
    benchmark::RegisterBenchmark(("first/" + way).c_str(),
                                 [=](benchmark::State& state) { First(state, program, way, path); })
        ->Unit(benchmark::kMicrosecond)
        ->UseManualTime()
        ->Iterations(40);
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
