// What is said of a point of a pane, and of the way to it from a mark.
#pragma once

#include <optional>
#include <string>

#include "app/plot/view_points.hpp"

namespace torve {

/// A point of a file, with what it means.
struct Reading {
  PaneKind kind = PaneKind::nothing;
  int pane = 0;           // 0, 1 or 2
  std::string file;       // its name
  std::size_t index = 0;  // of the sample or bin, counted from 0
  double position = 0;    // seconds, or Hz
  float value = 0;        // as it stands in the file: a sample, or a power
  double below = 0;       // decibels of the power against the file's largest one
};

/// Reads point `index` of a view.
[[nodiscard]] Reading read_point(const PaneView& view, const ViewPoints& loaded, int pane,
                                 std::size_t index);

/// "2 bhld1.res sample 1544  35.011 ms  0.25", or of a spectrum
/// "3 spectr3.spe bin 12  264.6 Hz  0.25  -12.34 dB"; then, if there is a mark of the same kind,
/// what the point is away from it: " | 1.234 ms 810.37 Hz -0.5", of a spectrum
/// " | 26.46 Hz -3.01 dB". Values are the shortest texts that mean them, differences have six
/// digits.
[[nodiscard]] std::string text_of(const Reading& reading, const std::optional<Reading>& mark);

}  // namespace torve
