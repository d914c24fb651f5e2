#include "tools/velora/pack_io.h"

#include "authoring/image_walk.h"

namespace velora::tools {

authoring::PackFile ReadPackFile(const std::string& path) {
  return ReadPackBytes(path, ReadBytes(path));
}

authoring::PackFile ReadPackBytes(const std::string& path, const Bytes& bytes) {
  try {
    return authoring::ReadPack(bytes);
  } catch (const std::exception& error) {
    const authoring::PackWalk walk = authoring::WalkPack(bytes);
    if (walk.breaks.empty()) throw Refusal(path, error.what());
    throw Refusal(path, "no pack: " + authoring::BreakText(walk.breaks[0]));
  }
}

}  // namespace velora::tools
