// What `velora author` does with a job: one function a pipeline.
//
// Room: tools. What a job comes to is kept until `files` is committed. Fails as json_file.h says,
// and as authoring does.
#pragma once

#include "tools/velora/json_file.h"

namespace velora::tools {

// The files of a run, and what the report says of them: packs with their bytes and components,
// calls with their print mode, the bytes of the table and those that the packs have for it.
struct Authored {
  Json packs = Json::array();
  Json calls = Json::array();
  Outputs files;

  // Adds a file below the folder, unless it is empty, and gives its name.
  std::string Put(const Path& folder, const std::string& name, const Bytes& bytes);
};

// Keys that both pipelines share, and that no function below reads.
void ReadJobVersion(JsonObject* job);

Authored AuthorTonerJob(JsonObject job, const Path& folder);
Authored AuthorInkJob(JsonObject job, const Path& folder);

// A commented job for the profiles of this machine, and the tables that it names.
void InitJob(const Path& path);

}  // namespace velora::tools
