// Samples RGB to CMYK tables and gray curves from installed ICC profiles, and measures how far two
// tables differ in colour.
//
// Room: authoring. Arguments and results are values; a LabMeter and an RgbView own a Little CMS
// transform each. A profile that does not open, or that gives no transform of the kind asked for,
// raises std::runtime_error with its path.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "authoring/table.h"

namespace velora::authoring {

enum class ProfileKind { kRgbSource, kCmykOutput, kGray };

struct Profile {
  std::string path;
  // The file's name without folder and ending.
  std::string name;
  ProfileKind kind;
};

// The ICC rendering intents, by their numbers.
enum class Intent { kPerceptual, kRelative, kSaturation, kAbsolute };
const char* IntentName(Intent intent);

// The folders where systems install ICC profiles.
std::vector<std::string> ProfileFolders();

// The profiles of the three kinds under these folders. The order is the same on every machine with
// the same files: sources by name, sRGB first; outputs from the largest file down; grays by name.
std::vector<Profile> FindProfiles(const std::vector<std::string>& folders = ProfileFolders());

// An RGB to CMYK table, and where it is from.
struct SampledTable {
  Profile source;
  Profile output;
  Intent intent;
  Bytes bytes;
  std::string digest;
};

// 17 points an axis, 8 bits: 19652 bytes, or 14739 where the output is an RGB profile; see table.h.
// `black_point`: with black point compensation.
Bytes SampleTable(const Profile& source, const Profile& output, Intent intent,
                  bool black_point = false);

// Up to `limit` tables with different digests. The first is from the first source and the first
// output, relative colorimetric: the one to take as the printer's reference. Then sources, intents
// and outputs alternate, sources the fastest. A combination whose bytes lie within 1 of an earlier
// table's on average is passed over: several packages have the same profiles.
std::vector<SampledTable> SampleTables(const std::vector<Profile>& profiles, int limit);

// A gray curve and where it is from: 256 bytes, 0 is no toner, for RGB neutrals from 0 to 255.
struct SampledCurve {
  Profile source;
  Profile gray;
  Bytes bytes;
};

Bytes SampleCurve(const Profile& source, const Profile& gray);

// Up to `limit` curves with different bytes.
std::vector<SampledCurve> SampleCurves(const std::vector<Profile>& profiles, int limit);

// A colour in CIELAB.
struct Lab {
  double L, a, b;
};

// Colour differences.
double Cie76(const Lab& x, const Lab& y);
double Cie2000(const Lab& x, const Lab& y);

// Sees tables as the relative colorimetric Lab of an output profile. Several threads may see with
// one meter.
class LabMeter {
 public:
  explicit LabMeter(const std::string& path);
  explicit LabMeter(const Profile& output) : LabMeter(output.path) {}
  ~LabMeter();

  // The 4913 grid points.
  std::vector<Lab> See(const Bytes& table) const;

 private:
  std::shared_ptr<void> transform_;
};

// Sees tables as the sRGB that a screen shows of an output profile.
class RgbView {
 public:
  explicit RgbView(const Profile& output);
  ~RgbView();

  // Three bytes, R, G, B, for each of the 4913 grid points.
  Bytes Show(const Bytes& table) const;

 private:
  std::shared_ptr<void> transform_;
};

}  // namespace velora::authoring
