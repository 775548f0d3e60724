#include "app/plot/pane_parts.hpp"

#include <cstdio>
#include <cstring>

#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {

namespace {

constexpr int pane_right = 795;   // last column that a pane draws on
constexpr int pane_top = 12;      // from a pane's first row to its drawing area
constexpr int pane_bottom = 170;  // to the area's last row
constexpr int title_column = 12;  // cells
constexpr int title_row = 3;      // pixels below the top
constexpr int y_label_row = 20;
constexpr int unit_row = 13;  // pixels above the bottom
constexpr int label_colour = 0;
constexpr int label_background = 15;
constexpr std::size_t title_size = 180;

void write_label(int x, int y, const char* text, int target) {
  xkoord = x;
  ykoord = y;
  textn1(label_font, target, text, label_colour, label_background);
}

void write_labels(const char* unit, const char* y_label, const char* title, int target) {
  char copy[title_size];
  std::snprintf(copy, sizeof copy, "%s", title);
  const int unit_width = static_cast<int>(std::strlen(unit)) * cs;
  write_label(X1_max / 8 * 8 - unit_width, Y1_max - unit_row, unit, target);
  write_label(X1_min + cs, Y1_min + y_label_row, y_label, target);
  write_label(X1_min + title_column * cs, Y1_min + title_row, copy, target);
}

}  // namespace

void set_pane_area(int yoff) {
  set_drawing_area({0, yoff + pane_top, pane_right, yoff + pane_bottom});
}

CurvePlace place_of_curve(const PaneParts& parts) {
  const PlotFrame frame;
  double scale = parts.largest == 0 ? 0 : frame.half_height * parts.ysc / parts.largest;
  if (parts.decibels != 0) scale = static_cast<double>(frame.half_height) / parts.decibels;
  const int x_axis = Y1_max - frame.bottom_margin;
  return {.left = X1_min + axis_column,
          .right = X1_max,
          .top = Y1_min,
          .bottom = x_axis,
          .shift = parts.shift,
          .spacing = parts.xsc,
          .zero = x_axis - (parts.spectrum ? 0 : frame.half_height),
          .scale = scale,
          .magnification = parts.spectrum ? spectrum_magnification : 1,
          .colour = parts.colour,
          .target = parts.target};
}

CurvePlace draw_pane_parts(const PaneParts& parts) {
  draw_frame2({.x1 = X1_min,
               .y1 = Y1_min,
               .x2 = X1_max,
               .y2 = Y1_max,
               .colour = parts.colour,
               .number_background = parts.frame_colour,
               .tick_value = parts.axis.tick,
               .top_value = parts.largest / parts.ysc,
               .grid = parts.grid,
               .origin_value = parts.axis.origin,
               .bottom_value = -parts.largest / parts.ysc,
               .spectrum = parts.spectrum,
               .close_ticks = parts.axis.close_ticks,
               .target = parts.target,
               .x_decimals = parts.axis.decimals,
               .decibels = parts.decibels});
  const char* const y_label = parts.decibels != 0 ? "dB" : parts.spectrum ? "" : "num";
  write_labels(parts.axis.unit, y_label, parts.title, parts.target);
  return place_of_curve(parts);
}

void write_title(const char* text, int colour) {
  xkoord = X1_min + title_column * cs;
  ykoord = Y1_min + title_row;
  textn1(label_font, target_screen, text, colour, label_background);
}

}  // namespace torve
