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
#include <fstream>
#include <string>

#include "authoring/icc.h"
#include "authoring/rebuild.h"
#include "authoring/toner_job.h"
#include "velora/velora.h"

namespace {

using namespace velora::authoring;

void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "table_call: %s\n", what);
    std::exit(1);
  }
}

// ---- the request, as one list of byte strings, so that a fresh process reads it in one go

enum Part {
  kPack,
  kImageSize,  // as text
  kReference,
  kWidths,                  // four, C, M, Y, K
  kDct = kWidths + 4,       // four
  kResidue = kDct + 4,      // four
  kScalars = kResidue + 4,  // four bytes
  kProfiles,                // source, output and intent, a line each
  kWanted,
  kParts
};

using Request = std::vector<Bytes>;

Bytes BytesOf(const std::string& text) { return Bytes(text.begin(), text.end()); }
std::string TextOf(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }

PrintMode Mode() { return PrintMode{1, 2, 1, 1}; }

// The channel that a component is for, 0 to 3 for C, M, Y, K; -1 for none.
int ColorOf(const Component& component) {
  constexpr int kChannel = 33;
  for (const Value& property : component.properties) {
    if (property.type == kChannel) {
      return property.value == 0 ? 3 : (property.value - 13) / 8;
    }
  }
  return -1;
}

Request MakeRequest() {
  const QuietErrors quiet;
  const std::vector<SampledTable> tables = SampleTables(FindProfiles(), 2);
  Require(tables.size() == 2, "no ICC profiles; run scripts/setup");
  TonerJob job;
  job.reference = tables[0].bytes;
  job.tables = {{Mode(), tables[1].bytes, {}}};
  job.settings = EncoderSettings{1, true, 0};
  const TonerProduct product = AuthorToner(job);

  // All components in one pack; they then depend on no other pack's version.
  Pack pack;
  Request request(kParts);
  request[kScalars] = Bytes(4);
  for (const NamedPack& named : product.packs) {
    for (Component component : named.pack.components) {
      constexpr int kDctType = 23, kResidueType = 24, kScalarType = 28;
      component.condition = Condition();
      pack.components.push_back(component);
      const int color = ColorOf(component);
      if (color >= 0 && component.kind == kDctType) {
        request[kDct + color] = component.recipe.back().bytes;
      } else if (color >= 0 && component.kind == kResidueType) {
        request[kResidue + color] = component.recipe.back().bytes;
      } else if (color >= 0 && component.kind == kScalarType) {
        request[kScalars][color] = component.recipe.back().bytes[0];
      }
    }
  }
  request[kPack] = WritePack(pack);
  request[kImageSize] = BytesOf(std::to_string(ReadPack(request[kPack]).image_size));
  request[kReference] = product.calls[0].call.reference;
  for (int color = 0; color < 4; ++color) {
    request[kWidths + color] = product.calls[0].call.widths[color];
  }
  request[kProfiles] = BytesOf(tables[1].source.path + "\n" + tables[1].output.path + "\n" +
                               std::to_string(static_cast<int>(tables[1].intent)) + "\n");
  request[kWanted] = tables[1].bytes;
  return request;
}

void Save(const Request& request, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  for (const Bytes& part : request) {
    file << part.size() << '\n' << TextOf(part);
  }
  Require(file.good(), "the request cannot be written");
}

Request Load(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  Request request;
  for (size_t size; request.size() < kParts && file >> size;) {
    file.get();
    std::string text(size, '\0');
    file.read(text.data(), static_cast<std::streamsize>(size));
    request.push_back(BytesOf(text));
  }
  Require(request.size() == kParts, "the request cannot be read");
  return request;
}

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
