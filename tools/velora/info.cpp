// velora info: what is in a pack.
#include <iostream>
#include <memory>

#include "authoring/TypeNames.h"
#include "authoring/image_walk.h"
#include "authoring/pack_text.h"
#include "authoring/print_modes.h"
#include "tools/velora/pack_io.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

Json ToJson(const std::vector<Value>& values, const TypeNames& names) {
  Json list = Json::array();
  for (const Value& value : values) {
    Json json{{"name", names.NameOf(value.type)}, {"type", value.type}};
    if (value.bytes.empty()) {
      json["value"] = value.value;
    } else {
      json["bytes"] = value.bytes;
    }
    list.push_back(json);
  }
  return list;
}

Json ToJson(const Step& step, const TypeNames& names) {
  Json json{{"name", names.NameOf(step.type)}, {"type", step.type}};
  if (!step.bytes.empty()) {
    json["bytes"] = step.bytes.size();
    json["sha256"] = DigestString(step.bytes);
  }
  if (!step.tags.empty() || !step.properties.empty()) {
    json["tags"] = ToJson(step.tags, names);
    json["properties"] = ToJson(step.properties, names);
  }
  return json;
}

Json ToJson(const std::string& path, const PackFile& file) {
  const Pack pack = InCallersNumbers(file.pack);
  const TypeNames& names = TypeNames::Of(pack.pipeline);
  Json modes = Json::array();
  for (const ServedMode& mode : ModesOf(file.pack)) {
    modes.push_back({{"kind", mode.kind}, {"mode", mode.mode}, {"condition", mode.condition}});
  }
  Json components = Json::array();
  for (const Component& component : pack.components) {
    Json recipe = Json::array();
    for (const Step& step : component.recipe) recipe.push_back(ToJson(step, names));
    components.push_back({{"kind", names.NameOf(component.kind)},
                          {"type", component.kind},
                          {"version", component.version},
                          {"condition", component.condition.Text(names)},
                          {"tags", ToJson(component.tags, names)},
                          {"properties", ToJson(component.properties, names)},
                          {"recipe", recipe}});
  }
  return {{"file", path},
          {"pipeline", pack.pipeline == Pipeline::kToner ? "toner" : "ink"},
          {"supply_family", pack.family},
          {"channel", pack.channel},
          {"channel_name", ChannelName(pack.channel)},
          {"version", pack.version},
          {"schema", pack.schema},
          {"bytes", file.size},
          {"compressed_bytes", file.stream_size},
          {"image_bytes", file.image_size},
          {"checksum", file.checksum},
          {"print_modes", modes},
          {"components", components}};
}

struct Options {
  std::vector<std::string> paths;
  bool modes = false;
  bool components = false;
  bool image = false;
};

// A bare image, such as an ink locator, does not begin like a pack.
bool IsPack(const Bytes& bytes) { return !bytes.empty() && bytes[0] == 1; }

// The structure of packs' images, or of bare images, as far as they are sound.
void ShowImage(const std::string& path, bool is_first, const Shared& shared, Json* all) {
  const Bytes bytes = ReadBytes(path);
  PackWalk walk;
  if (IsPack(bytes)) {
    walk = WalkPack(bytes);
  } else {
    walk.pipeline = Pipeline::kInk;
    walk.walk = WalkImage(bytes, walk.pipeline);
    walk.breaks = walk.walk.breaks;
  }
  const std::string fault = walk.breaks.empty() ? "" : BreakText(walk.breaks[0]);
  if (shared.json) {
    Json dictionaries = Json::array();
    for (const ImageDictionary& dictionary : walk.walk.dictionaries) {
      Json entries = Json::array();
      for (const ImageEntry& entry : dictionary.entries) {
        entries.push_back(
            {{"byte", entry.place}, {"data", entry.data}, {"references", entry.references}});
      }
      dictionaries.push_back({{"type", dictionary.type},
                              {"name", TypeNames::Of(walk.pipeline).NameOf(dictionary.type)},
                              {"byte", dictionary.place},
                              {"first_entry", dictionary.first_entry},
                              {"entries", entries}});
    }
    all->push_back({{"file", path}, {"dictionaries", dictionaries}, {"fault", fault}});
  } else {
    std::cout << (is_first ? "" : "\n") << path << '\n' << ImageText(walk.walk, walk.pipeline);
  }
  if (!fault.empty()) throw Refusal(path, fault);
}

void Run(const Options& options, const Shared& shared) {
  Json all = Json::array();
  for (const std::string& path : options.paths) {
    if (options.image) {
      ShowImage(path, &path == &options.paths[0], shared, &all);
      continue;
    }
    const PackFile file = ReadPackFile(path);
    if (shared.json) {
      all.push_back(ToJson(path, file));
      continue;
    }
    std::cout << (&path == &options.paths[0] ? "" : "\n") << path << '\n';
    if (options.modes) {
      std::cout << ModesText(file.pack);
    } else if (options.components) {
      std::cout << HeaderText(file) << ComponentsText(file.pack);
    } else {
      const std::string modes = ModesText(file.pack);
      std::cout << HeaderText(file) << "\nComponents\n"
                << KindsText(file.pack) << (modes.empty() ? "" : "\nPrint modes\n" + modes);
    }
  }
  if (shared.json) PrintJson({{"packs", all}});
}

}  // namespace

void AddInfo(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "info",
      "Shows what is in packs: header and sizes, the kinds of components, and the print modes\n"
      "that a request finds. Print modes are in the caller's numbers.");
  verb->add_option("packs", options->paths, "Pack files")->required();
  auto* modes = verb->add_flag("--modes", options->modes, "The print modes alone, a line each");
  verb->add_flag("--components", options->components,
                 "Every component with its condition, tags, properties and recipe")
      ->excludes(modes);
  verb->add_flag("--image", options->image,
                 "The stored structure: dictionaries and entries with their bytes, of a pack or\n"
                 "of a bare image such as an ink locator, up to where a damaged one breaks");
  verb->callback([options, shared] { Run(*options, *shared); });
}

}  // namespace velora::tools
