// The text area of a framed window, its scroll bars and its edges.
#pragma once

#include "base/enum_flags.hpp"
#include "wm/wd_object.hpp"

namespace torve {

inline constexpr int window_cell = 8;                    // pixels of a step in x
inline constexpr int smallest_width = 12 * window_cell;  // pixels

/// What a press on a window means.
enum class WindowPart { outside = 0, top_left_box = 1, close_box = 2, scroll_bar = 3, inside = 4 };

/// Edges that a press is on, or that a step of resizing has moved.
enum class Edge : unsigned { none = 0, wider = 1, narrower = 2, taller = 4, shorter = 8 };
template <>
inline constexpr bool is_flag_enum<Edge> = true;

/// Ranges of the scroll bars (columns, lines; 0: nothing to scroll) and thumbs in 1/128.
struct ScrollState {
  int column_range = 0, line_range = 0;
  int x_fraction = 0, y_fraction = 0;
  // What a thumb leaves behind: the colour that its window's bars are painted in. The frame routine
  // knows no window and leaves spots of colour 16.
  int bar_colour = 16;
};

/// Sets the drawing limits to the text area of the window (two cells in from the left and top, one
/// from the right and bottom) and works out the thumbs.
void init_menu(const WdObject& object, ScrollState& scroll);

/// Draws the frame in colour `colour` with both thumbs where they belong. With `noframe` nonzero
/// only the thumbs.
void draw_window_frame(const WdObject& object, ScrollState& scroll, int colour, int noframe);

/// What lies at (x, y). On a scroll bar the press acts: the 9 pixels at a bar's ends are arrows,
/// one line or column when the press begins (`edge`); the track between them jumps to the position
/// and held motion follows. The record's scroll position and the thumb, drawn in colour `colour`,
/// follow.
WindowPart check_scrolling(WdObject& object, ScrollState& scroll, int x, int y, bool edge,
                           int colour);

/// The edges at (x, y): the outermost two pixels on the right and bottom widen, the next four
/// narrow; in the corner both. None for windows of fixed size.
[[nodiscard]] Edge check_resizing(const WdObject& object, int x, int y);

/// The step that a held pointer at (x, y) asks for while it resizes, among the edges it grabbed.
[[nodiscard]] Edge resize_step(const WdObject& object, int x, int y, Edge grabbed);

/// Whether a step leads to another size: not beyond the limits below.
[[nodiscard]] bool can_step(const WdObject& object, Edge step);

/// Changes a lifted window by one step (a cell, a line of `cr` pixels) and its background with it;
/// the caller repaints. Returns the edges that moved: none at the limits (the canvas; for steps
/// that shrink 12 cells by 3 cells and a line) or without memory.
Edge update_backgrnd(int id, Edge step);

}  // namespace torve
