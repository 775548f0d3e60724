// The drawing state that all rooms share: limits, text cursor, default colours.
#pragma once

#include "base/kept.hpp"
#include "base/rect.hpp"

namespace torve {

/// Values of `term`.
inline constexpr int text_console = 1;  // standard output
inline constexpr int text_screen = 2;

// State. Start values are those of reset_screen_state().
extern int X__max, Y__max;        // last column and row of the drawing surface: 799, 599
extern int X1_min, Y1_min;        // upper left corner of the current drawing area, pixels
extern int X1_max, Y1_max;        // its lower right corner; written by whoever draws in an area
extern int xxmin, yymin;          // upper left corner of the area open to figures, pixels
extern int xxmax, yymax;          // its lower right corner
extern int xkoord, ykoord;        // text cursor: where the next text's upper left corner goes
extern int bgcol, fgcol, fg1col;  // colour numbers: text background, text, second text colour
extern int lineLen;               // characters on a line of text
extern int gplanes;               // planes that the picture routines work with
extern int nocolor;               // the colour number that means: leave the background
extern int pensize;               // width of figure strokes, 0 for a single pixel
extern int term;                  // where text and messages go: text_console or text_screen
extern int window_width, window_height;  // the window's size, pixels; written by resize events

/// Every variable above to its start value.
void reset_screen_state();

/// The current drawing area as one value, and the area open to figures. Whether the lower right
/// corner belongs to an area is up to who draws in it; figures leave it out.
[[nodiscard]] Rect drawing_area();
void set_drawing_area(const Rect& area);
[[nodiscard]] Rect figure_area();
void set_figure_area(const Rect& area);

/// The whole drawing surface, its last column and row included, as the current drawing area.
void open_drawing_area();

/// Guards that put the two areas back at their end.
[[nodiscard]] inline Kept<int, int, int, int> kept_drawing_area() {
  return Kept(X1_min, Y1_min, X1_max, Y1_max);
}
[[nodiscard]] inline Kept<int, int, int, int> kept_figure_area() {
  return Kept(xxmin, yymin, xxmax, yymax);
}

}  // namespace torve
