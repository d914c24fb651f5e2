// Manual pages and completion from the same text as --help.
//
// Room: tools. Values only; nothing fails.
#pragma once

#include <CLI/CLI.hpp>

#include "tools/velora/files.h"

namespace velora::tools {

// velora.1, a page for each verb such as velora-author.1, and velora.bash, below the folder.
void AddPages(const CLI::App& app, const Path& folder, Outputs* files);

}  // namespace velora::tools
