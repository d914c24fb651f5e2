#include "authoring/pack_text.h"

#include <algorithm>
#include <sstream>

#include "authoring/words.h"

namespace velora::authoring {

std::string ValueText(const Value& value, const Words& words) {
  std::string number = std::to_string(value.value);
  for (std::size_t i = 0; i < value.bytes.size(); ++i) {
    number = (i == 0 ? "" : number + '-') + std::to_string(value.bytes[i]);
  }
  return words.NameOf(value.type) + ' ' + number;
}

std::string ValuesText(const std::vector<Value>& values, const Words& words) {
  std::string text;
  for (const Value& value : values) {
    text += (text.empty() ? "" : ", ") + ValueText(value, words);
  }
  return text.empty() ? "-" : text;
}

std::string StepText(const Step& step, const Words& words) {
  std::string text = words.NameOf(step.type);
  if (!step.bytes.empty()) text += " (" + std::to_string(step.bytes.size()) + " bytes)";
  if (!step.tags.empty() || !step.properties.empty()) {
    text += " [" + ValuesText(step.tags, words) + "; " + ValuesText(step.properties, words) + ']';
  }
  return text;
}

std::string ComponentText(const Component& component, const Words& words) {
  std::string text = words.NameOf(component.kind) + " (";
  for (const Value& tag : component.tags) text += ValueText(tag, words) + ", ";
  for (const Value& property : component.properties) text += ValueText(property, words) + ", ";
  return text + "version " + std::to_string(component.version) + ')';
}

std::string PackText(const PackFile& file) {
  const Pack& pack = file.pack;
  const Words& words = Words::Of(pack.pipeline);
  std::ostringstream out;
  out << "pipeline         " << (pack.pipeline == Pipeline::kToner ? "toner" : "ink") << '\n'
      << "supply family    " << pack.family << '\n'
      << "channel          " << pack.channel << " (" << ChannelName(pack.channel) << ")\n"
      << "version          " << pack.version << '\n'
      << "schema           " << pack.schema << '\n'
      << "bytes            " << file.size << ", compressed image " << file.stream_size << ", image "
      << file.image_size << '\n';
  int kind = 0;
  for (const Component& component : pack.components) {
    if (component.kind != kind) {
      kind = component.kind;
      out << '\n'
          << words.NameOf(kind) << " ("
          << std::count_if(pack.components.begin(), pack.components.end(),
                           [kind](const Component& other) { return other.kind == kind; })
          << ")\n";
    } else {
      out << '\n';
    }
    out << "  version        " << component.version << '\n'
        << "  valid          " << component.condition.Text(words) << '\n'
        << "  tags           " << ValuesText(component.tags, words) << '\n'
        << "  properties     " << ValuesText(component.properties, words) << '\n';
    const char* label = "  recipe         ";
    for (const Step& step : component.recipe) {
      out << label << StepText(step, words) << '\n';
      label = "                 ";
    }
  }
  return out.str();
}

}  // namespace velora::authoring
