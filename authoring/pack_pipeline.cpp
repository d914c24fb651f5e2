#include "authoring/pack_pipeline.h"

#include <stdexcept>

#include "authoring/pack_text.h"
#include "plinth/runtime/api/CException.h"

namespace velora::authoring {
namespace {

std::string ExceptionName(int code) {
#define NAME_ROW(Name, Code) \
  if (code == Code) return #Name;
  PLINTH_EXCEPTIONS(NAME_ROW)
#undef NAME_ROW
  return "exception " + std::to_string(code);
}

}  // namespace

const PackPipeline& PipelineOf(Pipeline pipeline) {
  if (pipeline == Pipeline::kInk) return InkPipeline();
  if (pipeline == Pipeline::kToner) return TonerPipeline();
  throw std::invalid_argument("no pipeline has Velora schema " +
                              std::to_string(static_cast<int>(pipeline)));
}

OpenLibrary::OpenLibrary(const PackPipeline& pipeline) : pipeline_(pipeline) {
  if (!pipeline.open()) throw std::runtime_error("the library cannot be opened");
}

OpenLibrary::~OpenLibrary() { pipeline_.close(); }

std::string RefusalText(int code) { return "the library refuses it with " + ExceptionName(code); }

void RaiseRefusal(int code, const WritePlace& place, const TypeNames& names) {
  std::string text = RefusalText(code);
  if (place.component == nullptr && place.step == nullptr) {
    throw std::runtime_error("the pack: " + text);
  }
  if (place.type != 0) text = ValueText({place.type, place.number}, names) + ": " + text;
  if (place.step != nullptr) text = names.NameOf(place.step->type) + ": " + text;
  if (place.component != nullptr) text = ComponentText(*place.component, names) + ": " + text;
  throw std::invalid_argument(text);
}

}  // namespace velora::authoring
