// What is in a pack, in words.
//
// Room: authoring. Values only; nothing fails.
#pragma once

#include <string>

#include "authoring/pack.h"

namespace velora::authoring {

// "Platform 3"; "DropsPerLevel 0-1-2-4".
std::string ValueText(const Value& value, const TypeNames& names);

// "Platform 3, SupplyFamily 4"; "-" for no value.
std::string ValuesText(const std::vector<Value>& values, const TypeNames& names);

// "ChannelMap [ThemeType 1; Channel 13]", "FromData (2457 bytes)", "Build_RGBtoCMYK".
std::string StepText(const Step& step, const TypeNames& names);

// "ChannelMap (ThemeType 1, Channel 13, version 1)".
std::string ComponentText(const Component& component, const TypeNames& names);

// Header and sizes, a line each.
std::string HeaderText(const PackFile& file);

// A line a kind of component: how many there are, and the bytes that they store.
std::string KindsText(const Pack& pack);

// A line a print mode that a request can find, in the caller's numbers, and when it is valid.
std::string ModesText(const Pack& pack);

// The components kind by kind, each with its condition in infix, its tags and properties, and its
// recipe in postfix order. Print modes are in the caller's numbers.
std::string ComponentsText(const Pack& pack);

}  // namespace velora::authoring
