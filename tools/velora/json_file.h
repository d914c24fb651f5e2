// JSON files that people write: each value has its line, each key is known or refused.
//
// Room: tools. A JsonObject looks into its JsonFile, which outlives it. What is refused raises a
// Refusal: "job.json:9: "scaler": unknown key in "settings"; did you mean "scalar" (1 to 255)?".
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/velora/files.h"
#include "tools/velora/numbers.h"

namespace velora::tools {

// An object with all that is in it. Comments are allowed; a key that is there twice is refused.
class JsonFile {
 public:
  explicit JsonFile(const Path& path);

  const Path& path() const { return path_; }
  const Json& json() const { return json_; }
  // The line of a value, or of its key: by its JSON pointer.
  int LineOf(const std::string& pointer) const;

 private:
  Path path_;
  Json json_;
  std::map<std::string, int> lines_;
};

// Reads an object key by key. Each read names the key and what it may be; `Finish` refuses keys
// that no read named, and then those that are needed and absent. An absent key gives `absent`.
class JsonObject {
 public:
  explicit JsonObject(const JsonFile& file);

  bool Has(const std::string& key) const;
  bool IsText(const std::string& key) const;
  int LineOf(const std::string& key) const;

  // Without `absent` the key is needed.
  int Number(const std::string& key, const Numbers& allowed, std::optional<int> absent = {});
  double Real(const std::string& key, double low, double high, double absent);
  bool Flag(const std::string& key, bool absent);
  std::string Text(const std::string& key, const std::string& absent);
  std::string Choice(const std::string& key, const std::vector<std::string>& names,
                     const std::string& absent);
  Bytes ByteList(const std::string& key, std::size_t most, const Bytes& absent);
  std::vector<std::string> Texts(const std::string& key, const Numbers& count, bool needed);
  std::optional<JsonObject> Object(const std::string& key);
  std::vector<JsonObject> Objects(const std::string& key);
  // A note for people.
  void Skip(const std::string& key);

  // The bytes of a file that the key names, below the file's folder. "" names none. Without the
  // key, the file `custom`, if it is given and there. `needed`: without either it is refused.
  Bytes File(const std::string& key, const Numbers& sizes, const std::string& custom = "",
             bool needed = false);
  // A file of a list of names.
  Bytes FileNamed(const std::string& key, const std::string& name, const Numbers& sizes) const;
  // The path of a file beside this one, for messages too.
  Path PathOf(const std::string& name) const;

  void Finish() const;

  [[noreturn]] void Refuse(const std::string& key, const std::string& text) const;

 private:
  struct Known {
    std::string key;
    std::string allowed;  // for people: "1 to 255"
  };

  JsonObject(const JsonFile& file, const Json& json, std::string pointer, std::string name);

  const Json* Find(const std::string& key, const std::string& allowed, bool needed);
  [[noreturn]] void RefuseValue(const std::string& key, const Json& value,
                                const std::string& allowed) const;

  const JsonFile* file_;
  const Json* json_;
  std::string pointer_;  // "/tables/0"; "" at the top
  std::string name_;     // "settings"; "" at the top
  std::vector<Known> known_;
  std::vector<Known> missing_;
};

}  // namespace velora::tools
