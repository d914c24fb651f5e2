#include "tools/velora/call_run.h"

#include <algorithm>

namespace velora::tools {
namespace {

using namespace authoring;

double Median(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  return times[times.size() / 2];
}

TableResult Call(const Device& device, const TableCall& call, bool quiet) {
  if (!quiet) return device.Rebuild(call);
  const QuietErrors quiet_errors;
  return device.Rebuild(call);
}

Outcome RebuildToner(const JsonFile& json, const std::string& library, int repeat, bool quiet) {
  const CallFile file = ReadCall(json);
  const Device device(library);
  std::vector<double> times;
  TableResult result{};
  for (int i = 0; i < repeat; ++i) {
    result = Call(device, file.call, quiet);
    times.push_back(result.microseconds);
  }
  return {json.path().string(),
          ModeText(file.call.mode),
          "",
          result.success,
          "refused",
          file.call.mode.table == 2,
          result.buffer,
          file.expected,
          Median(times),
          {}};
}

std::vector<Outcome> RebuildInk(const JsonFile& json, const std::string& library, int repeat) {
  const InkCallFile file = ReadInkCall(json);
  std::vector<InkRequest> requests;
  for (const InkRequestFile& request : file.requests) requests.push_back(request.request);
  const std::vector<InkResult> results = InkDevice(library).Ask(file.caller, requests, repeat);
  std::vector<Outcome> outcomes;
  for (std::size_t i = 0; i < results.size(); ++i) {
    const InkRequestFile& asked = file.requests[i];
    const InkResult& result = results[i];
    outcomes.push_back({json.path().string(), asked.kind + ", " + ModeText(asked.request.mode),
                        asked.kind, result.code == 0,
                        "refused with exception " + std::to_string(result.code), false,
                        result.record, asked.expected, result.miss, result.hit});
  }
  return outcomes;
}

}  // namespace

std::vector<Outcome> RunCall(const JsonFile& call, const std::string& library, int repeat,
                             bool quiet) {
  if (IsInkCall(call)) return RebuildInk(call, library, repeat);
  return {RebuildToner(call, library, repeat, quiet)};
}

}  // namespace velora::tools
