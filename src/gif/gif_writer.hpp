// Saving a part of the screen as a GIF87a picture.
//
// The picture is widened by 12.8 / 10.7. Its colour table is entries 0 to 255 of our own, but a
// pixel's index is found among the entries from 21 on: colours 0 to 10 are the same there, 11 to
// 15 take the indices 22 to 26. The last byte is 0x36, not the usual trailer 0x3B.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/outcome.hpp"
#include "base/rect.hpp"

namespace torve {

/// Width of the picture of `columns` screen columns, pixels.
[[nodiscard]] int gif_width(int columns);

/// The colour indices of a rectangle of the screen, row by row, gif_width() of them a row. A pixel
/// at a negative position is 15, one of no table colour 0.
[[nodiscard]] std::vector<std::uint8_t> gif_indices(const Rect& rect);

/// A whole file: header, colour table, picture.
[[nodiscard]] std::vector<std::uint8_t> gif_file(int width, int height,
                                                 std::span<const std::uint8_t> indices);

/// Writes a rectangle of the screen to a file; says "in writeGIF1 uColors=256\n".
Outcome write_gif(const std::string& name, const Rect& rect);

/// The same from (x1, y1) to (x2, y2), both included. An empty rectangle writes nothing. Returns 0,
/// also after no_memory(), or 1 after cannot_create_file() and when the file could not be written
/// whole.
int writeGIF1(const std::string& name, int x1, int y1, int x2, int y2);

}  // namespace torve
