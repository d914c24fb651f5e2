#include "authoring/explain.h"

#include <algorithm>

#include "authoring/TypeNames.h"
#include "authoring/pack_text.h"
#include "authoring/print_modes.h"
#include "velora/fenn/api/component_lists.h"
#include "velora/wisp/api/component_lists.h"

namespace velora::authoring {
namespace {

namespace wisp = v1::wisp::api;
namespace fenn = v2::fenn::api;
using Shared = common::SharedTypeIds;

// Why an expression is what it is: operands that would have to be different.
struct Blame {
  bool value = false;
  std::vector<std::string> operands;
};

void Append(const std::vector<std::string>& from, std::vector<std::string>* to) {
  to->insert(to->end(), from.begin(), from.end());
}

Blame Join(const Blame& a, const Blame& b, bool is_and) {
  Blame joined;
  joined.value = is_and ? a.value && b.value : a.value || b.value;
  // What made the result: the sides that have it.
  for (const Blame* side : {&a, &b}) {
    if (side->value == joined.value) Append(side->operands, &joined.operands);
  }
  return joined;
}

Blame OperandBlame(const Value& value, const Present& present, const TypeNames& names) {
  const auto found = present.find(value.type);
  const std::string wanted = names.NameOf(value.type) + " = " + std::to_string(value.value);
  if (found == present.end()) {
    return {false, {wanted + " wanted, and the call has no such pack"}};
  }
  if (found->second == value.value) return {true, {wanted}};
  return {false, {wanted + " wanted, " + std::to_string(found->second) + " present"}};
}

std::vector<std::string> ConditionBlame(const Condition& condition, const Present& present,
                                        const TypeNames& names) {
  if (!condition.IsSound()) return {"its condition is malformed"};
  std::vector<Blame> parts;
  for (const Value& value : condition.postfix()) {
    const auto pop = [&parts] {
      Blame last = std::move(parts.back());
      parts.pop_back();
      return last;
    };
    switch (value.type) {
      case Shared::kDefaultCondition:
        parts.push_back({true, {}});
        break;
      case Shared::kConditions_Operator_And:
      case Shared::kConditions_Operator_Or: {
        const Blame right = pop(), left = pop();
        parts.push_back(Join(left, right, value.type == Shared::kConditions_Operator_And));
        break;
      }
      case Shared::kConditions_Operator_Not:
        parts.back().value = !parts.back().value;
        break;
      default:
        parts.push_back(OperandBlame(value, present, names));
    }
  }
  return parts.back().operands;
}

// Values of the candidate whose type the key has too, with none that agrees.
std::vector<std::string> ValueBlame(const std::vector<Value>& own, const std::vector<Value>& sought,
                                    const TypeNames& names) {
  std::vector<std::string> blame;
  bool in_common = false;
  for (const Value& value : own) {
    std::string others;
    bool agrees = false;
    for (const Value& other : sought) {
      if (other.type != value.type) continue;
      in_common = true;
      agrees = agrees || other == value;
      others += (others.empty() ? "" : " or ") + std::to_string(other.value);
    }
    // Another value of the candidate's may agree in its place.
    const bool is_served =
        agrees || std::any_of(own.begin(), own.end(), [&](const Value& mine) {
          return mine.type == value.type && std::count(sought.begin(), sought.end(), mine) > 0;
        });
    if (!others.empty() && !is_served) {
      blame.push_back(ValueText(value, names) + " has " + others + " sought");
    }
  }
  if (!in_common) blame.push_back("nothing in common with what is sought");
  return blame;
}

std::string Listed(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : "; ") + part;
  return text;
}

bool IsSame(const Component& a, const Component& b) {
  const auto sorted = [](std::vector<Value> values) {
    std::sort(values.begin(), values.end());
    return values;
  };
  return a.kind == b.kind && a.version == b.version &&
         a.condition.postfix() == b.condition.postfix() && sorted(a.tags) == sorted(b.tags) &&
         sorted(a.properties) == sorted(b.properties) && !(a.recipe < b.recipe) &&
         !(b.recipe < a.recipe);
}

std::string PackOf(const Component& component, const std::vector<NamedPackFile>& packs) {
  for (const NamedPackFile& file : packs) {
    for (const Component& stored : file.pack.components) {
      if (IsSame(stored, component)) return file.name;
    }
  }
  return "";
}

// The least preference that it took to set the taken candidate apart from all others that fit.
std::string PreferenceOf(const LookupTrace& lookup) {
  static const char* const texts[] = {"",
                                      "the highest component version",
                                      "the most conditions",
                                      "the most matching tags",
                                      "the most matching properties",
                                      "the sorted order"};
  common::core::Preference least = common::core::Preference::kNone;
  for (const CandidateTrace& trace : lookup.candidates) least = std::max(least, trace.lost_by);
  return texts[static_cast<int>(least)];
}

}  // namespace

std::vector<LookupReason> Explain(const std::vector<LookupTrace>& lookups,
                                  const std::vector<NamedPackFile>& packs, const Present& present) {
  std::vector<LookupReason> reasons;
  if (packs.empty()) return reasons;
  const Pipeline pipeline = packs[0].pack.pipeline;
  const TypeNames& names = TypeNames::Of(pipeline);
  for (const LookupTrace& lookup : lookups) {
    LookupReason reason;
    Pack readable;
    readable.pipeline = pipeline;
    readable.components = lookup.components;
    readable.components.push_back(lookup.sought);
    readable = InCallersNumbers(readable);
    const Component& sought = readable.components.back();
    reason.sought = names.NameOf(sought.kind) + " [" + ValuesText(sought.tags, names) + "; " +
                    ValuesText(sought.properties, names) + ']';
    reason.found = lookup.found;
    int nearest = -1;
    for (std::size_t i = 0; i < lookup.candidates.size(); ++i) {
      const CandidateTrace& trace = lookup.candidates[i];
      const Component& component = readable.components[i];
      std::vector<std::string> blame;
      reason.by_condition += !trace.holds;
      reason.by_tags += trace.holds && !trace.tags_fit;
      reason.by_properties += trace.holds && trace.tags_fit && !trace.properties_fit;
      reason.fitting += trace.fits();
      if (!trace.holds) Append(ConditionBlame(component.condition, present, names), &blame);
      if (!trace.tags_fit) Append(ValueBlame(component.tags, sought.tags, names), &blame);
      if (!trace.properties_fit) {
        Append(ValueBlame(component.properties, sought.properties, names), &blame);
      }
      const bool is_taken = static_cast<int>(i) == lookup.found;
      const std::string verdict = is_taken       ? "taken"
                                  : trace.fits() ? "fits too"
                                  : trace.exception != 0
                                      ? "its condition cannot be asked: " + Listed(blame)
                                      : "left out: " + Listed(blame);
      reason.candidates.push_back({ComponentText(component, names),
                                   PackOf(lookup.components[i], packs), verdict,
                                   static_cast<int>(blame.size())});
      // A condition that raises ends the lookup, whatever the others are.
      const auto is_nearer = [&](int other) {
        const CandidateTrace& best = lookup.candidates[other];
        if ((trace.exception != 0) != (best.exception != 0)) return trace.exception != 0;
        return reason.candidates[i].mismatches < reason.candidates[other].mismatches;
      };
      if (nearest < 0 || is_nearer(nearest)) nearest = static_cast<int>(i);
    }
    if (lookup.found >= 0) {
      reason.preference = PreferenceOf(lookup);
    } else if (nearest < 0) {
      reason.refusal = "no pack has a " + names.NameOf(sought.kind);
    } else {
      const CandidateReason& best = reason.candidates[nearest];
      reason.refusal = "no " + names.NameOf(sought.kind) + " fits; the nearest is " +
                       best.component + (best.pack.empty() ? "" : " of " + best.pack) + ", " +
                       best.verdict;
    }
    reasons.push_back(std::move(reason));
  }
  return reasons;
}

Present PresentOf(const CallNumbers& call, const std::vector<NamedPackFile>& packs) {
  Present present;
  const auto add = [&](int platform, int family, int variant) {
    present[platform] = call.platform;
    present[family] = call.family;
    present[variant] = call.variant;
  };
  if (call.pipeline == Pipeline::kToner) {
    using Ids = common::TypeIds<fenn::Configuration>;
    add(Ids::kCondition_Platform, Ids::kCondition_SupplyFamily, Ids::kCondition_ProductVariant);
    for (int i = 0; i < static_cast<int>(call.mode.size()); ++i) {
      present[Ids::kCondition_TableType + i] = call.mode[i];
    }
  } else {
    using Ids = common::TypeIds<wisp::Configuration>;
    add(Ids::kCondition_Platform, Ids::kCondition_SupplyFamily, Ids::kCondition_ProductVariant);
    const int types[] = {Ids::kCondition_MediaType, Ids::kCondition_MediaSubtype,
                         Ids::kCondition_PenSet, Ids::kCondition_Quality};
    for (std::size_t i = 0; i < call.mode.size(); ++i) present[types[i]] = call.mode[i];
  }
  const struct {
    int channel;
    int type;
  } versions[] = {
      {common::api::kChannel_Cyan, Shared::kVelcaseVersion_Cyan},
      {common::api::kChannel_Magenta, Shared::kVelcaseVersion_Magenta},
      {common::api::kChannel_Yellow, Shared::kVelcaseVersion_Yellow},
      {common::api::kChannel_Black, Shared::kVelcaseVersion_Black},
      {common::api::kChannel_Printer, Shared::kVelcaseVersion_Printer},
      {common::api::kChannel_Drum, common::TypeIds<fenn::Configuration>::kVelcaseVersion_Drum},
      {common::api::kChannel_Fuser, common::TypeIds<fenn::Configuration>::kVelcaseVersion_Fuser}};
  for (const NamedPackFile& file : packs) {
    for (const auto& [channel, type] : versions) {
      // The first pack of a channel is the one that counts.
      if (file.pack.channel == channel) present.emplace(type, file.pack.version);
    }
  }
  return present;
}

}  // namespace velora::authoring
