// What writing and reading a pack needs of a pipeline.
//
// Room: authoring, for its own files. `write`, `write_reference` and `read` are called while an
// OpenLibrary lives, and give the code of the exception that the library raised, 0 for none. They
// let no C++ exception out, for it would pass frames.
#pragma once

#include "authoring/TypeNames.h"
#include "authoring/lookup_trace.h"
#include "authoring/pack.h"

namespace velora::authoring {

// What was being written, for the message of a failure.
struct WritePlace {
  const Component* component = nullptr;
  const Step* step = nullptr;  // of its recipe
  int type = 0;                // of a value of either; 0: none
  int number = 0;              // that value
};

struct PackPipeline {
  const TypeNames& (*names)();
  bool (*open)();
  void (*close)();
  int (*write)(const Pack& pack, WritePlace* place, Bytes* file);
  int (*write_reference)(const Step& reference, WritePlace* place, Bytes* image);
  int (*read)(const Bytes& bytes, PackFile* file);
  // A component whose bytes a reader of the pack would take for another's; null: none.
  const Component* (*find_misread)(const Pack& pack);
  int largest_file;
  // Adds the lookups of requests from here on; null: no longer.
  void (*watch)(std::vector<LookupTrace>* lookups);
};

// Raises std::invalid_argument for one that is not there.
const PackPipeline& PipelineOf(Pipeline pipeline);

// Defined beside each pipeline's objects.
const PackPipeline& TonerPipeline();
const PackPipeline& InkPipeline();

// The library is up while one of these lives. Raises std::runtime_error if it does not come up.
class OpenLibrary {
 public:
  explicit OpenLibrary(const PackPipeline& pipeline);
  OpenLibrary(const OpenLibrary&) = delete;
  ~OpenLibrary();

 private:
  const PackPipeline& pipeline_;
};

// "the library refuses it with CException_General".
std::string RefusalText(int code);

// Raises what the library refused, with the place where it did: std::invalid_argument, or
// std::runtime_error for what is no component's fault.
[[noreturn]] void RaiseRefusal(int code, const WritePlace& place, const TypeNames& names);

}  // namespace velora::authoring
