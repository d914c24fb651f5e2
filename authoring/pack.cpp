#include "authoring/pack.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>

#include "authoring/pack_pipeline.h"
#include "plinth/runtime/api/CException.h"
#include "velora/common/core/pack.h"
#include "velora/common/enumeration.h"

namespace velora::authoring {
namespace {

std::string ExceptionName(int code) {
#define NAME_ROW(Name, Code) \
  if (code == Code) return #Name;
  PLINTH_EXCEPTIONS(NAME_ROW)
#undef NAME_ROW
  return "exception " + std::to_string(code);
}

std::string Told(const Value& value, const Words& words) {
  return words.NameOf(value.type) + ' ' + std::to_string(value.value);
}

std::string Told(const Component& component, const Words& words) {
  std::string text = words.NameOf(component.kind) + " (";
  for (const Value& tag : component.tags) text += Told(tag, words) + ", ";
  for (const Value& property : component.properties) text += Told(property, words) + ", ";
  return text + "version " + std::to_string(component.version) + ')';
}

[[noreturn]] void Refuse(const Component& component, const Words& words, const std::string& why) {
  throw std::invalid_argument(Told(component, words) + ": " + why);
}

void CheckValues(const Component& component, std::vector<Value> values, const Words& words) {
  std::sort(values.begin(), values.end());
  const auto twice = std::adjacent_find(values.begin(), values.end());
  if (twice != values.end()) {
    Refuse(component, words, Told(*twice, words) + " is there twice");
  }
}

// The order in which a loaded pack has its components: equal ones cannot be loaded.
bool ComesBefore(const Component& a, const Component& b) {
  return std::tie(a.kind, a.version, a.condition.postfix(), a.tags, a.properties, a.recipe) <
         std::tie(b.kind, b.version, b.condition.postfix(), b.tags, b.properties, b.recipe);
}

// The library is up while one of these lives.
class OpenLibrary {
 public:
  explicit OpenLibrary(const PackPipeline& pipeline) : pipeline_(pipeline) {
    if (!pipeline.open()) throw std::runtime_error("the library cannot be opened");
  }
  OpenLibrary(const OpenLibrary&) = delete;
  ~OpenLibrary() { pipeline_.close(); }

 private:
  const PackPipeline& pipeline_;
};

}  // namespace

bool operator<(const Step& a, const Step& b) {
  return std::tie(a.type, a.bytes, a.tags, a.properties) <
         std::tie(b.type, b.bytes, b.tags, b.properties);
}

const PackPipeline& PipelineOf(Pipeline pipeline) {
  if (pipeline == Pipeline::kToner) return TonerPipeline();
  throw std::invalid_argument("no pipeline has Velora schema " +
                              std::to_string(static_cast<int>(pipeline)));
}

void CheckPacks(const std::vector<Pack>& packs) {
  std::vector<Component> all;
  for (const Pack& pack : packs) {
    const Words& words = Words::Of(pack.pipeline);
    if (pack.pipeline != packs[0].pipeline || pack.family != packs[0].family) {
      throw std::invalid_argument("packs of two pipelines or supply families do not go together");
    }
    for (Component component : pack.components) {
      CheckValues(component, component.tags, words);
      CheckValues(component, component.properties, words);
      if (!component.condition.IsSound()) Refuse(component, words, "its condition is malformed");
      if (component.recipe.empty()) Refuse(component, words, "it has no recipe");
      std::sort(component.tags.begin(), component.tags.end());
      std::sort(component.properties.begin(), component.properties.end());
      all.push_back(std::move(component));
    }
  }
  std::sort(all.begin(), all.end(), ComesBefore);
  const auto twice =
      std::adjacent_find(all.begin(), all.end(),
                         [](const Component& a, const Component& b) { return !ComesBefore(a, b); });
  if (twice != all.end()) {
    Refuse(*twice, Words::Of(packs[0].pipeline), "this component is there twice");
  }
}

Bytes WritePack(const Pack& pack) {
  CheckPacks({pack});
  const PackPipeline& pipeline = PipelineOf(pack.pipeline);
  const OpenLibrary library(pipeline);
  WritePlace place;
  Bytes file;
  if (const int code = pipeline.write(pack, &place, &file)) {
    std::string why = "the library refuses it with " + ExceptionName(code);
    if (place.component == nullptr) throw std::runtime_error("the pack: " + why);
    const Words& words = pipeline.words();
    if (place.value.type != 0) why = Told(place.value, words) + ": " + why;
    if (place.step != nullptr) why = words.NameOf(place.step->type) + ": " + why;
    Refuse(*place.component, words, why);
  }
  if (file.size() > kLargestPack) {
    throw std::runtime_error("a pack of " + std::to_string(file.size()) +
                             " bytes: a caller's record tells at most 32767");
  }
  return file;
}

PackFile ReadPack(const Bytes& bytes) {
  using Layout = common::core::PackLayout<v2::fenn::api::Configuration>;
  if (bytes.size() <= Layout::kVeloraSchema) throw std::runtime_error("too short for a pack");
  PackFile file{};
  file.pack.pipeline = static_cast<Pipeline>(bytes[Layout::kVeloraSchema]);
  file.pack.family = bytes[Layout::kFamily];
  file.size = static_cast<int>(bytes.size());
  const PackPipeline& pipeline = PipelineOf(file.pack.pipeline);
  const OpenLibrary library(pipeline);
  if (const int code = pipeline.read(bytes, &file)) {
    throw std::runtime_error("the library refuses the pack with " + ExceptionName(code));
  }
  return file;
}

std::string ChannelName(int channel) {
  switch (channel) {
    case common::api::kChannel_Black:
      return "black";
    case common::api::kChannel_Cyan:
      return "cyan";
    case common::api::kChannel_Magenta:
      return "magenta";
    case common::api::kChannel_Yellow:
      return "yellow";
    case common::api::kChannel_Drum:
      return "drum";
    case common::api::kChannel_Fuser:
      return "fuser";
    case common::api::kChannel_Printer:
      return "printer";
    default:
      return std::to_string(channel);
  }
}

}  // namespace velora::authoring
