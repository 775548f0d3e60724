// Figures on the canvas.
#pragma once

#include "diagram/model/figures.hpp"
#include "diagram/model/vobj.hpp"
#include "display/screen_image.hpp"
#include "draw/draw_vector.hpp"

namespace torve {

/// What a call does: erase the figure where it stands, then draw it (where it stands then).
inline constexpr int figure_erase = 1;
inline constexpr int figure_draw = 2;

/// Erases the figure at `old_place` and draws it at `new_place` in its colour, as `flags` says.
void draw_vobj(VectorMode mode, Vobj* figure, const FigurePlace& new_place,
               const FigurePlace& old_place, int flags);

/// The same at the place where it stands.
void draw_vobj(VectorMode mode, Vobj* figure, int flags);

/// Where figures are drawn: the standing clip rectangle.
[[nodiscard]] Rect diagram_area();

/// A rectangle that a figure does not reach beyond: quickly told, and often too large.
[[nodiscard]] Rect room_of(const Vobj& figure);

/// Brings cvobj to the top of the drawing order. Returns 0, or 1 when it is there already.
int pick_up_cvobj();

/// Draws every figure, first to last, inside a rectangle (corners minimum inclusive, maximum
/// exclusive, pixels), over something that lies above the canvas: what the figures cover there
/// stays what it was. Returns 0.
int refresh_cvobj(int xmin, int ymin, int xmax, int ymax);

/// All figures off the canvas, last to first, and on it again, first to last: what of them lies in
/// a rectangle, pixels.
void lift_figures(const Rect& rect = whole_screen);
void lay_figures(const Rect& rect = whole_screen);

/// Erases and removes every figure; the diagram is empty then.
void free_vector_objects(VectorMode mode);

}  // namespace torve
