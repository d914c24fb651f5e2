// The toner half: real tables into packs, and back through the table entry of libvelora.so.
#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "authoring/picture.h"
#include "authoring/toner_job.h"
#include "tools/demo/demo.h"
#include "tools/demo/report.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr int kCmyk = 1, kFuserBlob = 2;
constexpr int kAxisMono = 2;
constexpr int kLossyScalar = 8;

struct Origin {
  std::string text;
  const Profile* output = nullptr;  // whose eyes see the colours; none for what has no colour
};

// The job, and where each of its tables is from.
struct Sampled {
  const std::vector<SampledTable>& tables;  // the first is the printer's reference
  TonerJob job;
  std::vector<Origin> origins;
};

Sampled Sample(const DemoOptions& options, const Samples& samples) {
  Sampled sampled{samples.tables, {}, {}};
  const std::vector<SampledCurve>& curves = samples.curves;
  TonerJob& job = sampled.job;
  job.platform = 7;
  job.family = 4;
  job.variant = 2;
  job.printer_version = 3;
  job.supply_version = 2;
  job.reference = sampled.tables[0].bytes;
  for (int i = 1; i <= options.tables; ++i) {
    const SampledTable& table = sampled.tables[i];
    job.tables.push_back({{kCmyk, i % 11, i % 4, i % 2}, table.bytes, {}});
    sampled.origins.push_back({Told(table), &table.output});
  }
  // The printer was measured after its packs were made: a correction brings it to the third curve.
  job.gray_reference = curves[0].bytes;
  job.curves.push_back({{kCmyk, 0, 1, kAxisMono}, curves[1].bytes, curves[2].bytes});
  sampled.origins.push_back(
      {curves[1].gray.name + ", corrected to " + curves[2].gray.name, nullptr});
  Bytes blob;
  for (int i = 0; i < 48; ++i) blob.push_back(static_cast<unsigned char>(i * i));
  job.blobs.push_back({{kFuserBlob, 0, 1, 0}, blob, {}});
  sampled.origins.push_back({"settings of the fuser", nullptr});
  return sampled;
}

// What shall come out of the call at this place of the job.
const Bytes& WantedAt(const TonerJob& job, std::size_t place) {
  if (place < job.tables.size()) return job.tables[place].wanted;
  place -= job.tables.size();
  if (place >= job.curves.size()) return job.blobs[place - job.curves.size()].wanted;
  const TonerTable& curve = job.curves[place];
  return curve.corrected.empty() ? curve.wanted : curve.corrected;
}

TonerProduct Author(const TonerJob& job) {
  const QuietErrors quiet;
  return AuthorToner(job);
}

// Calls several times; the time is the median. What the library prints on the way is not shown.
TableResult Rebuild(const Device& device, const TableCall& call, const DemoOptions& options) {
  std::vector<double> times;
  TableResult result{};
  const QuietErrors quiet;
  for (int i = 0; i < options.calls; ++i) {
    result = device.Rebuild(call);
    times.push_back(result.microseconds);
  }
  std::nth_element(times.begin(), times.begin() + options.calls / 2, times.end());
  result.microseconds = times[options.calls / 2];
  return result;
}

// Rebuilds all tables of a job, a line each. Gives what came.
std::vector<Bytes> RebuildAll(const Device& device, const TonerProduct& product,
                              const Sampled& sampled, const DemoOptions& options, Report* report) {
  std::vector<Bytes> rebuilt;
  for (std::size_t i = 0; i < product.calls.size(); ++i) {
    const AuthoredCall& authored = product.calls[i];
    TableResult result = Rebuild(device, authored.call, options);
    if (!result.success) result.buffer.clear();
    const Origin& origin = sampled.origins[i];
    ReportLine line{ModeText(authored.call.mode), origin.text,   authored.pack_bytes,
                    WantedAt(sampled.job, i),     result.buffer, {},
                    {result.microseconds}};
    if (result.success && origin.output != nullptr) {
      line.errors =
          TableMeter(line.wanted, std::make_shared<LabMeter>(*origin.output)).Measure(line.rebuilt);
    }
    report->Add(line);
    rebuilt.push_back(std::move(result.buffer));
  }
  report->Finish(product.PackBytes());
  return rebuilt;
}

void WritePacks(const TonerProduct& product, const std::string& folder) {
  for (const NamedPack& pack : product.packs) {
    const std::string path = folder + "/" + pack.name + ".velcase";
    WriteFile(path, pack.file);
    std::printf("  %-8s %6zu bytes, %3zu components, version %d   %s\n", pack.name.c_str(),
                pack.file.size(), pack.pack.components.size(), pack.pack.version, path.c_str());
  }
}

// A colorant's pack of another version: the colour maps are not valid with it.
bool ShowVersions(const Device& device, const TonerProduct& product, const DemoOptions& options) {
  TableCall call = product.calls[0].call;
  Pack other = product.packs[1].pack;
  ++other.version;
  call.packs[1] = WritePack(other);
  const bool refused = !Rebuild(device, call, options).success;
  std::printf(
      "\nWith a %s pack of version %d in place of %d, the first call is %s, as the colour\n"
      "maps' conditions demand.\n",
      product.packs[1].name.c_str(), other.version, product.packs[1].pack.version,
      refused ? "refused" : "NOT REFUSED");
  return refused;
}

// All tables, each as it was sampled and as it was rebuilt; and one of them closely.
void WritePictures(const Sampled& sampled, const std::vector<Bytes>& lossless,
                   const std::vector<Bytes>& lossy, const std::string& folder) {
  std::vector<Strip> all;
  for (std::size_t i = 0; i < sampled.job.tables.size(); ++i) {
    const SampledTable& table = sampled.tables[i + 1];
    const RgbView view(table.output);
    const std::string number = std::to_string(i + 1);
    all.emplace_back(view.Show(table.bytes), number + "  " + Told(table));
    all.emplace_back(view.Show(lossless[i]), "   rebuilt from its pack");
  }
  WritePicture(folder + "/tables.png", all, 3);

  const SampledTable& table = sampled.tables[1];
  const RgbView view(table.output);
  const auto lossy_name = "scalar " + std::to_string(kLossyScalar) + ", no residue";
  WritePicture(
      folder + "/table-1.png",
      {Strip(RgbView(sampled.tables[0].output).Show(sampled.tables[0].bytes),
             "the reference in the printer: " + Told(sampled.tables[0])),
       Strip(view.Show(table.bytes), "table 1: " + Told(table)),
       Strip(view.Show(lossless[0]), "rebuilt, lossless"),
       Strip(ShowDifference(table.bytes, lossless[0], 16), "difference in C, M, Y, 16 times"),
       Strip(view.Show(lossy[0]), "rebuilt, " + lossy_name),
       Strip(ShowDifference(table.bytes, lossy[0], 16), "difference in C, M, Y, 16 times")});
}

bool IsWhole(const std::vector<Bytes>& rebuilt, std::size_t tables) {
  return std::none_of(rebuilt.begin(), rebuilt.begin() + static_cast<std::ptrdiff_t>(tables),
                      [](const Bytes& table) { return table.empty(); });
}

}  // namespace

bool RunTonerDemo(const DemoOptions& options, const Samples& samples) {
  const Sampled sampled = Sample(options, samples);
  std::filesystem::create_directories(options.folder);
  const Device device(options.library);
  std::printf("Toner. The printer's reference is %s.\n", Told(sampled.tables[0]).c_str());

  const TonerProduct product = Author(sampled.job);
  std::printf("\nPacks, all of which go into each call:\n");
  WritePacks(product, options.folder);
  Report report("Lossless: searched", {"time"});
  const std::vector<Bytes> lossless = RebuildAll(device, product, sampled, options, &report);
  const bool versions_count = ShowVersions(device, product, options);

  TonerJob lossy_job = sampled.job;
  EncoderSettings& settings = lossy_job.settings.emplace();
  settings.scalar = kLossyScalar;
  settings.residue = false;
  lossy_job.curves.clear();
  lossy_job.blobs.clear();
  Report lossy_report("Lossy: delta scalar " + std::to_string(kLossyScalar) + ", no residue",
                      {"time"});
  const std::vector<Bytes> lossy =
      RebuildAll(device, Author(lossy_job), sampled, options, &lossy_report);

  const std::size_t tables = sampled.job.tables.size();
  if (IsWhole(lossless, tables) && IsWhole(lossy, tables)) {
    WritePictures(sampled, lossless, lossy, options.folder);
    std::printf("\nPictures: %s/tables.png, %s/table-1.png\n", options.folder.c_str(),
                options.folder.c_str());
  }
  return report.sums().different == 0 && report.sums().refused == 0 &&
         lossy_report.sums().refused == 0 && versions_count;
}

}  // namespace velora::tools
