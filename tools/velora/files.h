// Files of bytes, and results that appear all at once.
//
// Room: tools. Values only. A file that cannot be read or written raises a Refusal with its path
// and the system's reason.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "authoring/table.h"
#include "tools/velora/refusal.h"

namespace velora::tools {

using authoring::Bytes;
using Path = std::filesystem::path;
using Json = nlohmann::ordered_json;

Bytes ReadBytes(const Path& path);

// The files that a run makes. They are written beside their places and renamed when all of them
// are whole, so a run that fails, or is stopped, changes none.
class Outputs {
 public:
  // Keeps the bytes for `Commit`, in place of an earlier file of this path.
  void Add(const Path& path, Bytes bytes);
  void Add(const Path& path, const Json& json);

  // Makes the folders and puts the files in place. A device or a pipe is written to directly.
  void Commit();

 private:
  struct File {
    Path path;
    Bytes bytes;
  };
  std::vector<File> files_;
};

// JSON as text. A file's name that is no UTF-8 shows replacement characters.
std::string JsonText(const Json& json);

}  // namespace velora::tools
