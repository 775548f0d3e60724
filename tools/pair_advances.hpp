// Distances from letter to letter in a proportional font.
#pragma once

#include <array>
#include <cstdint>

#include "font_cells.hpp"

namespace torve {

/// Letters have classes of their own (a to z are 0 to 25, A to Z are 30 to 55); everything else is
/// class 0, which is also the class of 'a'.
constexpr int pair_classes = 60;
using PairAdvances = std::array<std::int8_t, pair_classes * pair_classes>;

/// Advances from the ink of the glyphs: class 0 to anything is as wide as the widest of 'a' and the
/// digits, so that columns of numbers line up; a letter is followed after one clear column, or
/// one pixel closer where its shape and the next one's still keep two clear columns in every row
/// and one to the diagonal neighbours. Never less than the ink (the next letter's background would
/// cut it), so never 0 (which would mean a whole cell).
[[nodiscard]] PairAdvances pair_advances(const FontCells& cells);

}  // namespace torve
