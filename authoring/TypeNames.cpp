#include "authoring/TypeNames.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

#include "authoring/pack_pipeline.h"

namespace velora::authoring {
namespace {

const char* const kOperatorMark = "_Operator_";

struct RoleNames {
  const char* noun;
  std::initializer_list<const char*> prefixes;
};

const RoleNames& NamesOf(Role role) {
  static const RoleNames roles[] = {{"kind of component", {""}},
                                    {"tag", {"Tag_"}},
                                    {"property", {""}},
                                    {"condition", {"Condition_", ""}}};
  return roles[static_cast<int>(role)];
}

}  // namespace

const TypeNames& TypeNames::Of(Pipeline pipeline) { return PipelineOf(pipeline).names(); }

const TypeNames::Entry* TypeNames::Find(const std::string& name) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.name == name; });
  return found == entries_.end() ? nullptr : &*found;
}

int TypeNames::TypeOf(Role role, const std::string& name) const {
  for (const char* prefix : NamesOf(role).prefixes) {
    if (const Entry* entry = Find(prefix + name)) return entry->type;
  }
  throw std::invalid_argument("no " + std::string(NamesOf(role).noun) + " is named " + name);
}

int TypeNames::OperatorOf(int kind, const std::string& name) const {
  if (const Entry* entry = Find(NameOf(kind) + kOperatorMark + name)) return entry->type;
  throw std::invalid_argument("no operator of " + NameOf(kind) + " is named " + name);
}

std::string TypeNames::NameOf(int type) const {
  for (const Entry& entry : entries_) {
    if (entry.type != type) continue;
    for (const std::string prefix : {"Tag_", "Condition_"}) {
      if (entry.name.rfind(prefix, 0) == 0) return entry.name.substr(prefix.size());
    }
    const std::size_t mark = entry.name.find(kOperatorMark);
    return mark == std::string::npos ? entry.name
                                     : entry.name.substr(mark + std::string(kOperatorMark).size());
  }
  return "type " + std::to_string(type);
}

}  // namespace velora::authoring
