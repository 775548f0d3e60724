// Bitmap fonts as the X server ships them, read into glyphs of at most 16 pixels a row.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace torve {

constexpr int cell_rows = 10;
/// Ascenders stand on row 7; rows 8 and 9 are for descenders.
inline constexpr int baseline_row = 8;

/// One character cell: a byte per row from the top, bit 7 the leftmost of 8 pixels.
using Cell = std::array<std::uint8_t, cell_rows>;

/// The cells of a font by Unicode (or, without a Unicode map, by the font's own) code.
using CellMap = std::unordered_map<std::uint32_t, Cell>;

/// Reads every glyph of a PCF font (compressed or not) into a cell of ours.
/// Throws std::runtime_error when the file is no readable bitmap font.
[[nodiscard]] CellMap read_pcf_font(const std::string& path);

}  // namespace torve
