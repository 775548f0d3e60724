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
  X1_min = Y1_min = 0;
  X1_max = X__max;
  Y1_max = Y__max;
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

}  // namespace torve
