// Little CMS with owners that close what they opened.
//
// Room: authoring, for its own files. What cannot be opened raises std::runtime_error with the name
// that it was given.
#pragma once

#include <lcms2.h>

#include <memory>
#include <string>
#include <vector>

#include "authoring/icc.h"
#include "authoring/table.h"

namespace velora::authoring {

using OpenProfile = std::shared_ptr<void>;
using Transform = std::shared_ptr<void>;

// Every sample goes the whole way through the profiles, so that a table depends on them and not on
// what Little CMS remembers or precalculates.
constexpr cmsUInt32Number kExact = cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE;

OpenProfile Open(const std::string& path);
OpenProfile Open(const Bytes& file);

// `name` is for the message.
Transform MakeTransform(const std::vector<OpenProfile>& chain, cmsUInt32Number from_format,
                        cmsUInt32Number to_format, Intent intent, cmsUInt32Number flags,
                        const std::string& name);
Transform MakeTransform(const OpenProfile& from, cmsUInt32Number from_format, const OpenProfile& to,
                        cmsUInt32Number to_format, Intent intent, const std::string& name);

// The 4913 grid points as R, G, B of 0 to 1.
std::vector<float> GridPoints();

// A table that a transform from RGB_FLT makes at the grid points, in `channels` floats a point, of
// 0 to `full`.
Bytes SampleGrid(const Transform& transform, int channels, float full);

// Interleaved channels of a table, as Little CMS takes them. A table with another number of
// channels raises std::runtime_error.
Bytes Interleaved(const Bytes& table, int channels = kChannels);

}  // namespace velora::authoring
