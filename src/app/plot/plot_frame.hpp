// The frame of a plot: axes, grid, ticks and numbers.
#pragma once

namespace torve {

/// As decimals: as many digits as axis_number finds.
inline constexpr int stated_digits = -1;

/// What draw_frame2 draws. Positions and distances are pixels, values those of the signal.
struct PlotFrame {
  int x1 = 0, y1 = 0, x2 = 0,
      y2 = 0;                  // drawing area; nothing is drawn on row y2 or right of column x2
  int bottom_margin = 16;      // from the x axis down to y2
  int colour = 0;              // colour number of strokes and numbers
  int number_background = 15;  // colour number behind numbers
  double tick_value = 0;       // what tick_distance pixels of x stand for; 0: no numbers along x
  double top_value = 0;        // value half_height pixels above the zero row
  bool grid = true;            // draw grid lines (on the screen only: in EPS they would be black)
  double origin_value = 0;     // value at the left end of the x axis
  double bottom_value = 0;     // value at the x axis of a curve
  bool spectrum = false;       // a spectrum stands on the x axis, magnified 1.7 times
  bool close_ticks = false;    // the ticks of a spectrum get decimals
  int number_row = 14;         // from the top of the numbers along x down to y2 + 1
  int target = 0;              // screen or EPS, as in draw_line
  int tick_distance = 50;      // from a numbered tick to the next
  int half_height = 79;        // from the zero row of a curve to its x axis
  int x_decimals = stated_digits;  // of the numbers along x; else as axis_number writes them
  int decibels = 0;                // the range of a y axis in decibels below its top; 0: values
};

/// The origin of a spectrum is given so much too large: its numbers are truncated, and a whole one
/// that was computed a little too small is to stay whole.
inline constexpr double spectrum_origin_shift = 0.1;

/// What a spectrum is magnified by.
inline constexpr double spectrum_magnification = 1.7;

/// Pixels from the x axis to the top of a spectrum's scale, where its largest bin stands.
[[nodiscard]] constexpr double spectrum_height(int half_height) {
  return spectrum_magnification * half_height;
}

/// From the left edge of the drawing area to the y axis.
inline constexpr int axis_column = 32;

/// Draws a frame with strokes and labels that the target can hold.
void draw_frame2(const PlotFrame& frame);

}  // namespace torve
