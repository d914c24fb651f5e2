// What the ink pipeline's operators make of nodes, for the ink encoder.
//
// Room: authoring. Values only. What the library refuses raises std::invalid_argument.
#pragma once

#include "authoring/pack.h"

namespace velora::authoring {

// The bytes that an operator stores of a cube of 4913 nodes: of a part of it, or of all of it as
// one string. The properties have node count, lossy level and delta range.
Step EncodeNodes(int operator_type, const std::vector<Value>& properties, const Bytes& cube);

}  // namespace velora::authoring
