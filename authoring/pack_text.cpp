#include "authoring/pack_text.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <sstream>

#include "authoring/TypeNames.h"
#include "authoring/print_modes.h"

namespace velora::authoring {

std::string ValueText(const Value& value, const TypeNames& names) {
  std::string number = std::to_string(value.value);
  for (std::size_t i = 0; i < value.bytes.size(); ++i) {
    number = (i == 0 ? "" : number + '-') + std::to_string(value.bytes[i]);
  }
  return names.NameOf(value.type) + ' ' + number;
}

std::string ValuesText(const std::vector<Value>& values, const TypeNames& names) {
  std::string text;
  for (const Value& value : values) {
    text += (text.empty() ? "" : ", ") + ValueText(value, names);
  }
  return text.empty() ? "-" : text;
}

std::string StepText(const Step& step, const TypeNames& names) {
  std::string text = names.NameOf(step.type);
  if (!step.bytes.empty()) text += " (" + std::to_string(step.bytes.size()) + " bytes)";
  if (!step.tags.empty() || !step.properties.empty()) {
    text += " [" + ValuesText(step.tags, names) + "; " + ValuesText(step.properties, names) + ']';
  }
  return text;
}

std::string ComponentText(const Component& component, const TypeNames& names) {
  std::string text = names.NameOf(component.kind) + " (";
  for (const Value& tag : component.tags) text += ValueText(tag, names) + ", ";
  for (const Value& property : component.properties) text += ValueText(property, names) + ", ";
  return text + "version " + std::to_string(component.version) + ')';
}

std::string HeaderText(const PackFile& file) {
  const Pack& pack = file.pack;
  std::ostringstream out;
  out << "pipeline         " << (pack.pipeline == Pipeline::kToner ? "toner" : "ink") << '\n'
      << "supply family    " << pack.family << '\n'
      << "channel          " << pack.channel << " (" << ChannelName(pack.channel) << ")\n"
      << "version          " << pack.version << '\n'
      << "schema           " << pack.schema << '\n'
      << "bytes            " << file.size << ", compressed image " << file.stream_size << ", image "
      << file.image_size << '\n';
  return out.str();
}

std::string KindsText(const Pack& pack) {
  struct Sum {
    int components = 0;
    std::size_t bytes = 0;
  };
  std::map<int, Sum> kinds;
  for (const Component& component : pack.components) {
    Sum& sum = kinds[component.kind];
    ++sum.components;
    for (const Step& step : component.recipe) sum.bytes += step.bytes.size();
  }
  const TypeNames& names = TypeNames::Of(pack.pipeline);
  std::ostringstream out;
  for (const auto& [kind, sum] : kinds) {
    out << "  " << std::left << std::setw(24) << names.NameOf(kind) << std::right << std::setw(6)
        << sum.components;
    if (sum.bytes > 0) out << ", " << sum.bytes << " bytes stored";
    out << '\n';
  }
  return out.str();
}

std::string ModesText(const Pack& pack) {
  std::ostringstream out;
  for (const ServedMode& mode : ModesOf(pack)) {
    out << "  " << std::left << std::setw(17) << mode.kind << std::setw(40) << mode.mode << "  if "
        << mode.condition << '\n';
  }
  return out.str();
}

std::string ComponentsText(const Pack& stored) {
  const Pack pack = InCallersNumbers(stored);
  const TypeNames& names = TypeNames::Of(pack.pipeline);
  std::ostringstream out;
  int kind = 0;
  for (const Component& component : pack.components) {
    if (component.kind != kind) {
      kind = component.kind;
      out << '\n'
          << names.NameOf(kind) << " ("
          << std::count_if(pack.components.begin(), pack.components.end(),
                           [kind](const Component& other) { return other.kind == kind; })
          << ")\n";
    } else {
      out << '\n';
    }
    out << "  version        " << component.version << '\n'
        << "  valid          " << component.condition.Text(names) << '\n'
        << "  tags           " << ValuesText(component.tags, names) << '\n'
        << "  properties     " << ValuesText(component.properties, names) << '\n';
    const char* label = "  recipe         ";
    for (const Step& step : component.recipe) {
      out << label << StepText(step, names) << '\n';
      label = "                 ";
    }
  }
  return out.str();
}

}  // namespace velora::authoring
