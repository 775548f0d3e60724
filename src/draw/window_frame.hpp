// The frame of a window object: border, title bar with its two boxes, scroll bars.
//
// Positions on a scroll bar are fractions in 1/128 of the scrolled range.
#pragma once

#include "base/enum_flags.hpp"

namespace torve {

/// What putWinFrame leaves out.
enum class FrameFlags : unsigned {
  none = 0,
  no_vertical_bar = 8,
  no_horizontal_bar = 16,
};
template <>
inline constexpr bool is_flag_enum<FrameFlags> = true;

/// Draws the frame of a `width` x `height` window at (x, y), pixels, in a colour number (negative:
/// white). `xpos` of `xrange` and `ypos` of `yrange` are the positions shown; their fractions are
/// stored in the two outputs, 0 where a range is below 1. Unless the flags leave a bar out, its
/// arrow heads and thumb are drawn too. The vertical thumb stands at the x fraction, which also
/// replaces the y fraction: callers that show a vertical position set it with update_yscrollbar.
/// With `noframe` nonzero only the thumbs are drawn.
void putWinFrame(int x, int y, int height, int width, int xpos, int ypos, int xrange, int yrange,
                 int* x_fraction, int* y_fraction, int colour, FrameFlags flags, int noframe);

/// The two arrow heads of a vertical bar of `length` pixels from (x, y) down.
void putVertArrows(int x, int y, int length, int colour);

/// The two arrow heads of a horizontal bar of `length` pixels from (x, y) to the right.
void putHorArrows(int x, int y, int length, int colour);

/// Moves the thumb of a vertical bar at column x between rows y1 and y2 from `*position` to
/// `new_position` (fractions), erasing the old one in a colour number (negative: black).
void update_yscrollbar(int* position, int new_position, int erase_colour, int colour, int x, int y1,
                       int y2);

/// The same for a horizontal bar at row y between columns x1 and x2. Here colour numbers up to 4
/// take their extra shade, as the arrow heads do.
void update_xscrollbar(int* position, int new_position, int erase_colour, int colour, int x1,
                       int x2, int y);

}  // namespace torve
