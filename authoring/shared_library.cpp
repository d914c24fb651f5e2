#include "authoring/shared_library.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace velora::authoring {

namespace {

// A name without a slash is one of the system's, unless a file of this folder has it.
std::string PlaceOf(const std::string& path) {
  return std::filesystem::exists(path) ? std::filesystem::absolute(path).string() : path;
}

}  // namespace

// Not unloaded while the program runs, so that what watches it can name the library's functions.
SharedLibrary::SharedLibrary(const std::string& path)
    : path_(path), handle_(dlopen(PlaceOf(path).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
}

void* SharedLibrary::Address(const char* name) const {
  void* address = dlsym(handle_, name);
  if (address == nullptr) throw std::runtime_error(path_ + ": has no " + name);
  return address;
}

std::string DefaultLibrary() {
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  for (const char* place : {"../libvelora.so.1", "../lib/libvelora.so.1", "libvelora.so.1"}) {
    const auto path = folder / place;
    if (std::filesystem::exists(path)) return path.lexically_normal().string();
  }
  return "libvelora.so.1";
}

}  // namespace velora::authoring
