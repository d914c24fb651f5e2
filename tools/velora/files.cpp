#include "tools/velora/files.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace velora::tools {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void RefuseFile(const Path& path, int error) {
  throw Refusal(path.empty() ? "\"\"" : path.string(), std::strerror(error));
}

// A descriptor that closes itself.
class Descriptor {
 public:
  Descriptor(const Path& path, int flags) : Descriptor(path, path, flags) {}
  // Refusals name the file `shown`.
  Descriptor(const Path& path, const Path& shown, int flags)
      : path_(shown), file_(open(path.c_str(), flags, 0666)) {
    if (file_ < 0) RefuseFile(path_, errno);
  }
  Descriptor(const Descriptor&) = delete;
  ~Descriptor() {
    if (file_ >= 0) close(file_);
  }

  std::size_t Read(unsigned char* bytes, std::size_t room) const {
    const ssize_t count = read(file_, bytes, room);
    if (count < 0) RefuseFile(path_, errno);
    return static_cast<std::size_t>(count);
  }

  void Write(const Bytes& bytes) const {
    for (std::size_t at = 0; at < bytes.size();) {
      const ssize_t count = write(file_, bytes.data() + at, bytes.size() - at);
      if (count < 0) RefuseFile(path_, errno);
      at += static_cast<std::size_t>(count);
    }
  }

  // A file system may report only here that it had no room.
  void Close() {
    if (close(std::exchange(file_, -1)) != 0) RefuseFile(path_, errno);
  }

 private:
  const Path& path_;
  int file_;
};

// Holds back what would stop the program between the first rename and the last.
class HeldSignals {
 public:
  HeldSignals() {
    sigset_t held;
    sigemptyset(&held);
    for (int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &before_);
  }
  HeldSignals(const HeldSignals&) = delete;
  ~HeldSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

struct Beside {
  Path written;
  Path place;
};

// Removes what was not renamed.
struct AllBeside {
  ~AllBeside() {
    std::error_code ignored;
    for (const Beside& file : files) fs::remove(file.written, ignored);
  }
  std::vector<Beside> files;
};

}  // namespace

Bytes ReadBytes(const Path& path) {
  const Descriptor file(path, O_RDONLY | O_CLOEXEC);
  Bytes bytes;
  constexpr std::size_t kBlock = 1 << 16;
  std::size_t size = 0;
  do {
    bytes.resize(size + kBlock);
    size += file.Read(bytes.data() + size, kBlock);
  } while (size > bytes.size() - kBlock);
  bytes.resize(size);
  return bytes;
}

void Outputs::Add(const Path& path, Bytes bytes) {
  const auto found = std::find_if(files_.begin(), files_.end(),
                                  [&](const File& file) { return file.path == path; });
  if (found != files_.end()) files_.erase(found);
  files_.push_back({path, std::move(bytes)});
}

void Outputs::Add(const Path& path, const Json& json) {
  const std::string text = JsonText(json);
  Add(path, Bytes(text.begin(), text.end()));
}

void Outputs::Commit() {
  const HeldSignals held;
  AllBeside beside;
  for (const File& file : files_) {
    std::error_code error;
    if (file.path.has_parent_path()) fs::create_directories(file.path.parent_path(), error);
    if (error) RefuseFile(file.path.parent_path(), error.value());
    const fs::file_status status = fs::status(file.path, error);
    if (fs::is_directory(status)) RefuseFile(file.path, EISDIR);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
      Descriptor device(file.path, O_WRONLY | O_CLOEXEC);
      device.Write(file.bytes);
      device.Close();
      continue;
    }
    // Behind a link the file that it leads to is replaced.
    const Path place = fs::exists(status) ? fs::canonical(file.path) : file.path;
    Path written = place;
    written += ".part" + std::to_string(getpid());
    beside.files.push_back({written, place});
    Descriptor out(written, file.path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC);
    out.Write(file.bytes);
    out.Close();
  }
  for (const Beside& file : beside.files) {
    std::error_code error;
    fs::rename(file.written, file.place, error);
    if (error) RefuseFile(file.place, error.value());
  }
  beside.files.clear();
  files_.clear();
}

std::string JsonText(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace velora::tools
