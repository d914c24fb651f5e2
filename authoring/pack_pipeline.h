// What writing and reading a pack needs of a pipeline.
//
// Room: authoring, for its own files. `write` and `read` are called between `open` and `close`, and
// give the code of the exception that the library raised, 0 for none. They let no C++ exception
// out, for it would pass frames.
#pragma once

#include "authoring/pack.h"
#include "authoring/words.h"

namespace velora::authoring {

// What was being written, for the message of a failure.
struct WritePlace {
  const Component* component = nullptr;
  const Step* step = nullptr;  // of its recipe
  Value value{0};              // of either; type 0: none
};

struct PackPipeline {
  const Words& (*words)();
  bool (*open)();
  void (*close)();
  int (*write)(const Pack& pack, WritePlace* place, Bytes* file);
  int (*read)(const Bytes& bytes, PackFile* file);
};

// Raises std::invalid_argument for one that is not there.
const PackPipeline& PipelineOf(Pipeline pipeline);

// Defined beside each pipeline's objects.
const PackPipeline& TonerPipeline();

}  // namespace velora::authoring
