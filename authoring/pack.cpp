#include "authoring/pack.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>

#include "authoring/pack_pipeline.h"
#include "authoring/pack_text.h"
#include "velora/common/core/PackLayout.h"
#include "velora/common/enumeration.h"

namespace velora::authoring {
namespace {

[[noreturn]] void Refuse(const Component& component, const TypeNames& names,
                         const std::string& why) {
  throw std::invalid_argument(ComponentText(component, names) + ": " + why);
}

void CheckValues(const Component& component, std::vector<Value> values, const TypeNames& names) {
  std::sort(values.begin(), values.end());
  const auto twice = std::adjacent_find(values.begin(), values.end());
  if (twice != values.end()) {
    Refuse(component, names, ValueText(*twice, names) + " is there twice");
  }
}

// The order in which a loaded pack has its components: equal ones cannot be loaded.
bool ComesBefore(const Component& a, const Component& b) {
  return std::tie(a.kind, a.version, a.condition.postfix(), a.tags, a.properties, a.recipe) <
         std::tie(b.kind, b.version, b.condition.postfix(), b.tags, b.properties, b.recipe);
}

}  // namespace

bool operator<(const Step& a, const Step& b) {
  return std::tie(a.type, a.bytes, a.tags, a.properties) <
         std::tie(b.type, b.bytes, b.tags, b.properties);
}

void CheckPacks(const std::vector<Pack>& packs) {
  std::vector<Component> all;
  for (const Pack& pack : packs) {
    const TypeNames& names = TypeNames::Of(pack.pipeline);
    if (pack.pipeline != packs[0].pipeline || pack.family != packs[0].family) {
      throw std::invalid_argument("packs of two pipelines or supply families do not go together");
    }
    for (Component component : pack.components) {
      CheckValues(component, component.tags, names);
      CheckValues(component, component.properties, names);
      if (!component.condition.IsSound()) Refuse(component, names, "its condition is malformed");
      if (component.condition.SharesAResult()) {
        Refuse(component, names,
               "its condition has one kind of operator on both sides of an and or an or; a pack "
               "stores it once, with one result for both");
      }
      if (component.recipe.empty()) Refuse(component, names, "it has no recipe");
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
    Refuse(*twice, TypeNames::Of(packs[0].pipeline), "this component is there twice");
  }
}

Bytes WriteAnySize(const Pack& pack) {
  CheckPacks({pack});
  const PackPipeline& pipeline = PipelineOf(pack.pipeline);
  if (const Component* misread = pipeline.find_misread(pack)) {
    Refuse(*misread, pipeline.names(),
           "its bytes are another component's too, with another node count or delta range; a pack "
           "stores them once, to be read one way");
  }
  const OpenLibrary library(pipeline);
  WritePlace place;
  Bytes file;
  if (const int code = pipeline.write(pack, &place, &file)) {
    RaiseRefusal(code, place, pipeline.names());
  }
  return file;
}

Bytes WritePack(const Pack& pack) {
  Bytes file = WriteAnySize(pack);
  if (static_cast<int>(file.size()) > LargestFile(pack.pipeline)) {
    throw std::runtime_error("a pack of " + std::to_string(file.size()) +
                             " bytes: a caller takes at most " +
                             std::to_string(LargestFile(pack.pipeline)));
  }
  return file;
}

int LargestFile(Pipeline pipeline) { return PipelineOf(pipeline).largest_file; }

Bytes WriteReference(Pipeline pipeline, const Step& reference) {
  const PackPipeline& used = PipelineOf(pipeline);
  const OpenLibrary library(used);
  WritePlace place;
  Bytes image;
  if (const int code = used.write_reference(reference, &place, &image)) {
    RaiseRefusal(code, place, used.names());
  }
  return image;
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
    throw std::runtime_error("the pack: " + RefusalText(code));
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
