// Tables and profiles as a command line names them.
//
// Room: tools. Values only. What is no table and no profile is a Refusal with its name.
#pragma once

#include "authoring/icc.h"
#include "authoring/table_file.h"
#include "tools/velora/files.h"

namespace velora::tools {

// The format by the name that an option gives, or by the file's ending where it is empty.
authoring::TableFormat FormatFor(const std::string& name, const std::string& path);

// A table of any format.
Bytes ReadTableFile(const std::string& path, const std::string& format = "");
void AddTableFile(const std::string& path, const std::string& format, const Bytes& table,
                  Outputs* files);

// A profile by path, or by the name of an installed one.
authoring::Profile FindProfile(const std::string& name, authoring::ProfileKind kind);
const char* KindName(authoring::ProfileKind kind);

}  // namespace velora::tools
