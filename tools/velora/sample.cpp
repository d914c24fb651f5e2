// velora sample: an ICC table to a file.
#include <iostream>
#include <memory>

#include "tools/velora/table_io.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

struct Options {
  bool list = false;
  std::string source = "sRGB";
  std::string output;
  std::string rgb;
  std::string link;
  std::string gray;
  std::string intent = "relative";
  bool black_point = false;
  std::string file = "table.bin";
  std::string format;
};

void List(bool json) {
  Json list = Json::array();
  for (const Profile& profile : FindProfiles()) {
    if (json) {
      list.push_back(
          {{"kind", KindName(profile.kind)}, {"name", profile.name}, {"path", profile.path}});
    } else {
      std::cout << KindName(profile.kind) << '\t' << profile.name << '\t' << profile.path << '\n';
    }
  }
  if (json) PrintJson({{"profiles", list}});
}

Intent IntentOf(const std::string& name) {
  for (Intent intent :
       {Intent::kPerceptual, Intent::kRelative, Intent::kSaturation, Intent::kAbsolute}) {
    if (name == IntentName(intent)) return intent;
  }
  throw WrongUse("--intent " + name + ": expected perceptual, relative, saturation or absolute");
}

void Run(const Options& options, const Shared& shared) {
  if (options.list) return List(shared.json);
  const int outputs = !options.output.empty() + !options.rgb.empty() + !options.link.empty() +
                      !options.gray.empty();
  if (outputs != 1) {
    throw WrongUse("sample needs --output, --rgb or --link for a table, or --gray for a curve");
  }
  Outputs files;
  Bytes bytes;
  if (!options.gray.empty()) {
    bytes = SampleCurve(FindProfile(options.source, ProfileKind::kRgbSource),
                        FindProfile(options.gray, ProfileKind::kGray));
    files.Add(options.file, bytes);
  } else {
    if (!options.link.empty()) {
      bytes = ReadTableFile(options.link, "link16");
    } else {
      const bool is_rgb = options.output.empty();
      bytes = SampleTable(FindProfile(options.source, ProfileKind::kRgbSource),
                          is_rgb ? FindProfile(options.rgb, ProfileKind::kRgbSource)
                                 : FindProfile(options.output, ProfileKind::kCmykOutput),
                          IntentOf(options.intent), options.black_point);
    }
    AddTableFile(options.file, options.format, bytes, &files);
  }
  files.Commit();
  if (shared.json) {
    PrintJson({{"file", options.file},
               {"bytes", bytes.size()},
               {"zlib", CompressedSize(bytes)},
               {"sha256", DigestString(bytes)}});
  } else {
    std::cout << options.file << ": " << bytes.size() << " bytes, sha256 " << DigestString(bytes)
              << '\n';
  }
}

}  // namespace

void AddSample(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "sample",
      "Samples an RGB to CMYK table (17 points an axis, four planes, 19652 bytes), an RGB to RGB\n"
      "table (three planes, 14739 bytes) or a gray curve (256 bytes) from ICC profiles, through\n"
      "both of them and without optimisation, or a table from a device link.");
  verb->add_flag("--list", options->list, "List the installed profiles instead");
  verb->add_option("--source", options->source, "RGB profile: a name of the list, or a path")
      ->capture_default_str();
  verb->add_option("--output", options->output, "CMYK profile of the table");
  verb->add_option("--rgb", options->rgb, "RGB profile of the table, in place of a CMYK one");
  verb->add_option("--link", options->link, "Device link, in place of two profiles");
  verb->add_option("--gray", options->gray, "Gray profile of the curve");
  verb->add_option("--intent", options->intent,
                   "perceptual, relative, saturation or absolute, for a table")
      ->capture_default_str();
  verb->add_flag("--bpc", options->black_point, "Black point compensation");
  verb->add_option("-o,--file", options->file,
                   "File to write; a table in the format of its ending, see velora convert")
      ->capture_default_str();
  verb->add_option("--format", options->format, "The format, if the ending misleads");
  verb->callback([options, shared] { Run(*options, *shared); });
}

}  // namespace velora::tools
