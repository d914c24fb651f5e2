#include "authoring/lookup_trace.h"

#include "authoring/pack_pipeline.h"

namespace velora::authoring {

LookupRecorder::LookupRecorder(Pipeline pipeline) : pipeline_(pipeline) {
  PipelineOf(pipeline).watch(&lookups_);
}

LookupRecorder::~LookupRecorder() { PipelineOf(pipeline_).watch(nullptr); }

}  // namespace velora::authoring
