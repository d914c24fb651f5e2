// The library that a call goes to: a shared one from a path, or the one that the program is linked
// with. They share nothing.
//
// Room: authoring. Owns the handle. A library that cannot be loaded raises std::runtime_error with
// its path, one that lacks a function too.
#pragma once

#include <string>

namespace velora::authoring {

class SharedLibrary {
 public:
  // The one that the program is linked with.
  SharedLibrary() = default;
  explicit SharedLibrary(const std::string& path);
  SharedLibrary(const SharedLibrary&) = delete;
  ~SharedLibrary();

  // A function by its name; `linked` is the one of that name that the program is linked with.
  template <class Function>
  Function* Find(const char* name, Function* linked) const {
    return handle_ == nullptr ? linked : reinterpret_cast<Function*>(Address(name));
  }

 private:
  void* Address(const char* name) const;

  std::string path_;
  void* handle_ = nullptr;
};

// The libvelora.so of the build or installation that the running program belongs to.
std::string DefaultLibrary();

}  // namespace velora::authoring
