#include "authoring/words.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

#include "authoring/pack_pipeline.h"

namespace velora::authoring {
namespace {

const char* const kOperatorMark = "_Operator_";

struct RoleWords {
  const char* told;
  std::initializer_list<const char*> prefixes;
};

const RoleWords& WordsOf(Role role) {
  static const RoleWords roles[] = {{"kind of component", {""}},
                                    {"tag", {"Tag_"}},
                                    {"property", {""}},
                                    {"condition", {"Condition_", ""}}};
  return roles[static_cast<int>(role)];
}

}  // namespace

const Words& Words::Of(Pipeline pipeline) { return PipelineOf(pipeline).words(); }

const Words::Word* Words::Find(const std::string& name) const {
  const auto found = std::find_if(words_.begin(), words_.end(),
                                  [&](const Word& word) { return word.name == name; });
  return found == words_.end() ? nullptr : &*found;
}

int Words::TypeOf(Role role, const std::string& name) const {
  for (const char* prefix : WordsOf(role).prefixes) {
    if (const Word* word = Find(prefix + name)) return word->type;
  }
  throw std::invalid_argument("no " + std::string(WordsOf(role).told) + " is named " + name);
}

int Words::OperatorOf(int kind, const std::string& name) const {
  if (const Word* word = Find(NameOf(kind) + kOperatorMark + name)) return word->type;
  throw std::invalid_argument("no operator of " + NameOf(kind) + " is named " + name);
}

std::string Words::NameOf(int type) const {
  for (const Word& word : words_) {
    if (word.type != type) continue;
    for (const std::string prefix : {"Tag_", "Condition_"}) {
      if (word.name.rfind(prefix, 0) == 0) return word.name.substr(prefix.size());
    }
    const std::size_t mark = word.name.find(kOperatorMark);
    return mark == std::string::npos ? word.name
                                     : word.name.substr(mark + std::string(kOperatorMark).size());
  }
  return "type " + std::to_string(type);
}

}  // namespace velora::authoring
