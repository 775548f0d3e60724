// Filled rectangles. Corners are (x1, y1) inclusive and (x2, y2) exclusive; what lies outside the
// screen is left out. An empty rectangle changes nothing and shows nothing.
#pragma once

#include <cstdint>

namespace torve {

/// Fills with a colour number.
void clearwin(int x1, int y1, int x2, int y2, int colour);

/// Fills with a pixel value; returns 1.
int clear_win1(int x1, int y1, int x2, int y2, std::uint32_t pixel);

/// Fills width x height pixels from (x, y) with a pixel value.
void fillbox2(int x, int y, int width, int height, std::uint32_t pixel);

/// The same, leaving it to the caller to mark what changed.
void fillbox3(int x, int y, int width, int height, std::uint32_t pixel);

/// The text cursor: `cells` cells of 8 pixels and `height` pixels in a colour number.
void drawcursor(int x, int y, int colour, int cells, int height);

// Not used by the workbench itself.

/// The same result as clearwin, pixel by pixel.
void clear_win(int x1, int y1, int x2, int y2, int colour);
/// The same with the copy of a colour that pictures use, entry 21 + colour of the table.
void clearwin_c(int x1, int y1, int x2, int y2, int colour);

}  // namespace torve
