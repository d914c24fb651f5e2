// What `velora author` does with a job: one function a pipeline.
//
// Room: tools. What a job comes to is kept until `files` is committed. Fails as json_file.h says,
// and as authoring does.
#pragma once

#include "authoring/ink_job.h"
#include "authoring/toner_job.h"
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

// Reads the keys that both pipelines share, "job" and "pipeline"; true for an ink job. The other
// keys are for one of the functions below.
bool IsInkJob(JsonObject* job);

authoring::TonerJob ReadTonerJob(JsonObject job);
authoring::InkJob ReadInkJob(JsonObject job);
Authored AuthorTonerJob(JsonObject job, const Path& folder);
Authored AuthorInkJob(JsonObject job, const Path& folder);

// A commented job for the profiles of this machine, and the tables that it names, `tables` and the
// printer's reference.
void InitJob(const Path& path, int tables);

}  // namespace velora::tools
