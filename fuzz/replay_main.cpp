// Runs a target on files and on all files of folders, without libFuzzer.
//
//   <target>_replay PATH...
//
// A broken promise, a crash or a sanitizer's finding ends the process; the file in hand is named on
// standard output before.

// A 32-bit program under an emulator meets the file numbers of a 64-bit machine.
#define _FILE_OFFSET_BITS 64
#include <dirent.h>
#include <stdint.h>
#include <stdio.h>
#include <sys/resource.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/support/promise.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

// The files below a path, which may be a file itself.
std::vector<std::string> FilesOf(const std::string& path) {
  DIR* folder = opendir(path.c_str());
  if (folder == nullptr) {
    return {path};
  }
  std::vector<std::string> files;
  while (const dirent* entry = readdir(folder)) {
    if (entry->d_name[0] != '.') {
      const std::vector<std::string> below = FilesOf(path + "/" + entry->d_name);
      files.insert(files.end(), below.begin(), below.end());
    }
  }
  closedir(folder);
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  int runs = 0;
  fuzz::Silence();
  for (int i = 1; i < argc; ++i) {
    for (const std::string& path : FilesOf(argv[i])) {
      std::ifstream file(path, std::ios::binary);
      if (!file) {
        printf("cannot read %s\n", path.c_str());
        return 2;
      }
      const std::vector<char> bytes((std::istreambuf_iterator<char>(file)),
                                    std::istreambuf_iterator<char>());
      printf("%s\n", path.c_str());
      fflush(stdout);
      LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
      ++runs;
    }
  }
  printf("%d inputs\n", runs);
  return runs > 0 ? 0 : 1;
}
