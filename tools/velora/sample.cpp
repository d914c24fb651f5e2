// velora sample: an ICC table to a file.
#include <algorithm>
#include <iostream>
#include <memory>

#include "authoring/icc.h"
#include "tools/velora/files.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

struct Options {
  bool list = false;
  std::string source = "sRGB";
  std::string output;
  std::string gray;
  std::string intent = "relative";
  std::string file = "table.bin";
};

const char* KindName(ProfileKind kind) {
  static const char* const names[] = {"rgb", "cmyk", "gray"};
  return names[static_cast<int>(kind)];
}

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

// A profile by path, or by the name of an installed one.
Profile Find(const std::string& name, ProfileKind kind) {
  if (name.find('/') != std::string::npos) return {name, Path(name).stem().string(), kind};
  const std::vector<Profile> profiles = FindProfiles();
  const auto found = std::find_if(profiles.begin(), profiles.end(), [&](const Profile& profile) {
    return profile.kind == kind && profile.name == name;
  });
  if (found == profiles.end()) {
    throw Refusal("no installed " + std::string(KindName(kind)) + " profile is named " + name +
                  " (velora sample --list)");
  }
  return *found;
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
  if (options.output.empty() == options.gray.empty()) {
    throw WrongUse("sample needs --output for a table, or --gray for a curve");
  }
  const Profile source = Find(options.source, ProfileKind::kRgbSource);
  const Bytes bytes = options.gray.empty()
                          ? SampleTable(source, Find(options.output, ProfileKind::kCmykOutput),
                                        IntentOf(options.intent))
                          : SampleCurve(source, Find(options.gray, ProfileKind::kGray));
  Outputs files;
  files.Add(options.file, bytes);
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
      "Samples an RGB to CMYK table (17 points an axis, four planes, 19652 bytes) or a gray\n"
      "curve (256 bytes) from ICC profiles, through both of them and without optimisation.");
  verb->add_flag("--list", options->list, "List the installed profiles instead");
  verb->add_option("--source", options->source, "RGB profile: a name of the list, or a path")
      ->capture_default_str();
  verb->add_option("--output", options->output, "CMYK profile of the table");
  verb->add_option("--gray", options->gray, "Gray profile of the curve");
  verb->add_option("--intent", options->intent,
                   "perceptual, relative, saturation or absolute, for a table")
      ->capture_default_str();
  verb->add_option("-o,--file", options->file, "File to write")->capture_default_str();
  verb->callback([options, shared] { Run(*options, *shared); });
}

}  // namespace velora::tools
