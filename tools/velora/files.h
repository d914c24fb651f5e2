// Files of bytes and of JSON.
//
// Room: tools. Values only. A file that cannot be read or written, or is no JSON, raises
// std::runtime_error with its path.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "authoring/table.h"

namespace velora::tools {

using authoring::Bytes;
using Path = std::filesystem::path;
using Json = nlohmann::ordered_json;

Bytes ReadBytes(const Path& path);
void WriteBytes(const Path& path, const Bytes& bytes);

// An object; anything else is refused.
Json ReadJson(const Path& path);
void WriteJson(const Path& path, const Json& json);

// A member of the kind that `fallback` has; the fallback where there is none.
template <class T>
T Member(const Json& object, const char* name, const T& fallback) {
  const auto found = object.find(name);
  if (found == object.end() || found->is_null()) return fallback;
  try {
    return found->get<T>();
  } catch (const Json::exception&) {
    throw std::runtime_error(std::string("\"") + name + "\" has the wrong kind of value");
  }
}

// The bytes of a file that a member names, below the folder; none where there is no such member.
Bytes MemberBytes(const Json& object, const char* name, const Path& folder);

}  // namespace velora::tools
