#include "plinth/runtime/api/Trace.h"

namespace plinth::v1::api {

Trace& CurrentTrace() {
  // In the thread's static block: no allocation when a thread first comes here.
  [[gnu::tls_model("initial-exec")]] static thread_local Trace trace = {};
  return trace;
}

}  // namespace plinth::v1::api
