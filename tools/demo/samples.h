// The real tables that both halves of the demo author.
//
// Room: tools. Values. A machine with too few profiles raises std::runtime_error.
#pragma once

#include <string>
#include <vector>

#include "authoring/icc.h"

namespace velora::tools {

struct Samples {
  std::vector<authoring::SampledTable> tables;  // the first is the toner printer's reference
  std::vector<authoring::SampledCurve> curves;  // three
};

// Tables for `authored` print modes, and the reference.
Samples SampleAll(int authored);

// "a98 > default_cmyk, relative".
std::string Told(const authoring::SampledTable& table);

}  // namespace velora::tools
