// Small letters for pictures: capitals, digits and the signs that captions need.
//
// Room: authoring. Nothing is owned, nothing fails.
#pragma once

namespace velora::authoring {

constexpr int kLetterWidth = 5;
constexpr int kLetterHeight = 7;

// Whether a letter has ink at column [0..5) and row [0..7). Small letters look like capitals; what
// has no shape is blank.
bool HasInk(char letter, int column, int row);

}  // namespace velora::authoring
