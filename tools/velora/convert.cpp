// velora convert: a table from one file format to another.
#include <iostream>
#include <memory>

#include "tools/velora/table_io.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

constexpr char kFormats[] = R"(
Formats, and the endings that stand for them:

  planes   .bin .raw   planes of 4913 bytes: C, M, Y, K, or R, G, B; also read from an ink record
  link8                ICC device link of 8 bits
  link16   .icc .icm   ICC device link of 16 bits; any link is read, and sampled at 17 points
  cgats    .txt .it8   CGATS text, RGB 0 to 255 and CMYK 0 to 100; RGB to CMYK alone
  csv      .csv        comma-separated values with a line of names, 0 to 255
  cube     .cube       3D LUT text; RGB to RGB alone; any grid is read, and sampled at 17 points
  png      .png        17 slices, CMYK as four gray planes one below the other
  tiff     .tif .tiff  17 slices, CMYK or RGB pixels

All formats but device links and .cube files of another grid give back every byte of a table.
)";

struct Options {
  std::string from;
  std::string to;
  std::string from_format;
  std::string to_format;
};

void Run(const Options& options, const Shared& shared) {
  const Bytes table = ReadTableFile(options.from, options.from_format);
  Outputs files;
  AddTableFile(options.to, options.to_format, table, &files);
  files.Commit();
  const int channels = authoring::ChannelsOf(table);
  if (shared.json) {
    PrintJson(
        {{"file", options.to}, {"channels", channels}, {"sha256", authoring::DigestString(table)}});
  } else {
    std::cout << options.to << ": RGB to " << (channels == 4 ? "CMYK" : "RGB")
              << ", 17 points an axis, sha256 of the planes " << authoring::DigestString(table)
              << '\n';
  }
}

}  // namespace

void AddConvert(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "convert", "Converts a table of 17 points an axis between the file formats of the field.");
  verb->footer(kFormats);
  verb->add_option("from", options->from, "File to read")->required();
  verb->add_option("to", options->to, "File to write")->required();
  verb->add_option("--from-format", options->from_format, "Its format, if the ending misleads");
  verb->add_option("--to-format", options->to_format, "Its format, if the ending misleads");
  verb->callback([options, shared] { Run(*options, *shared); });
}

}  // namespace velora::tools
