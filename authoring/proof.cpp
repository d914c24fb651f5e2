#include "authoring/proof.h"

#include <algorithm>
#include <stdexcept>

#include "authoring/lcms.h"
#include "authoring/table_file.h"

namespace velora::authoring {
namespace {

cmsUInt32Number Pixels(const Image& image) {
  return static_cast<cmsUInt32Number>(image.width) * static_cast<cmsUInt32Number>(image.height);
}

}  // namespace

Image Proof(const Image& photo, const Bytes& table, const std::string& profile) {
  std::vector<OpenProfile> chain{Open(WriteLink(table, true))};
  if (ChannelsOf(table) == kChannels) {
    if (profile.empty()) throw std::runtime_error("an RGB to CMYK table needs a CMYK profile");
    chain.push_back(Open(profile));
    chain.emplace_back(cmsCreate_sRGBProfile(), cmsCloseProfile);
  }
  const Transform transform =
      MakeTransform(chain, TYPE_RGB_8, TYPE_RGB_8, Intent::kRelative, kExact, profile);
  Image proof = photo;
  cmsDoTransform(transform.get(), photo.pixels.data(), proof.pixels.data(), Pixels(photo));
  return proof;
}

ProofDifference CompareProofs(const Image& a, const Image& b) {
  const OpenProfile srgb(cmsCreate_sRGBProfile(), cmsCloseProfile);
  const OpenProfile lab(cmsCreateLab4Profile(nullptr), cmsCloseProfile);
  const Transform transform =
      MakeTransform(srgb, TYPE_RGB_8, lab, TYPE_Lab_DBL, Intent::kRelative, "sRGB");
  const cmsUInt32Number pixels = Pixels(a);
  std::vector<Lab> seen_a(pixels), seen_b(pixels);
  cmsDoTransform(transform.get(), a.pixels.data(), seen_a.data(), pixels);
  cmsDoTransform(transform.get(), b.pixels.data(), seen_b.data(), pixels);
  ProofDifference difference{0, 0};
  for (cmsUInt32Number i = 0; i < pixels; ++i) {
    const double error = Cie2000(seen_a[i], seen_b[i]);
    difference.mean += error / pixels;
    difference.largest = std::max(difference.largest, error);
  }
  return difference;
}

}  // namespace velora::authoring
