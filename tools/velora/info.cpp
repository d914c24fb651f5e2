// velora info: what is in a pack.
#include <iostream>
#include <memory>

#include "authoring/pack_text.h"
#include "authoring/print_modes.h"
#include "authoring/words.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

Json ToJson(const std::vector<Value>& values, const Words& words) {
  Json list = Json::array();
  for (const Value& value : values) {
    Json json{{"name", words.NameOf(value.type)}, {"type", value.type}};
    if (value.bytes.empty()) {
      json["value"] = value.value;
    } else {
      json["bytes"] = value.bytes;
    }
    list.push_back(json);
  }
  return list;
}

Json ToJson(const Step& step, const Words& words) {
  Json json{{"name", words.NameOf(step.type)}, {"type", step.type}};
  if (!step.bytes.empty()) {
    json["bytes"] = step.bytes.size();
    json["sha256"] = DigestString(step.bytes);
  }
  if (!step.tags.empty() || !step.properties.empty()) {
    json["tags"] = ToJson(step.tags, words);
    json["properties"] = ToJson(step.properties, words);
  }
  return json;
}

Json ToJson(const std::string& path, const PackFile& file) {
  const Pack pack = InCallersNumbers(file.pack);
  const Words& words = Words::Of(pack.pipeline);
  Json modes = Json::array();
  for (const ServedMode& mode : ModesOf(file.pack)) {
    modes.push_back({{"kind", mode.kind}, {"mode", mode.mode}, {"condition", mode.condition}});
  }
  Json components = Json::array();
  for (const Component& component : pack.components) {
    Json recipe = Json::array();
    for (const Step& step : component.recipe) recipe.push_back(ToJson(step, words));
    components.push_back({{"kind", words.NameOf(component.kind)},
                          {"type", component.kind},
                          {"version", component.version},
                          {"condition", component.condition.Text(words)},
                          {"tags", ToJson(component.tags, words)},
                          {"properties", ToJson(component.properties, words)},
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
};

PackFile Read(const std::string& path) {
  const Bytes bytes = ReadBytes(path);
  try {
    return ReadPack(bytes);
  } catch (const std::exception& error) {
    throw Refusal(path, error.what());
  }
}

void Run(const Options& options, const Shared& shared) {
  Json all = Json::array();
  for (const std::string& path : options.paths) {
    const PackFile file = Read(path);
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
  verb->callback([options, shared] { Run(*options, *shared); });
}

}  // namespace velora::tools
