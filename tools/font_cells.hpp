// The 255 glyphs of a font of ours, gathered from fonts with other character sets.
//
// Codes 1 to 24 are national letters, 32 to 126 ASCII, 160 to 254 Latin-1 (or, in the Greek font,
// the places of the Symbol encoding); every other code shows a box, so that a stray byte is seen.
#pragma once

#include <array>

#include "pcf_font.hpp"

namespace torve {

constexpr int font_glyphs = 255;
using FontCells = std::array<Cell, font_glyphs>;

/// What digits, punctuation and blank of a proportional font are centred in, in pixels.
constexpr int shared_ink_width = 5;

/// The fixed-pitch menu face: `bold` with the national letters composed from its own letters and
/// everything else it lacks from `fallback`.
[[nodiscard]] FontCells fixed_cells(const CellMap& bold, const CellMap& fallback);

/// A proportional face: letters moved to the left edge, all else centred in the shared width.
/// The marks . , : ; come from `marks`, where they are plain (those of `face` are diamonds).
[[nodiscard]] FontCells proportional_cells(const CellMap& face, const CellMap& marks);

/// The Greek letters and signs of `face` in the places of the Symbol encoding.
[[nodiscard]] FontCells greek_cells(const CellMap& face);

/// The ink of a cell moved to column 0.
[[nodiscard]] Cell left_justified(const Cell& cell);

/// Number of columns from column 0 to the last with ink; 0 for a blank.
[[nodiscard]] int ink_end(const Cell& cell);

}  // namespace torve
