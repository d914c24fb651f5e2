#include "authoring/lcms.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace velora::authoring {
namespace {

OpenProfile Owned(cmsHPROFILE profile, const std::string& name) {
  if (profile == nullptr) throw std::runtime_error(name + ": not an ICC profile");
  return OpenProfile(profile, cmsCloseProfile);
}

}  // namespace

OpenProfile Open(const std::string& path) {
  return Owned(cmsOpenProfileFromFile(path.c_str(), "r"), path);
}

OpenProfile Open(const Bytes& file) {
  return Owned(cmsOpenProfileFromMem(file.data(), static_cast<cmsUInt32Number>(file.size())),
               "device link");
}

Transform MakeTransform(const std::vector<OpenProfile>& chain, cmsUInt32Number from_format,
                        cmsUInt32Number to_format, Intent intent, cmsUInt32Number flags,
                        const std::string& name) {
  std::vector<cmsHPROFILE> profiles;
  for (const OpenProfile& profile : chain) profiles.push_back(profile.get());
  cmsHTRANSFORM transform = cmsCreateMultiprofileTransform(
      profiles.data(), static_cast<cmsUInt32Number>(profiles.size()), from_format, to_format,
      static_cast<cmsUInt32Number>(intent), flags);
  if (transform == nullptr) throw std::runtime_error(name + ": gives no such transform");
  return Transform(transform, cmsDeleteTransform);
}

Transform MakeTransform(const OpenProfile& from, cmsUInt32Number from_format, const OpenProfile& to,
                        cmsUInt32Number to_format, Intent intent, const std::string& name) {
  cmsHTRANSFORM transform = cmsCreateTransform(from.get(), from_format, to.get(), to_format,
                                               static_cast<cmsUInt32Number>(intent), kExact);
  if (transform == nullptr) throw std::runtime_error(name + ": gives no such transform");
  return Transform(transform, cmsDeleteTransform);
}

std::vector<float> GridPoints() {
  std::vector<float> points;
  for (int i = 0; i < kPlaneSize; ++i) {
    for (int point :
         {i / (kGridPoints * kGridPoints), i / kGridPoints % kGridPoints, i % kGridPoints}) {
      points.push_back(static_cast<float>(point) / (kGridPoints - 1));
    }
  }
  return points;
}

Bytes SampleGrid(const Transform& transform, int channels, float full) {
  std::vector<float> out(static_cast<std::size_t>(channels) * kPlaneSize);
  cmsDoTransform(transform.get(), GridPoints().data(), out.data(), kPlaneSize);
  Bytes table(out.size());
  for (std::size_t i = 0; i < out.size(); ++i) {
    const float value = std::min(std::max(out[i] / full, 0.0F), 1.0F);
    table[i % channels * kPlaneSize + i / channels] =
        static_cast<unsigned char>(std::lround(value * 255));
  }
  return table;
}

Bytes Interleaved(const Bytes& table, int channels) {
  if (table.size() != static_cast<std::size_t>(channels) * kPlaneSize) {
    throw std::runtime_error("a table of " + std::to_string(channels) + " channels has " +
                             std::to_string(channels * kPlaneSize) + " bytes");
  }
  Bytes pixels(table.size());
  for (std::size_t i = 0; i < table.size(); ++i) {
    pixels[i % kPlaneSize * channels + i / kPlaneSize] = table[i];
  }
  return pixels;
}

}  // namespace velora::authoring
