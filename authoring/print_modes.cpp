#include "authoring/print_modes.h"

#include <algorithm>
#include <iterator>

#include "authoring/TypeNames.h"
#include "authoring/pack_text.h"
#include "authoring/table_call.h"
#include "velora/fenn/api/IPrintModeMappings.h"
#include "velora/fenn/api/component_lists.h"
#include "velora/wisp/api/component_lists.h"
#include "velora/wisp/api/tags.h"

namespace velora::authoring {
namespace {

namespace wisp = v1::wisp::api;
namespace fenn = v2::fenn::api;
using InkIds = common::TypeIds<wisp::Configuration>;
using TonerIds = common::TypeIds<fenn::Configuration>;

constexpr int kTonerClasses = 4;  // table, theme, media, axis

// The caller's number, or the pack's where the caller has none.
template <std::size_t kCount>
int Look(const int (&callers)[kCount], int number) {
  return number >= 1 && number <= static_cast<int>(kCount) ? callers[number - 1] : number;
}

int InkNumber(int type, int number) {
  switch (type) {
    case InkIds::kTag_MediaType:
    case InkIds::kCondition_MediaType:
      return Look(wisp::EMediaType::kCallers, number);
    case InkIds::kTag_MediaSubtype:
    case InkIds::kCondition_MediaSubtype:
      return Look(wisp::EMediaSubtype::kCallers, number);
    case InkIds::kTag_Quality:
    case InkIds::kCondition_Quality:
      return Look(wisp::EQuality::kCallers, number);
    case InkIds::kTag_PenSet:
    case InkIds::kCondition_PenSet:
      return Look(wisp::EPenSet::kCallers, number);
    default:
      return number;
  }
}

int TonerNumber(int type, int number) {
  static const int classes[kTonerClasses] = {
      fenn::IPrintModeMappings::kTables, fenn::IPrintModeMappings::kThemes,
      fenn::IPrintModeMappings::kMedia, fenn::IPrintModeMappings::kAxes};
  for (const int first : {TonerIds::kTag_TableType, TonerIds::kCondition_TableType}) {
    const int place = type - first;
    if (place >= 0 && place < kTonerClasses && number >= 1 && number <= classes[place]) {
      return number - 1;
    }
  }
  return number;
}

void Translate(Pipeline pipeline, std::vector<Value>* values) {
  for (Value& value : *values) value = InCallersNumbers(pipeline, value);
}

// What a request asks for by these tags, in the caller's numbers.
std::string ModeOf(Pipeline pipeline, const std::vector<Value>& tags) {
  PrintMode mode{-1, -1, -1, -1};
  int* const fields[kTonerClasses] = {&mode.table, &mode.theme, &mode.media, &mode.axis};
  std::vector<Value> others;
  for (const Value& tag : tags) {
    const int place = tag.type - TonerIds::kTag_TableType;
    if (pipeline == Pipeline::kToner && place >= 0 && place < kTonerClasses) {
      *fields[place] = tag.value;
    } else {
      others.push_back(tag);
    }
  }
  const TypeNames& names = TypeNames::Of(pipeline);
  const bool is_whole = std::all_of(std::begin(fields), std::end(fields),
                                    [](const int* field) { return *field >= 0; });
  if (!is_whole) return ValuesText(tags, names);
  return ModeText(mode) + (others.empty() ? "" : ", " + ValuesText(others, names));
}

bool IsServed(Pipeline pipeline, const Component& component) {
  if (pipeline == Pipeline::kInk) {
    return component.kind == wisp::IColorMap::kType || component.kind == wisp::IGrayCurve::kType ||
           component.kind == wisp::IAlternateNeutral::kType;
  }
  if (component.kind != fenn::IColorMap::kType && component.kind != fenn::IGrayCurve::kType &&
      component.kind != fenn::IPacket_Blob::kType) {
    return false;
  }
  const Value role{TonerIds::kComponentRole, 1};
  return std::count(component.properties.begin(), component.properties.end(), role) > 0;
}

}  // namespace

Value InCallersNumbers(Pipeline pipeline, Value value) {
  value.value = pipeline == Pipeline::kInk ? InkNumber(value.type, value.value)
                                           : TonerNumber(value.type, value.value);
  return value;
}

Pack InCallersNumbers(const Pack& pack) {
  Pack translated = pack;
  for (Component& component : translated.components) {
    std::vector<Value> postfix = component.condition.postfix();
    Translate(pack.pipeline, &postfix);
    component.condition = Condition(std::move(postfix));
    Translate(pack.pipeline, &component.tags);
    for (Step& step : component.recipe) Translate(pack.pipeline, &step.tags);
  }
  return translated;
}

std::vector<ServedMode> ModesOf(const Pack& pack) {
  const TypeNames& names = TypeNames::Of(pack.pipeline);
  std::vector<ServedMode> modes;
  for (const Component& component : InCallersNumbers(pack).components) {
    if (!IsServed(pack.pipeline, component)) continue;
    modes.push_back({names.NameOf(component.kind), ModeOf(pack.pipeline, component.tags),
                     component.condition.Text(names)});
  }
  return modes;
}

}  // namespace velora::authoring
