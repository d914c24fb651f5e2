#include "tools/velora/call_json.h"

#include <stdexcept>

namespace velora::tools {
namespace {

// The file that a member names, or the customary one if it is there.
Bytes CustomaryBytes(const Json& object, const char* name, const char* custom, const Path& folder) {
  if (object.contains(name)) return MemberBytes(object, name, folder);
  return std::filesystem::exists(folder / custom) ? ReadBytes(folder / custom) : Bytes();
}

std::vector<Bytes> ReadPacks(const Json& json, const Path& folder) {
  std::vector<Bytes> packs;
  for (const std::string& pack : Member<std::vector<std::string>>(json, "packs", {})) {
    packs.push_back(ReadBytes(folder / pack));
  }
  return packs;
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

CallFile ReadCall(const Json& json, const Path& folder) {
  CallFile file;
  authoring::TableCall& call = file.call;
  call.platform = Member(json, "platform", 1);
  call.family = Member(json, "supply_family", 0);
  call.variant = Member(json, "product_variant", 0);
  call.mode = ReadMode(json, 1, 0);
  call.size = Member(json, "buffer", 0);
  if (call.size < 0 || call.size > 1 << 24) throw std::runtime_error("\"buffer\" is no size");
  call.packs = ReadPacks(json, folder);
  call.reference = CustomaryBytes(json, "reference", "reference.bin", folder);
  call.corrections = CustomaryBytes(json, "corrections", "corrections.bin", folder);
  file.expected = CustomaryBytes(json, "expected", "expected.bin", folder);
  ReadFour(json, "widths", "cbat-", "cmyk", folder, call.widths);
  ReadFour(json, "keys", "key-", "kcmy", folder, call.keys);
  return file;
}

bool IsInkCall(const Json& json) { return json.contains("mode"); }

InkCallFile ReadInkCall(const Json& json, const Path& folder) {
  using authoring::InkKind;
  InkCallFile file;
  file.caller = {Member(json, "platform", 1), Member(json, "supply_family", 0),
                 Member(json, "product_variant", 0), ReadPacks(json, folder)};
  const struct {
    const char* name;
    InkKind kind;
  } kinds[] = {{"color", InkKind::kColorMap},
               {"gray", InkKind::kGrayCurve},
               {"neutral", InkKind::kAlternateNeutral}};
  for (const auto& [name, kind] : kinds) {
    const auto bytes = [&, name = std::string(name)](const std::string& what) {
      const std::string member = what + '_' + name, custom = what + '-' + name + ".bin";
      return CustomaryBytes(json, member.c_str(), custom.c_str(), folder);
    };
    const Bytes locator = bytes("locator");
    if (locator.empty()) continue;
    file.requests.push_back({name,
                             {kind, ReadInkMode(json), locator, Member(json, "locator_index", 0),
                              Member<std::string>(json, "pathname", "velora")},
                             bytes("expected")});
  }
  if (file.requests.empty()) throw std::runtime_error("a call without a locator");
  return file;
}

authoring::InkMode ReadInkMode(const Json& object) {
  const Json json = Member(object, "mode", Json::object());
  return {Member(json, "media_type", 0), Member(json, "quality", 0),
          Member(json, "media_subtype", 0), Member(json, "pen_set", 1),
          Member(json, "data_source", 0)};
}

Json InkModeJson(const authoring::InkMode& mode) {
  return {{"media_type", mode.media},
          {"media_subtype", mode.subtype},
          {"quality", mode.quality},
          {"pen_set", mode.pen_set},
          {"data_source", mode.source}};
}

}  // namespace velora::tools
