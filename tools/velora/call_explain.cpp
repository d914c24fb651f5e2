#include "tools/velora/call_explain.h"

#include "tools/velora/call_json.h"
#include "tools/velora/pack_io.h"
#include "velora/reason.h"

namespace velora::tools {
namespace {

using namespace authoring;

// The packs of a call by their names, or why one of them cannot be loaded.
struct LoadedPacks {
  std::vector<NamedPackFile> packs;
  std::string refusal;
};

LoadedPacks Load(const JsonFile& call, const std::vector<Bytes>& files, Pipeline pipeline,
                 int family) {
  LoadedPacks loaded;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const std::string name = call.json()["packs"][i].get<std::string>();
    try {
      const Pack pack = ReadPackBytes(name, files[i]).pack;
      if (pack.pipeline != pipeline) {
        loaded.refusal = name + ": a pack of the other pipeline";
      } else if (pack.family != family) {
        loaded.refusal = name + ": supply family " + std::to_string(pack.family) +
                         ", the call has " + std::to_string(family);
      }
      loaded.packs.push_back({name, pack});
    } catch (const std::exception& error) {
      loaded.refusal = error.what();
    }
    if (!loaded.refusal.empty()) return loaded;
  }
  try {
    std::vector<Pack> packs;
    for (const NamedPackFile& file : loaded.packs) packs.push_back(file.pack);
    CheckPacks(packs);
  } catch (const std::exception& error) {
    loaded.refusal = error.what();
  }
  return loaded;
}

void Finish(const LoadedPacks& loaded, const std::string& reason, Explained* explained) {
  const std::string start = explained->name + ": ";
  if (explained->success) {
    explained->last = start + "found in " + std::to_string(explained->lookups.size()) + " lookups";
    return;
  }
  std::string why;
  if (!explained->lookups.empty() && !explained->lookups.back().refusal.empty()) {
    why = explained->lookups.back().refusal;
  } else if (explained->lookups.empty()) {
    why = "before the first lookup: " + (loaded.refusal.empty() ? reason : loaded.refusal);
  } else {
    why = "all lookups found something; the table could not be built: " + reason;
  }
  explained->last = start + "refused: " + why;
}

Explained ExplainToner(const JsonFile& json) {
  const TableCall call = ReadCall(json).call;
  const LoadedPacks loaded = Load(json, call.packs, Pipeline::kToner, call.family);
  Explained explained{ModeText(call.mode), false, {}, ""};
  LookupRecorder recorder(Pipeline::kToner);
  {
    const QuietErrors quiet;
    explained.success = Device().Rebuild(call).success;
  }
  velora_reason reason;
  velora_last_reason(&reason);
  const CallNumbers numbers{Pipeline::kToner,
                            call.platform,
                            call.family,
                            call.variant,
                            {call.mode.table, call.mode.theme, call.mode.media, call.mode.axis}};
  explained.lookups = Explain(recorder.lookups(), loaded.packs, PresentOf(numbers, loaded.packs));
  Finish(loaded, reason.text, &explained);
  return explained;
}

std::vector<Explained> ExplainInk(const JsonFile& json) {
  const InkCallFile file = ReadInkCall(json);
  const LoadedPacks loaded = Load(json, file.caller.packs, Pipeline::kInk, file.caller.family);
  std::vector<Explained> all;
  for (const InkRequestFile& asked : file.requests) {
    const InkMode& mode = asked.request.mode;
    Explained explained{asked.kind + ", " + ModeText(mode), false, {}, ""};
    LookupRecorder recorder(Pipeline::kInk);
    std::string reason;
    try {
      const InkResult result = InkDevice().Ask(file.caller, {asked.request})[0];
      explained.success = result.code == 0;
      reason = "exception " + std::to_string(result.code);
    } catch (const std::runtime_error& error) {
      reason = error.what();
    }
    const CallNumbers numbers{Pipeline::kInk,
                              file.caller.platform,
                              file.caller.family,
                              file.caller.variant,
                              {mode.media, mode.subtype, mode.pen_set, mode.quality}};
    explained.lookups = Explain(recorder.lookups(), loaded.packs, PresentOf(numbers, loaded.packs));
    Finish(loaded, reason, &explained);
    all.push_back(std::move(explained));
  }
  return all;
}

}  // namespace

std::vector<Explained> ExplainCall(const JsonFile& call) {
  if (IsInkCall(call)) return ExplainInk(call);
  return {ExplainToner(call)};
}

}  // namespace velora::tools
