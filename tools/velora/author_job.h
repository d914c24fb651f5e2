// What `velora author` does with a job: one function a pipeline.
//
// Room: tools. What a job comes to is kept until `files` is committed. Fails as json_file.h says,
// and as authoring does.
#pragma once

#include <stdexcept>
#include <vector>

#include "authoring/goal.h"
#include "authoring/ink_job.h"
#include "authoring/toner_job.h"
#include "tools/velora/json_file.h"

namespace velora::tools {

// The files of a run, and what the report says of them: packs with their bytes and components,
// calls with their print mode, the bytes of the table and those that the packs have for it.
struct Authored {
  Json packs = Json::array();
  Json calls = Json::array();
  Json errors;  // the worst of all tables; null where nothing was measured
  Outputs files;

  // Adds a file below the folder, unless it is empty, and gives its name.
  std::string Put(const Path& folder, const std::string& name, const Bytes& bytes);
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

// What goals would come to, without writing anything: bytes of the packs against errors.
struct PlanPoint {
  authoring::Goal goal;
  long bytes;
  authoring::TableErrors errors;  // the worst of all tables
};
// The goals that a plan tries: no loss, and mean errors from 0.125 to 2.
std::vector<authoring::Goal> PlanGoals();

// Reads the keys that both pipelines share, "job" and "pipeline"; true for an ink job. The other
// keys are for one of the functions below.
bool IsInkJob(JsonObject* job);

authoring::TonerJob ReadTonerJob(JsonObject job, const Path& keep = {});
authoring::InkJob ReadInkJob(JsonObject job);
// Authors under a progress bar. What the library prints is not shown.
authoring::TonerProduct Author(authoring::TonerJob job, int effort = 1);
authoring::InkProduct Author(authoring::InkJob job, int effort = 1);
Authored AuthorTonerJob(JsonObject job, const Path& folder, const AuthorOptions& options);
Authored AuthorInkJob(JsonObject job, const Path& folder, const AuthorOptions& options);
std::vector<PlanPoint> PlanTonerJob(JsonObject job, const AuthorOptions& options);
std::vector<PlanPoint> PlanInkJob(JsonObject job, const AuthorOptions& options);

// What authoring refuses names the job.
template <class Work>
auto OfJob(const Path& path, Work work) {
  try {
    return work();
  } catch (const std::invalid_argument& error) {
    throw Refusal(path.string(), error.what());
  } catch (const authoring::GoalMissed& error) {
    throw Refusal(path.string(), error.what());
  }
}

// A commented job for the profiles of this machine, and the tables that it names, `tables` and the
// printer's reference.
void InitJob(const Path& path, int tables);

}  // namespace velora::tools
