// What of a sample file stands in a figure: its points, or for each column their ends.
//
// Files are read twice where their length has to be known, piece by piece: one of hours needs no
// more memory than one of seconds.
#pragma once

#include <vector>

#include "base/outcome.hpp"
#include "figure/drawing.hpp"
#include "figure/request/figure_request.hpp"

namespace torve {

/// Seconds of a signal, hertz of a spectrum.
struct AxisRange {
  double left = 0, right = 0;
};

/// How the points of an input lie along the axis.
struct PointPlaces {
  AxisRange range;   // what the input asks for
  double first = 0;  // of the first point that is read
  double unit = 1;   // from one to the next
};

/// Opens the file and finds `places`, for which it is read if its end is asked for. Fails where
/// there is no file, no sample, or none behind the start.
Outcome find_places(const FigureInput& input, PointPlaces* places);

/// The points of a column, with the one before them, from which the curve comes.
struct ColumnEnds {
  double low = 0, high = 0;
  bool is_empty = true;
};

/// What is seen of an input. Points that are no finite number are left out.
struct SeenPoints {
  std::vector<Point> points;        // axis and value, one before and one behind the ends among them
  std::vector<ColumnEnds> columns;  // instead, where there are more points than columns
  double low = 0, high = 0;         // of what is seen, and 0
  double largest = 0;               // absolute value, of all from the start on
  double smallest = 1;              // of those above 0, if it is less than 1
};

/// Reads what lies within `range`, which as many columns as `columns` share.
Outcome read_points(const FigureInput& input, const PointPlaces& places, const AxisRange& range,
                    int columns, SeenPoints* seen);

/// The same in decibels below the largest, as far down as a pane shows them (decibel_range).
void use_decibels(SeenPoints& seen);

}  // namespace torve
