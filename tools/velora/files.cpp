#include "tools/velora/files.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace velora::tools {

Bytes ReadBytes(const Path& path) {
  std::ifstream file(path, std::ios::binary);
  Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (!file.is_open() || file.bad()) throw std::runtime_error(path.string() + ": cannot be read");
  return bytes;
}

void WriteBytes(const Path& path, const Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error(path.string() + ": cannot be written");
}

Json ReadJson(const Path& path) {
  const Bytes text = ReadBytes(path);
  Json json = Json::parse(text.begin(), text.end(), nullptr, false);
  if (!json.is_object()) throw std::runtime_error(path.string() + ": is no JSON object");
  return json;
}

void WriteJson(const Path& path, const Json& json) {
  const std::string text = json.dump(2) + '\n';
  WriteBytes(path, Bytes(text.begin(), text.end()));
}

Bytes MemberBytes(const Json& object, const char* name, const Path& folder) {
  const std::string file = Member<std::string>(object, name, "");
  return file.empty() ? Bytes() : ReadBytes(folder / file);
}

}  // namespace velora::tools
