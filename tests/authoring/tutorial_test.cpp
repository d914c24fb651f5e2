// docs/tutorial.md: each of its commands runs.
#ifdef VELORA_TOOL

#include <algorithm>

#include "authoring/icc.h"
#include "tests/authoring/tool.h"

namespace velora::authoring {
namespace {

// The runtime of a sanitized library must come first in the program that is linked with it.
#ifdef __SANITIZE_ADDRESS__
constexpr char kLink[] = " -fsanitize=address,undefined -lvelora";
#else
constexpr char kLink[] = " -lvelora";
#endif

// The tool and the library as they are installed: by their names.
TEST_F(Tool, TutorialRuns) {
  const std::vector<Profile> profiles = FindProfiles();
  const auto has = [&](const char* name) {
    return std::any_of(profiles.begin(), profiles.end(),
                       [name](const Profile& profile) { return profile.name == name; });
  };
  if (!has("sRGB") || !has("default_cmyk")) GTEST_SKIP() << "no sRGB and default_cmyk profiles";
  const fs::path build = fs::path(VELORA_TOOL).parent_path().parent_path();
  fs::create_directories(folder_ / "bin");
  fs::create_symlink(VELORA_TOOL, folder_ / "bin/velora");
  Write("bin/pkg-config", "#!/bin/sh\necho -I" VELORA_SOURCE "/include -I" + build.string() +
                              "/include -L" + build.string() + " -Wl,-rpath," + build.string() +
                              kLink + "\n");
  fs::permissions(folder_ / "bin/pkg-config", fs::perms::owner_all);

  std::ifstream page(VELORA_SOURCE "/docs/tutorial.md");
  std::string line, command, last;
  int commands = 0;
  bool inside = false;
  while (std::getline(page, line)) {
    if (line == "```sh") {
      inside = true;
      command.clear();
    } else if (line == "```" && inside) {
      inside = false;
      ++commands;
      Write("command.sh", command);
      // The page's program ends with what it has loaded.
      last = Shell(
          "PATH=\"$PWD/bin:$PATH\" ASAN_OPTIONS=\"$ASAN_OPTIONS:detect_leaks=0\" "
          "sh ./command.sh");
      EXPECT_THAT(last, testing::EndsWith("ends with 0")) << command;
    } else if (inside) {
      command += line + '\n';
    }
  }
  EXPECT_EQ(commands, 10);
  EXPECT_THAT(last, testing::HasSubstr("black toner for black: "));
}

}  // namespace
}  // namespace velora::authoring

#endif
