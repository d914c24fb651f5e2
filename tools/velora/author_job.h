// What `velora author` does with a job: one function a pipeline.
//
// Room: tools. Writes packs, records and calls to a folder that is there. Fails as files.h tells,
// and as authoring does.
#pragma once

#include "tools/velora/files.h"

namespace velora::tools {

// The files that were written, for the report: packs with their bytes and components, calls with
// their print mode, the bytes of the table and those that the packs have for it.
struct Authored {
  Json packs = Json::array();
  Json calls = Json::array();
};

// Files that a job names are below `from`.
Authored AuthorTonerJob(const Json& job, const Path& from, const Path& folder);
Authored AuthorInkJob(const Json& job, const Path& from, const Path& folder);

// Writes bytes, unless there are none, and gives the file's name.
std::string Put(const Path& folder, const std::string& name, const Bytes& bytes);

}  // namespace velora::tools
