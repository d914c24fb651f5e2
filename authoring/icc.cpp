#include "authoring/icc.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <tuple>

#include "authoring/lcms.h"

namespace velora::authoring {
namespace {

namespace fs = std::filesystem;

// Fills in the kind; false for profiles of no use here.
bool Classify(const std::string& path, Profile* profile) {
  OpenProfile open;
  try {
    open = Open(path);
  } catch (const std::runtime_error&) {
    return false;
  }
  const cmsProfileClassSignature device = cmsGetDeviceClass(open.get());
  if (device != cmsSigDisplayClass && device != cmsSigInputClass && device != cmsSigOutputClass) {
    return false;
  }
  switch (cmsGetColorSpace(open.get())) {
    case cmsSigRgbData:
      profile->kind = ProfileKind::kRgbSource;
      return true;
    case cmsSigCmykData:
      profile->kind = ProfileKind::kCmykOutput;
      return device == cmsSigOutputClass;
    case cmsSigGrayData:
      profile->kind = ProfileKind::kGray;
      return true;
    default:
      return false;
  }
}

std::string LowerCase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

auto SortKey(const Profile& profile) {
  const std::string name = LowerCase(profile.name);
  const auto size = profile.kind == ProfileKind::kCmykOutput ? fs::file_size(profile.path) : 0;
  return std::make_tuple(profile.kind, ~size, name != "srgb", name, profile.path);
}

std::vector<Profile> OfKind(const std::vector<Profile>& profiles, ProfileKind kind) {
  std::vector<Profile> found;
  std::copy_if(profiles.begin(), profiles.end(), std::back_inserter(found),
               [kind](const Profile& profile) { return profile.kind == kind; });
  return found;
}

}  // namespace

const char* IntentName(Intent intent) {
  static const char* const names[] = {"perceptual", "relative", "saturation", "absolute"};
  return names[static_cast<int>(intent)];
}

std::vector<std::string> ProfileFolders() {
  return {"/usr/share/color/icc", "/usr/local/share/color/icc", "/usr/share/ghostscript"};
}

std::vector<Profile> FindProfiles(const std::vector<std::string>& folders) {
  std::vector<Profile> profiles;
  std::set<std::string> seen;
  for (const std::string& folder : folders) {
    std::error_code error;
    for (fs::recursive_directory_iterator at(folder, error), end; at != end; at.increment(error)) {
      const std::string ending = LowerCase(at->path().extension().string());
      if (ending != ".icc" && ending != ".icm") continue;
      // Packages link to one another's files.
      const fs::path path = fs::canonical(at->path(), error);
      if (error || !seen.insert(path.string()).second) continue;
      Profile profile{path.string(), path.stem().string(), ProfileKind::kRgbSource};
      if (Classify(profile.path, &profile)) profiles.push_back(profile);
    }
  }
  std::sort(profiles.begin(), profiles.end(),
            [](const Profile& a, const Profile& b) { return SortKey(a) < SortKey(b); });
  return profiles;
}

Bytes SampleTable(const Profile& source, const Profile& output, Intent intent, bool black_point) {
  const int channels = output.kind == ProfileKind::kRgbSource ? kRgbChannels : kChannels;
  const Transform transform =
      MakeTransform({Open(source.path), Open(output.path)}, TYPE_RGB_8,
                    channels == kRgbChannels ? TYPE_RGB_8 : TYPE_CMYK_8, intent,
                    kExact | (black_point ? cmsFLAGS_BLACKPOINTCOMPENSATION : 0), output.path);
  Bytes rgb;
  for (const float value : GridPoints()) {
    rgb.push_back(static_cast<unsigned char>(std::lround(value * 255)));
  }
  const auto size = static_cast<std::size_t>(channels) * kPlaneSize;
  Bytes pixels(size), table(size);
  cmsDoTransform(transform.get(), rgb.data(), pixels.data(), kPlaneSize);
  for (std::size_t i = 0; i < size; ++i) {
    table[i] = pixels[i % kPlaneSize * channels + i / kPlaneSize];
  }
  return table;
}

std::vector<SampledTable> SampleTables(const std::vector<Profile>& profiles, int limit) {
  const std::vector<Profile> sources = OfKind(profiles, ProfileKind::kRgbSource);
  const std::vector<Profile> outputs = OfKind(profiles, ProfileKind::kCmykOutput);
  const Intent intents[] = {Intent::kRelative, Intent::kAbsolute, Intent::kPerceptual,
                            Intent::kSaturation};
  // (turn, output, intent, source): a further intent waits for three sources, an output for twelve.
  std::set<std::tuple<int, int, int, int>> order;
  for (int o = 0; o < static_cast<int>(outputs.size()); ++o) {
    for (int i = 0; i < 4; ++i) {
      for (int s = 0; s < static_cast<int>(sources.size()); ++s) {
        order.emplace(12 * o + 3 * i + s, o, i, s);
      }
    }
  }
  std::vector<SampledTable> tables;
  for (const auto& [turn, o, i, s] : order) {
    if (static_cast<int>(tables.size()) >= limit) break;
    SampledTable table{sources[s], outputs[o], intents[i], {}, {}};
    try {
      table.bytes = SampleTable(table.source, table.output, table.intent);
    } catch (const std::runtime_error&) {
      continue;
    }
    const bool is_news =
        std::all_of(tables.begin(), tables.end(), [&](const SampledTable& earlier) {
          return CompareBytes(earlier.bytes, table.bytes).mean >= 1;
        });
    if (!is_news) continue;
    table.digest = DigestString(table.bytes);
    tables.push_back(table);
  }
  return tables;
}

Bytes SampleCurve(const Profile& source, const Profile& gray) {
  const Transform transform = MakeTransform(Open(source.path), TYPE_RGB_8, Open(gray.path),
                                            TYPE_GRAY_8_REV, Intent::kRelative, gray.path);
  Bytes rgb;
  for (int i = 0; i < 3 * kCurveSize; ++i) rgb.push_back(static_cast<unsigned char>(i / 3));
  Bytes curve(kCurveSize);
  cmsDoTransform(transform.get(), rgb.data(), curve.data(), kCurveSize);
  return curve;
}

std::vector<SampledCurve> SampleCurves(const std::vector<Profile>& profiles, int limit) {
  std::vector<SampledCurve> curves;
  std::set<Bytes> seen;
  for (const Profile& source : OfKind(profiles, ProfileKind::kRgbSource)) {
    for (const Profile& gray : OfKind(profiles, ProfileKind::kGray)) {
      if (static_cast<int>(curves.size()) >= limit) return curves;
      SampledCurve curve{source, gray, {}};
      try {
        curve.bytes = SampleCurve(source, gray);
      } catch (const std::runtime_error&) {
        continue;
      }
      if (seen.insert(curve.bytes).second) curves.push_back(curve);
    }
  }
  return curves;
}

double Cie76(const Lab& x, const Lab& y) {
  return std::sqrt((x.L - y.L) * (x.L - y.L) + (x.a - y.a) * (x.a - y.a) +
                   (x.b - y.b) * (x.b - y.b));
}

double Cie2000(const Lab& x, const Lab& y) {
  const cmsCIELab a{x.L, x.a, x.b}, b{y.L, y.a, y.b};
  return cmsCIE2000DeltaE(&a, &b, 1, 1, 1);
}

LabMeter::LabMeter(const std::string& path)
    : transform_(MakeTransform(Open(path), TYPE_CMYK_8,
                               OpenProfile(cmsCreateLab4Profile(nullptr), cmsCloseProfile),
                               TYPE_Lab_DBL, Intent::kRelative, path)) {}

LabMeter::~LabMeter() = default;

std::vector<Lab> LabMeter::See(const Bytes& table) const {
  static_assert(sizeof(Lab) == sizeof(cmsCIELab), "Little CMS writes three doubles a point");
  std::vector<Lab> seen(kPlaneSize);
  cmsDoTransform(transform_.get(), Interleaved(table).data(), seen.data(), kPlaneSize);
  return seen;
}

RgbView::RgbView(const Profile& output)
    : transform_(MakeTransform(Open(output.path), TYPE_CMYK_8,
                               OpenProfile(cmsCreate_sRGBProfile(), cmsCloseProfile), TYPE_RGB_8,
                               Intent::kRelative, output.path)) {}

RgbView::~RgbView() = default;

Bytes RgbView::Show(const Bytes& table) const {
  Bytes rgb(3 * kPlaneSize);
  cmsDoTransform(transform_.get(), Interleaved(table).data(), rgb.data(), kPlaneSize);
  return rgb;
}

}  // namespace velora::authoring
