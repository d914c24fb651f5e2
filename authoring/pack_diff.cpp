#include "authoring/pack_diff.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "authoring/TypeNames.h"
#include "authoring/pack_text.h"
#include "authoring/print_modes.h"

namespace velora::authoring {
namespace {

struct Key {
  explicit Key(const Component& component)
      : kind(component.kind), tags(component.tags), properties(component.properties) {
    std::sort(tags.begin(), tags.end());
    std::sort(properties.begin(), properties.end());
  }
  friend bool operator<(const Key& a, const Key& b) {
    return std::tie(a.kind, a.tags, a.properties) < std::tie(b.kind, b.tags, b.properties);
  }

  int kind;
  std::vector<Value> tags;
  std::vector<Value> properties;
};

struct Pair {
  std::vector<const Component*> before;
  std::vector<const Component*> after;
};

bool IsEqual(const Step& a, const Step& b) { return !(a < b) && !(b < a); }

bool IsEqual(const Component& a, const Component& b) {
  return a.version == b.version && a.condition.postfix() == b.condition.postfix() &&
         std::equal(a.recipe.begin(), a.recipe.end(), b.recipe.begin(), b.recipe.end(),
                    [](const Step& x, const Step& y) { return IsEqual(x, y); });
}

// Takes pairs that are equal out of both lists.
void DropEqual(Pair* pair) {
  for (auto at = pair->before.begin(); at != pair->before.end();) {
    const auto same = std::find_if(pair->after.begin(), pair->after.end(),
                                   [&](const Component* other) { return IsEqual(**at, *other); });
    if (same == pair->after.end()) {
      ++at;
    } else {
      pair->after.erase(same);
      at = pair->before.erase(at);
    }
  }
}

std::string Arrow(const std::string& before, const std::string& after) {
  return before + " -> " + after;
}

std::vector<std::string> Details(const Component& before, const Component& after,
                                 const TypeNames& names) {
  std::vector<std::string> details;
  if (before.version != after.version) {
    details.push_back(
        Arrow("version " + std::to_string(before.version), std::to_string(after.version)));
  }
  if (!(before.condition.postfix() == after.condition.postfix())) {
    details.push_back(Arrow("valid " + before.condition.Text(names), after.condition.Text(names)));
  }
  for (std::size_t i = 0; i < std::max(before.recipe.size(), after.recipe.size()); ++i) {
    const Step* old_step = i < before.recipe.size() ? &before.recipe[i] : nullptr;
    const Step* new_step = i < after.recipe.size() ? &after.recipe[i] : nullptr;
    if (old_step != nullptr && new_step != nullptr && IsEqual(*old_step, *new_step)) continue;
    std::string text = "recipe step " + std::to_string(i + 1) + ": " +
                       Arrow(old_step == nullptr ? "none" : StepText(*old_step, names),
                             new_step == nullptr ? "none" : StepText(*new_step, names));
    if (old_step != nullptr && new_step != nullptr &&
        old_step->bytes.size() == new_step->bytes.size() && !old_step->bytes.empty()) {
      const ByteDifference difference = CompareBytes(old_step->bytes, new_step->bytes);
      text += ", " + std::to_string(difference.differing) + " bytes differ";
    }
    details.push_back(text);
  }
  return details;
}

void CompareHeaders(const PackFile& before, const PackFile& after,
                    std::vector<PackChange>* changes) {
  const auto name = [](const Pack& pack) {
    return std::string(pack.pipeline == Pipeline::kToner ? "toner" : "ink");
  };
  const auto number = [](int value) { return std::to_string(value); };
  const struct {
    const char* field;
    std::string before, after;
  } fields[] = {
      {"pipeline", name(before.pack), name(after.pack)},
      {"supply family", number(before.pack.family), number(after.pack.family)},
      {"channel", ChannelName(before.pack.channel), ChannelName(after.pack.channel)},
      {"version", number(before.pack.version), number(after.pack.version)},
      {"schema", number(before.pack.schema), number(after.pack.schema)},
      {"bytes", number(before.size), number(after.size)},
      {"image bytes", number(before.image_size), number(after.image_size)},
  };
  for (const auto& field : fields) {
    if (field.before != field.after) {
      changes->push_back({PackChange::Kind::kHeader,
                          std::string(field.field) + ' ' + Arrow(field.before, field.after),
                          {}});
    }
  }
}

}  // namespace

const char* ChangeName(PackChange::Kind kind) {
  static const char* const names[] = {"header", "added", "removed", "changed"};
  return names[static_cast<int>(kind)];
}

std::vector<PackChange> ComparePacks(const PackFile& before, const PackFile& after) {
  std::vector<PackChange> changes;
  CompareHeaders(before, after, &changes);
  const Pack old_pack = InCallersNumbers(before.pack), new_pack = InCallersNumbers(after.pack);
  const TypeNames& old_names = TypeNames::Of(old_pack.pipeline);
  const TypeNames& new_names = TypeNames::Of(new_pack.pipeline);
  std::map<Key, Pair> pairs;
  for (const Component& component : old_pack.components) {
    pairs[Key(component)].before.push_back(&component);
  }
  for (const Component& component : new_pack.components) {
    pairs[Key(component)].after.push_back(&component);
  }
  for (auto& [key, pair] : pairs) {
    DropEqual(&pair);
    const std::size_t both = std::min(pair.before.size(), pair.after.size());
    for (std::size_t i = 0; i < both; ++i) {
      changes.push_back({PackChange::Kind::kChanged, ComponentText(*pair.before[i], old_names),
                         Details(*pair.before[i], *pair.after[i], new_names)});
    }
    for (std::size_t i = both; i < pair.before.size(); ++i) {
      changes.push_back(
          {PackChange::Kind::kRemoved, ComponentText(*pair.before[i], old_names), {}});
    }
    for (std::size_t i = both; i < pair.after.size(); ++i) {
      changes.push_back({PackChange::Kind::kAdded, ComponentText(*pair.after[i], new_names), {}});
    }
  }
  return changes;
}

}  // namespace velora::authoring
