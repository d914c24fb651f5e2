// velora proof: a photograph through a table, before and after packing.
#include "authoring/proof.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "tools/velora/table_io.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr int kGap = 8;  // pixels between two proofs
constexpr int kAmplification = 16;

struct Options {
  std::string photo;
  std::vector<std::string> tables;
  std::string profile;
  std::string file = "proof.png";
};

Image ReadPhoto(const std::string& path) {
  const Bytes file = ReadBytes(path);
  const bool is_png = file.size() > 3 && file[1] == 'P' && file[2] == 'N' && file[3] == 'G';
  try {
    return is_png ? ReadPng(file, false) : ReadTiff(file, false);
  } catch (const std::runtime_error& error) {
    throw Refusal(path, std::string(error.what()) + "; a photograph is a PNG or TIFF file");
  }
}

Image Difference(const Image& a, const Image& b) {
  Image made = a;
  for (std::size_t i = 0; i < made.pixels.size(); ++i) {
    const int light = std::abs(a.pixels[i] - b.pixels[i]) * kAmplification;
    made.pixels[i] = static_cast<unsigned char>(std::min(light, 255));
  }
  return made;
}

// Side by side, on gray.
Image Joined(const std::vector<Image>& images) {
  const int count = static_cast<int>(images.size());
  Image all{count * (images[0].width + kGap) - kGap, images[0].height, 3, {}};
  all.pixels.assign(std::size_t{3} * all.width * all.height, 128);
  for (int i = 0; i < count; ++i) {
    const std::size_t row = std::size_t{3} * images[i].width;
    for (int y = 0; y < all.height; ++y) {
      const auto from = images[i].pixels.begin() + y * row;
      std::copy(
          from, from + row,
          all.pixels.begin() + 3 * (std::size_t(y) * all.width + i * (images[i].width + kGap)));
    }
  }
  return all;
}

void Run(const Options& options, const Shared& shared) {
  if (options.tables.size() > 2) throw WrongUse("--table goes once, or twice to compare");
  const Image photo = ReadPhoto(options.photo);
  const std::string profile =
      options.profile.empty() ? "" : FindProfile(options.profile, ProfileKind::kCmykOutput).path;
  std::vector<Image> images;
  for (const std::string& path : options.tables) {
    images.push_back(Proof(photo, ReadTableFile(path), profile));
  }
  std::optional<ProofDifference> difference;
  if (images.size() == 2) {
    difference = CompareProofs(images[0], images[1]);
    images.push_back(Difference(images[0], images[1]));
  }
  Outputs files;
  const Image all = Joined(images);
  files.Add(options.file,
            FormatOf(options.file) == TableFormat::kTiff ? WriteTiff(all) : WritePng(all));
  files.Commit();
  if (shared.json) {
    Json json{{"file", options.file}, {"width", all.width}, {"height", all.height}};
    if (difference) {
      json["ciede2000"] = {{"mean", difference->mean}, {"largest", difference->largest}};
    }
    PrintJson(json);
    return;
  }
  std::cout << options.file << ": " << all.width << " x " << all.height << " pixels";
  if (difference) {
    char text[80];
    std::snprintf(text, sizeof text, ", CIEDE2000 mean %.3f, largest %.2f", difference->mean,
                  difference->largest);
    std::cout << text;
  }
  std::cout << '\n';
}

}  // namespace

void AddProof(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "proof",
      "Shows a photograph as a table prints it: RGB to ink, tetrahedrally interpolated, and ink "
      "to\n"
      "the screen through the CMYK profile. With two tables both proofs and their difference, 16\n"
      "times, side by side.");
  verb->add_option("photo", options->photo, "PNG or TIFF file, taken as the table's RGB")
      ->required();
  verb->add_option("--table", options->tables, "Table of any format; twice to compare")->required();
  verb->add_option("--profile", options->profile,
                   "CMYK profile of the press: a name of velora sample --list, or a path");
  verb->add_option("-o,--file", options->file, "PNG or TIFF file to write")->capture_default_str();
  verb->callback([options, shared] { Run(*options, *shared); });
}

}  // namespace velora::tools
