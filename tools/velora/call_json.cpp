#include "tools/velora/call_json.h"

#include <stdexcept>

namespace velora::tools {
namespace {

// The file that a member names, or the customary one if it is there.
Bytes CustomaryBytes(const Json& object, const char* name, const char* custom, const Path& folder) {
  if (object.contains(name)) return MemberBytes(object, name, folder);
  return std::filesystem::exists(folder / custom) ? ReadBytes(folder / custom) : Bytes();
}

void ReadFour(const Json& object, const char* name, const char* custom, const char* letters,
              const Path& folder, Bytes (&four)[4]) {
  const auto names = Member<std::vector<std::string>>(object, name, {});
  for (std::size_t i = 0; i < 4; ++i) {
    if (!object.contains(name)) {
      const Path file = folder / (std::string(custom) + letters[i] + ".bin");
      if (std::filesystem::exists(file)) four[i] = ReadBytes(file);
    } else if (i < names.size() && !names[i].empty()) {
      four[i] = ReadBytes(folder / names[i]);
    }
  }
}

}  // namespace

authoring::PrintMode ReadMode(const Json& object, int table_type, int axis_type) {
  return {Member(object, "table_type", table_type), Member(object, "theme_type", 0),
          Member(object, "media_type", 0), Member(object, "axis_type", axis_type)};
}

CallFile ReadCall(const Path& path) {
  const Json json = ReadJson(path);
  const Path folder = path.parent_path();
  CallFile file;
  authoring::TableCall& call = file.call;
  call.platform = Member(json, "platform", 1);
  call.family = Member(json, "supply_family", 0);
  call.variant = Member(json, "product_variant", 0);
  call.mode = ReadMode(json, 1, 0);
  call.size = Member(json, "buffer", 0);
  if (call.size < 0 || call.size > 1 << 24) throw std::runtime_error("\"buffer\" is no size");
  for (const std::string& pack : Member<std::vector<std::string>>(json, "packs", {})) {
    call.packs.push_back(ReadBytes(folder / pack));
  }
  call.reference = CustomaryBytes(json, "reference", "reference.bin", folder);
  call.corrections = CustomaryBytes(json, "corrections", "corrections.bin", folder);
  file.expected = CustomaryBytes(json, "expected", "expected.bin", folder);
  ReadFour(json, "widths", "cbat-", "cmyk", folder, call.widths);
  ReadFour(json, "keys", "key-", "kcmy", folder, call.keys);
  return file;
}

}  // namespace velora::tools
