// Single pixels of the screen image. Positions outside the screen are left alone (reading gives
// 0), so that no coordinate can damage memory. Without an image nothing happens.
//
// Two sorts of colour: a pixel value (0xRRGGBB) or a colour number of the colour table.
#pragma once

#include <cstdint>

namespace torve {

/// Writes a pixel value and leaves it to the caller to mark what changed.
void drawpixel2c(int x, int y, std::uint32_t pixel);

/// The pixel value at (x, y).
[[nodiscard]] std::uint32_t getpixel2c(int x, int y);

/// Writes a pixel value and marks the pixel for showing.
void drawpixel2b(int x, int y, std::uint32_t pixel);

/// The same with a colour number.
void drawpixel(int x, int y, int colour);

/// Writes a pixel value, marks the pixel and returns the value that was there.
std::uint32_t plot_point2(int x, int y, std::uint32_t pixel);

}  // namespace torve
