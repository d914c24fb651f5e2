// velora author --init: a job to start from.
#include <sstream>

#include "authoring/icc.h"
#include "tools/velora/author_job.h"

namespace velora::tools {

using namespace authoring;

void InitJob(const Path& path, int count) {
  if (std::filesystem::exists(path)) throw Refusal(path.string(), "is there already");
  const std::vector<SampledTable> tables = SampleTables(FindProfiles(), count + 1);
  if (static_cast<int>(tables.size()) <= count) {
    throw Refusal("too few ICC profiles for " + std::to_string(count) +
                  " tables (velora sample --list)");
  }
  const auto origin = [](const SampledTable& table) {
    return "velora sample --source " + table.source.name + " --output " + table.output.name +
           " --intent " + IntentName(table.intent);
  };
  Outputs files;
  std::ostringstream job;
  job << "// A toner job. velora author " << path.filename().string() << " -o FOLDER packs it.\n"
      << "{\n"
      << "  \"job\": 1,  // the version of this file's keys\n\n"
      << "  // Which printer: 1 to 13 or 127; 0 to 9 or 127; 0 to 5.\n"
      << "  \"platform\": 7, \"supply_family\": 4, \"product_variant\": 2,\n"
      << "  // The pack versions that the tables are good for: 1 to 15.\n"
      << "  \"printer_version\": 1, \"supply_version\": 1,\n\n"
      << "  // The printer's own table, 19652 bytes: four planes of 17 x 17 x 17 points.\n"
      << "  // " << origin(tables[0]) << " -o reference.bin\n"
      << "  \"reference\": \"reference.bin\",\n\n"
      << "  // Leave this out to lose nothing. \"scalar\" (1 to 255): larger is smaller and "
         "coarser.\n"
      << "  // \"settings\": {\"scalar\": 8, \"residue\": false, \"economy\": 0.3},\n\n"
      << "  // A table for each print mode: theme 0 to 10, media 0 to 3, axis 0 or 1.\n"
      << "  \"tables\": [\n";
  for (std::size_t i = 1; i < tables.size(); ++i) {
    const std::string name = "table-" + std::to_string(i) + ".bin";
    job << "    // " << origin(tables[i]) << " -o " << name << "\n    {\"file\": \"" << name
        << "\", \"theme_type\": " << i % 11 << ", \"media_type\": " << i % 4
        << ", \"axis_type\": " << i % 2 << '}' << (i + 1 < tables.size() ? "," : "") << '\n';
    files.Add(path.parent_path() / name, tables[i].bytes);
  }
  job << "  ]\n}\n";
  files.Add(path.parent_path() / "reference.bin", tables[0].bytes);
  const std::string text = job.str();
  files.Add(path, Bytes(text.begin(), text.end()));
  files.Commit();
}

}  // namespace velora::tools
