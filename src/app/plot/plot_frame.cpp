#include "app/plot/plot_frame.hpp"

#include <algorithm>
#include <string>

#include "app/plot/axis_numbers.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {

namespace {

constexpr int small_tick_distance = 10;
constexpr int small_ticks_per_large = 5;
constexpr int light_grid_colour = 9;   // pale cyan-grey
constexpr int strong_grid_colour = 8;  // grey
constexpr int number_advance = 6;      // of digits, sign and point in the number font
constexpr int y_number_right = 30;     // right end of the numbers along y, from the left edge
constexpr int most_y_characters = 5;   // five of them fill the columns left of the axis
constexpr int most_x_characters = 8;
constexpr int widest_close_number = 44;  // wider ones stand at every second tick only
constexpr int last_numbered_tick = 14;   // the unit's place is behind it
constexpr int glyph_rows_of_numbers = 10;

struct Axes {
  int column;  // of the y axis
  int row;     // of the x axis
  int zero;    // row of the value 0
};

Axes axes_of(const PlotFrame& frame) {
  const int row = frame.y2 - frame.bottom_margin;
  return {frame.x1 + axis_column, row, frame.spectrum ? row : row - frame.half_height};
}

bool is_large(int tick) {
  return tick % small_ticks_per_large == 0;
}

// Calls draw(tick, position) for every tick from `zero` up to and down to the two limits.
template <typename Draw>
void for_ticks(int zero, int low, int high, Draw draw) {
  const int first = -((zero - low) / small_tick_distance);
  for (int tick = first; zero + tick * small_tick_distance <= high; ++tick) {
    draw(tick, zero + tick * small_tick_distance);
  }
}

// The rows of decibels: every tenth is a tick, and a large one if its number has room.
constexpr int decibels_of_a_tick = 10;
constexpr int least_rows_of_a_number = 20;

int decibel_row(const PlotFrame& frame, const Axes& axes, int below) {
  const double height = spectrum_height(frame.half_height) * (frame.decibels - below);
  return axes.row - static_cast<int>(height / frame.decibels);
}

bool is_numbered_decibel(const PlotFrame& frame, int below) {
  const double rows = spectrum_height(frame.half_height) * decibels_of_a_tick / frame.decibels;
  return below % (rows < least_rows_of_a_number ? 2 * decibels_of_a_tick : decibels_of_a_tick) == 0;
}

// Calls draw(large, row) for every tick of the y axis within top .. bottom.
template <typename Draw>
void for_value_ticks(const PlotFrame& frame, const Axes& axes, int bottom, Draw draw) {
  if (frame.decibels == 0) {
    for_ticks(axes.zero, frame.y1, bottom, [&](int tick, int y) { draw(is_large(tick), y); });
    return;
  }
  for (int below = 0; below <= frame.decibels; below += decibels_of_a_tick) {
    const int row = decibel_row(frame, axes, below);
    if (row <= bottom) draw(is_numbered_decibel(frame, below), row);
  }
}

void draw_grid(const PlotFrame& frame, const Axes& axes) {
  // The light lines first: where they cross strong ones, the strong ones stay whole.
  for (const bool strong : {false, true}) {
    const int colour = strong ? strong_grid_colour : light_grid_colour;
    for_ticks(axes.column, axes.column + 1, frame.x2, [&](int tick, int x) {
      if (tick != 0 && is_large(tick) == strong) {
        draw_line(x, frame.y1, x, axes.row - 1, colour, frame.target);
      }
    });
    for_value_ticks(frame, axes, axes.row - 1, [&](bool large, int y) {
      if (large == strong) draw_line(axes.column + 1, y, frame.x2, y, colour, frame.target);
    });
  }
}

void draw_axes(const PlotFrame& frame, const Axes& axes) {
  draw_line(axes.column, frame.y1, axes.column, axes.row, frame.colour, frame.target);
  draw_line(axes.column, axes.row, frame.x2, axes.row, frame.colour, frame.target);
}

void draw_ticks(const PlotFrame& frame, const Axes& axes) {
  for_ticks(axes.column, axes.column, frame.x2, [&](int tick, int x) {
    draw_line(x, axes.row, x, axes.row + (is_large(tick) ? 2 : 1), frame.colour, frame.target);
  });
  for_value_ticks(frame, axes, axes.row, [&](bool large, int y) {
    draw_line(axes.column, y, axes.column + (large ? 4 : 2), y, frame.colour, frame.target);
  });
}

int width_of(const std::string& number) {
  return number_advance * static_cast<int>(number.size());
}

void write_number(const PlotFrame& frame, const std::string& number, int x, int y) {
  if (number.empty()) return;
  xkoord = std::max(x, frame.x1);
  ykoord = y;
  textn1(number_font, frame.target, number.c_str(), frame.colour, frame.number_background);
}

void number_x_axis(const PlotFrame& frame, const Axes& axes) {
  if (frame.tick_value == 0) return;
  const auto number_at = [&](int tick) {
    const double value = frame.origin_value + tick * frame.tick_value;
    if (frame.x_decimals != stated_digits) return fixed_axis_number(value, frame.x_decimals);
    if (!frame.spectrum) return axis_number(value, most_x_characters);
    if (!frame.close_ticks) return whole_axis_number(value, most_x_characters);
    return axis_number(value - spectrum_origin_shift, most_x_characters);
  };
  int widest = 0;
  for (int tick = 0; tick <= last_numbered_tick; ++tick) {
    widest = std::max(widest, width_of(number_at(tick)));
  }
  const int every = widest > widest_close_number ? 2 : 1;
  for (int tick = 0; tick <= last_numbered_tick; tick += every) {
    const std::string number = number_at(tick);
    write_number(frame, number, axes.column + tick * frame.tick_distance - width_of(number) / 2,
                 frame.y2 - frame.number_row + 1);
  }
}

void write_y_number(const PlotFrame& frame, const std::string& number, int y) {
  write_number(frame, number, frame.x1 + y_number_right - width_of(number), y);
}

void number_decibels(const PlotFrame& frame, const Axes& axes) {
  for (int below = 0; below <= frame.decibels; below += decibels_of_a_tick) {
    if (!is_numbered_decibel(frame, below)) continue;
    const int row = decibel_row(frame, axes, below) - glyph_rows_of_numbers / 2;
    write_y_number(frame, std::to_string(-below), std::min(row, axes.row - glyph_rows_of_numbers));
  }
}

void number_y_axis(const PlotFrame& frame, const Axes& axes) {
  if (frame.decibels != 0) return number_decibels(frame, axes);
  const auto write_at = [&](const std::string& number, int y) { write_y_number(frame, number, y); };
  // The top row is not half_height pixels above zero, so its value is not the top value.
  const double pixels_of_top_value =
      frame.spectrum ? spectrum_height(frame.half_height) : frame.half_height;
  const double top = frame.top_value * (axes.zero - frame.y1) / pixels_of_top_value;
  const AxisEnds ends = axis_ends(top, frame.spectrum ? 0 : frame.bottom_value, most_y_characters);
  write_at(ends.top, frame.y1);
  if (!frame.spectrum) write_at("0", axes.zero - glyph_rows_of_numbers / 2);
  write_at(ends.bottom, axes.row - glyph_rows_of_numbers);
}

}  // namespace

void draw_frame2(const PlotFrame& frame) {
  const Axes axes = axes_of(frame);
  if (frame.grid && frame.target == target_screen) draw_grid(frame, axes);
  draw_axes(frame, axes);
  draw_ticks(frame, axes);
  number_x_axis(frame, axes);
  number_y_axis(frame, axes);
}

}  // namespace torve
