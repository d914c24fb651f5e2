#include "tools/velora/table_io.h"

#include <algorithm>

namespace velora::tools {

using namespace authoring;

TableFormat FormatFor(const std::string& name, const std::string& path) {
  if (name.empty()) return FormatOf(path);
  if (const std::optional<TableFormat> format = FormatNamed(name)) return *format;
  std::string names;
  for (const std::string& known : FormatNames()) names += (names.empty() ? "" : ", ") + known;
  throw WrongUse(name + ": no format; expected one of " + names);
}

Bytes ReadTableFile(const std::string& path, const std::string& format) {
  const TableFormat used = FormatFor(format, path);
  const Bytes file = ReadBytes(path);
  try {
    return ReadTable(file, used);
  } catch (const std::runtime_error& error) {
    throw Refusal(path, error.what());
  }
}

void AddTableFile(const std::string& path, const std::string& format, const Bytes& table,
                  Outputs* files) {
  const TableFormat used = FormatFor(format, path);
  try {
    files->Add(path, WriteTable(table, used));
  } catch (const std::runtime_error& error) {
    throw Refusal(path, error.what());
  }
}

Profile FindProfile(const std::string& name, ProfileKind kind) {
  if (name.find('/') != std::string::npos || std::filesystem::exists(name)) {
    return {name, Path(name).stem().string(), kind};
  }
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

const char* KindName(ProfileKind kind) {
  static const char* const names[] = {"rgb", "cmyk", "gray"};
  return names[static_cast<int>(kind)];
}

}  // namespace velora::tools
