// Packs as a command line names them.
//
// Room: tools. Values only. What is no pack is a Refusal with the file's name, and the
// byte where it breaks.
#pragma once

#include "authoring/pack.h"
#include "tools/velora/files.h"

namespace velora::tools {

authoring::PackFile ReadPackFile(const std::string& path);
// The same of bytes that were read.
authoring::PackFile ReadPackBytes(const std::string& path, const Bytes& bytes);

}  // namespace velora::tools
