// What is in a pack, in words.
//
// Room: authoring. Values only; nothing fails.
#pragma once

#include <string>

#include "authoring/pack.h"

namespace velora::authoring {

// "Platform 3"; "DropsPerLevel 0-1-2-4".
std::string ValueText(const Value& value, const Words& words);

// "Platform 3, SupplyFamily 4"; "-" for no value.
std::string ValuesText(const std::vector<Value>& values, const Words& words);

// "ChannelMap [ThemeType 1; Channel 13]", "FromData (2457 bytes)", "Build_RGBtoCMYK".
std::string StepText(const Step& step, const Words& words);

// "ChannelMap (ThemeType 1, Channel 13, version 1)".
std::string ComponentText(const Component& component, const Words& words);

// Header and sizes, then the components kind by kind, each with its condition in infix, its tags
// and properties, and its recipe in postfix order.
std::string PackText(const PackFile& file);

}  // namespace velora::authoring
