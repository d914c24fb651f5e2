// What `velora author` does with a job: one function a pipeline.
//
// Room: tools. Writes packs, records and calls to a folder that is there. Fails as files.h tells,
// and as authoring does.
#pragma once

#include <vector>

#include "authoring/goal.h"
#include "tools/velora/files.h"

namespace velora::tools {

// The files that were written, for the report: packs with their bytes and components, calls with
// their print mode, the bytes of the table and those that the packs have for it.
struct Authored {
  Json packs = Json::array();
  Json calls = Json::array();
  Json errors;  // the worst of all tables; null where nothing was measured

  // Of the last call.
  void AddErrors(const authoring::TableErrors& errors);
  void FinishErrors();
  const std::vector<authoring::TableErrors>& measured() const { return measured_; }

 private:
  std::vector<authoring::TableErrors> measured_;
};

struct AuthorOptions {
  Path keep;       // the folder of an earlier authoring whose printers are in the field; or none
  int effort = 1;  // of searches
};

// Files that a job names are below `from`.
Authored AuthorTonerJob(const Json& job, const Path& from, const Path& folder,
                        const AuthorOptions& options);
Authored AuthorInkJob(const Json& job, const Path& from, const Path& folder,
                      const AuthorOptions& options);

// What goals would come to, without writing anything: bytes of the packs against errors.
struct PlanPoint {
  authoring::Goal goal;
  long bytes;
  authoring::TableErrors errors;  // the worst of all tables
};
std::vector<PlanPoint> PlanTonerJob(const Json& job, const Path& from,
                                    const AuthorOptions& options);
std::vector<PlanPoint> PlanInkJob(const Json& job, const Path& from, const AuthorOptions& options);
// The goals that a plan tries: no loss, and mean errors from 0.125 to 2.
std::vector<authoring::Goal> PlanGoals();

// Writes bytes, unless there are none, and gives the file's name.
std::string Put(const Path& folder, const std::string& name, const Bytes& bytes);

}  // namespace velora::tools
