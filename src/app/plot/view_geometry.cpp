#include "app/plot/view_geometry.hpp"

#include <algorithm>
#include <cmath>

namespace torve {

namespace {

constexpr double columns = last_curve_column - first_curve_column;
constexpr double largest_xsc = 200;  // pixels: four points in a pane
constexpr double ysc_limit = 1e6;

// The least spacing that is of use: of the whole file.
double least_xsc(std::size_t points) {
  return points < 2 ? 1 : std::min(largest_xsc, columns / static_cast<double>(points - 1));
}

// A file never leaves the pane: its first point is not right of the axis, and its last one not left
// of the right edge while there is more to the left. What a line shifted to the right may stay so.
PaneView kept_in_file(PaneView view, std::size_t points, double leftmost) {
  const double last = points < 2 ? 0 : static_cast<double>(points - 1);
  const double rightmost = std::max(0.0, last - columns / view.xsc);
  view.start = std::clamp(view.start, std::min(leftmost, 0.0), std::max(rightmost, 0.0));
  return view;
}

}  // namespace

double column_of(const PaneView& view, double index) {
  return first_curve_column + (index - view.start) * view.xsc;
}

double index_at(const PaneView& view, double column) {
  return view.start + (column - first_curve_column) / view.xsc;
}

PaneView closer_view(const PaneView& view, std::size_t points, double full_scale) {
  if (view.closer) return view;
  PaneView closer = view;
  closer.closer = true;
  closer.step = std::max(1, view.step);
  closer.full_scale = full_scale;
  if (!std::isfinite(view.ysc) || view.ysc == 0) closer.ysc = 1;
  const bool shows_points = view.xsc > 0 && view.xsc <= largest_xsc;
  if (!shows_points) return fitted(closer, points, 0, static_cast<double>(points));
  return closer;
}

PaneView zoomed(const PaneView& view, std::size_t points, double column, double factor) {
  PaneView result = view;
  const double least = std::min(view.xsc, least_xsc(points));
  result.xsc = std::clamp(view.xsc * factor, least, largest_xsc);
  result.start = index_at(view, column) - (column - first_curve_column) / result.xsc;
  return kept_in_file(result, points, view.start);
}

PaneView scrolled(const PaneView& view, std::size_t points, double widths) {
  PaneView result = view;
  result.start += widths * columns / view.xsc;
  return kept_in_file(result, points, view.start);
}

PaneView fitted(const PaneView& view, std::size_t points, double first, double last) {
  PaneView result = view;
  const double end = points < 2 ? 0 : static_cast<double>(points - 1);
  const auto [low, high] = std::minmax({std::clamp(first, 0.0, end), std::clamp(last, 0.0, end)});
  result.xsc = high > low ? std::min(largest_xsc, columns / (high - low)) : largest_xsc;
  result.start = low;
  return kept_in_file(result, points, 0);
}

PaneView followed(const PaneView& view, std::size_t points, const PaneView& before,
                  const PaneView& after) {
  PaneView result = view;
  result.xsc = after.xsc;
  result.start += after.start - before.start;
  return kept_in_file(result, points, view.start);
}

PaneView values_zoomed(const PaneView& view, double factor) {
  PaneView result = view;
  const double size = std::clamp(std::fabs(view.ysc) * factor, 1 / ysc_limit, ysc_limit);
  result.ysc = std::copysign(size, view.ysc);
  return result;
}

}  // namespace torve
