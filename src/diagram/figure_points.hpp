// The two points of a figure, and what holds between them.
#pragma once

#include "diagram/model/vobj.hpp"

namespace torve {

/// Sets a figure's second (first) point, pixels. Upright kinds keep both points in one column,
/// telephones and labels their size. Return 0.
int set_x2_y2(Vobj* figure, int x, int y);
int set_x1_y1(Vobj* figure, int x, int y);

/// Whether the second point may not lie above the first.
[[nodiscard]] bool y1_ge_y2(const Vobj& figure);

/// The middle between the points, halves cut off; of an arc that of its middle piece.
[[nodiscard]] FigureAnchor centre_of(const Vobj& figure);

/// What the distance of its label is kept to: the first point, the middle of a line or an arc,
/// the upper left corner of a box.
[[nodiscard]] FigureAnchor anchor_of(const Vobj& figure);

/// Moves both points, and the bends.
void shift(Vobj* figure, int dx, int dy);

// Not used by the workbench itself.

/// The corners of an arrow head at (x2, y2): right and left of the arrow's way.
void get_x3y3r(int x1, int y1, int x2, int y2, int* x3, int* y3);
void get_x3y3l(int x1, int y1, int x2, int y2, int* x3, int* y3);

}  // namespace torve
