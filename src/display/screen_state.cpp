#include "display/screen_state.hpp"

#include "display/colours.hpp"
#include "display/screen_image.hpp"

namespace torve {

int X__max, Y__max;
int X1_min, Y1_min;
int X1_max, Y1_max;
int xxmin, yymin;
int xxmax, yymax;
int xkoord, ykoord;
int bgcol, fgcol, fg1col;
int lineLen;
int gplanes;
int nocolor;
int pensize;
int term;
int window_width, window_height;

namespace {
[[maybe_unused]] const bool initialised = (reset_screen_state(), true);
}  // namespace

void reset_screen_state() {
  X__max = screen_width - 1;
  Y__max = screen_height - 1;
  open_drawing_area();
  xxmin = yymin = 0;
  xxmax = X__max;
  yymax = Y__max;
  xkoord = ykoord = 0;
  bgcol = 0;
  fgcol = fg1col = white_colour;
  lineLen = 80;
  gplanes = screen_planes;
  nocolor = white_colour;
  pensize = 0;
  term = text_screen;
  window_width = screen_width;
  window_height = screen_height;
}

Rect drawing_area() {
  return {X1_min, Y1_min, X1_max, Y1_max};
}

void set_drawing_area(const Rect& area) {
  X1_min = area.x1;
  Y1_min = area.y1;
  X1_max = area.x2;
  Y1_max = area.y2;
}

Rect figure_area() {
  return {xxmin, yymin, xxmax, yymax};
}

void set_figure_area(const Rect& area) {
  xxmin = area.x1;
  yymin = area.y1;
  xxmax = area.x2;
  yymax = area.y2;
}

void open_drawing_area() {
  set_drawing_area({0, 0, X__max, Y__max});
}

}  // namespace torve
