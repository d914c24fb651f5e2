// The names of a pipeline's type ids, from the tables of its factory.
//
// Room: authoring. Values only. A name that is not there raises std::invalid_argument.
#pragma once

#include <string>
#include <vector>

namespace velora::authoring {

enum class Pipeline;

// What a name is looked for as. In its own role a name goes without the prefix that the factory
// puts before it: the tag "Platform" is Tag_Platform there, the condition Condition_Platform.
enum class Role { kKind, kTag, kProperty, kCondition };

class TypeNames {
 public:
  struct Entry {
    std::string name;
    int type;
  };

  explicit TypeNames(std::vector<Entry> entries) : entries_(std::move(entries)) {}
  static const TypeNames& Of(Pipeline pipeline);

  // The type id, by the name with or without its prefix.
  int TypeOf(Role role, const std::string& name) const;
  // The type id of a recipe operator of a kind, such as "FromData" of a packet.
  int OperatorOf(int kind, const std::string& name) const;
  // The name without prefix; "type 77" where there is none.
  std::string NameOf(int type) const;

 private:
  const Entry* Find(const std::string& name) const;

  std::vector<Entry> entries_;
};

}  // namespace velora::authoring
