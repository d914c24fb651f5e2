// What a process costs that starts, makes a table and ends, from fork to exit, against Little CMS
// making the same table: whole processes, one of each kind in turn. Another kind opens an ink
// session and asks for a colour map.
//
//   cold [ROUNDS [FOLDER...]]
//
// 200 rounds where none are named. Each folder has another build of libvelora.so to be timed beside
// the one that the programs are linked with. Prints the least and the median time of each kind, the
// least time that the processor worked for it, and what one run of it takes: page faults, private
// dirty pages, and the heap at its largest.
//
// A process reads the request from a file and ends without closing it; messages go nowhere.
#include <fcntl.h>
#include <lcms2.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <vector>

#include "bench/request.h"

extern char** environ;

namespace {

struct Kind {
  std::string name;
  std::vector<std::string> arguments;  // the program's path first
  std::string folder;                  // of the library; empty: the one that was linked
  std::vector<double> times = {};      // microseconds
  double processor = 1e9;  // the least microseconds of its work, in user and system mode
};

// Runs a process to its end and notes the time. Standard output goes to `output`.
void Run(Kind& kind, int output, bool memory) {
  static const int nowhere = open("/dev/null", O_WRONLY);
  std::vector<std::string> arguments = kind.arguments;
  if (memory) arguments.push_back("memory");
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  const std::string path = "LD_LIBRARY_PATH=" + kind.folder;
  std::vector<char*> environment;
  for (char** at = environ; *at != nullptr; ++at) {
    if (std::strncmp(*at, "LD_", 3) != 0) environment.push_back(*at);
  }
  if (!kind.folder.empty()) environment.push_back(const_cast<char*>(path.c_str()));
  environment.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, output < 0 ? nowhere : output, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&files, nowhere, STDERR_FILENO);
  pid_t child = 0;
  int status = 0;
  const auto start = std::chrono::steady_clock::now();
  Require(posix_spawn(&child, argv[0], &files, nullptr, argv.data(), environment.data()) == 0,
          "a process cannot be started");
  struct rusage usage;
  wait4(child, &status, 0, &usage);
  const auto end = std::chrono::steady_clock::now();
  posix_spawn_file_actions_destroy(&files);
  Require(WIFEXITED(status) && WEXITSTATUS(status) == 0, (kind.name + " failed").c_str());
  if (memory) return;
  kind.times.push_back(std::chrono::duration<double, std::micro>(end - start).count());
  const double work = 1e6 * static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                      static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
  kind.processor = std::min(kind.processor, work);
}

struct Memory {
  long faults = 0, dirty = 0, heap = 0;
};

Memory MemoryOf(Kind& kind) {
  int ends[2];
  Require(pipe(ends) == 0, "no pipe");
  Run(kind, ends[1], true);
  close(ends[1]);
  char text[256] = "";
  const ssize_t length = read(ends[0], text, sizeof text - 1);
  close(ends[0]);
  Memory memory;
  Require(length > 0 &&
              std::sscanf(text, "%ld %ld %ld", &memory.faults, &memory.dirty, &memory.heap) == 3,
          "a process did not tell its memory");
  return memory;
}

// The device link that makes the request's table, beside the request.
void SaveLink(const Request& request, const std::string& path) {
  const std::string lines = TextOf(request[kProfiles]);
  const size_t first = lines.find('\n'), second = lines.find('\n', first + 1);
  const auto source = cmsOpenProfileFromFile(lines.substr(0, first).c_str(), "r");
  const auto output =
      cmsOpenProfileFromFile(lines.substr(first + 1, second - first - 1).c_str(), "r");
  const auto transform = cmsCreateTransform(
      source, TYPE_RGB_8, output, TYPE_CMYK_8,
      static_cast<cmsUInt32Number>(std::stoi(lines.substr(second + 1))), cmsFLAGS_NOOPTIMIZE);
  const auto link = cmsTransform2DeviceLink(
      transform, 4.3,
      cmsFLAGS_FORCE_CLUT | cmsFLAGS_8BITS_DEVICELINK | cmsFLAGS_GRIDPOINTS(kGridPoints));
  Require(cmsSaveProfileToFile(link, path.c_str()) != 0, "the device link cannot be written");
  cmsCloseProfile(link);
  cmsDeleteTransform(transform);
  cmsCloseProfile(output);
  cmsCloseProfile(source);
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 200;
  Require(rounds > 0, "no number of rounds");
  const std::string program = argv[0];
  const std::string folder = program + "-programs/";
  const std::string request = program + ".request";
  const Request made = MakeRequest();
  Save(made, request);
  SaveLink(made, request + ".link");
  sync();  // pages of a file that was just written would count as dirty pages of the processes

  std::vector<Kind> kinds{{"empty", {folder + "empty"}, ""}};
  const auto add_library = [&](const std::string& label, const std::string& library) {
    for (const char* calls : {"0", "1", "2"}) {
      kinds.push_back(
          {label + ", " + calls + " tables", {folder + "velora", request, calls}, library});
    }
    kinds.push_back({label + ", 1 colour map", {folder + "ink", BENCH_INK_DATA, "1"}, library});
  };
  add_library("libvelora.so", "");
  for (int i = 2; i < argc; ++i) add_library(argv[i], argv[i]);
  kinds.push_back({"Little CMS, profiles", {folder + "lcms", request, "profiles"}, ""});
  kinds.push_back({"Little CMS, device link", {folder + "lcms", request, "link"}, ""});

  for (int round = 0; round < rounds; ++round) {
    for (Kind& kind : kinds) Run(kind, -1, false);
  }
  std::printf("%-36s %9s %9s %9s %7s %9s %9s\n", "process", "least us", "median us", "cpu us",
              "faults", "dirty KiB", "heap KiB");
  for (Kind& kind : kinds) {
    const Memory memory = MemoryOf(kind);
    std::sort(kind.times.begin(), kind.times.end());
    std::printf("%-36s %9.0f %9.0f %9.0f %7ld %9ld %9ld\n", kind.name.c_str(), kind.times[0],
                kind.times[kind.times.size() / 2], kind.processor, memory.faults, memory.dirty,
                memory.heap);
  }
  return 0;
}
