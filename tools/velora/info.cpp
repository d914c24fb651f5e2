// velora info: what is in a pack.
#include <iostream>
#include <memory>

#include "authoring/pack_text.h"
#include "authoring/words.h"
#include "tools/velora/files.h"
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

Json ToJson(const PackFile& file) {
  const Pack& pack = file.pack;
  const Words& words = Words::Of(pack.pipeline);
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
  return {{"pipeline", pack.pipeline == Pipeline::kToner ? "toner" : "ink"},
          {"supply_family", pack.family},
          {"channel", pack.channel},
          {"channel_name", ChannelName(pack.channel)},
          {"version", pack.version},
          {"schema", pack.schema},
          {"bytes", file.size},
          {"compressed_bytes", file.stream_size},
          {"image_bytes", file.image_size},
          {"checksum", file.checksum},
          {"components", components}};
}

void Run(const std::vector<std::string>& paths, const Shared& shared) {
  Json all = Json::array();
  for (const std::string& path : paths) {
    const PackFile file = [&] {
      try {
        return ReadPack(ReadBytes(path));
      } catch (const std::exception& error) {
        throw std::runtime_error(path + ": " + error.what());
      }
    }();
    if (shared.json) {
      all.push_back(ToJson(file));
    } else {
      std::cout << (&path == &paths[0] ? "" : "\n") << path << '\n' << PackText(file);
    }
  }
  if (shared.json) std::cout << (all.size() == 1 ? all[0] : all).dump(2) << '\n';
}

}  // namespace

void AddInfo(CLI::App* app, Shared* shared) {
  auto paths = std::make_shared<std::vector<std::string>>();
  CLI::App* verb = app->add_subcommand(
      "info",
      "Tells what is in packs: header and sizes, then each component with its condition, tags,\n"
      "properties and recipe. Numbers are the pack's own; of toner print modes, the caller's plus "
      "1.");
  verb->add_option("packs", *paths, "Pack files")->required();
  verb->callback([paths, shared] { Run(*paths, *shared); });
}

}  // namespace velora::tools
