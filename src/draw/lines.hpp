// Straight lines of one-pixel strokes.
#pragma once

namespace torve {

/// Where drawing routines that can do both put their strokes and labels.
inline constexpr int target_screen = 0;
inline constexpr int target_eps = 1;

/// The segment between two positions, pixels, both ends included, in a colour number; on the
/// screen for target 0, else into the open EPS file and not on the screen.
void draw_line(int x1, int y1, int x2, int y2, int colour, int target);

/// The same on the screen, cut at its edges: one pixel for each step of the longer extent, the
/// other coordinate truncated towards the first end point.
void draw_line1(int x1, int y1, int x2, int y2, int colour);

}  // namespace torve
