#include "app/plot/view_drawing.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "app/plot/dense_curve.hpp"
#include "app/plot/pane_parts.hpp"
#include "app/plot/view_geometry.hpp"
#include "app/signal/sampling_rate.hpp"
#include "base/saturate.hpp"
#include "display/screen_state.hpp"

namespace torve {

namespace {

constexpr double tick_pixels = 50;

// So many that neighbouring ticks differ in their last three digits.
int decimals_for(double tick) {
  constexpr int most = 9;
  if (!(tick > 0)) return 0;
  return std::clamp(2 - static_cast<int>(std::floor(std::log10(tick))), 0, most);
}

AxisNumbers axis_in(const char* unit, double per_point, const PaneView& view) {
  const double tick = tick_pixels / view.xsc * per_point;
  return {
      .unit = unit, .origin = view.start * per_point, .tick = tick, .decimals = decimals_for(tick)};
}

AxisNumbers time_axis(const PaneView& view) {
  constexpr double least_tick = 0.1;  // seconds
  const bool in_seconds = tick_pixels / view.xsc / sampling_rate >= least_tick;
  return in_seconds ? axis_in("sec", 1.0 / sampling_rate, view)
                    : axis_in("ms", 1000.0 / sampling_rate, view);
}

AxisNumbers frequency_axis(const PaneView& view, int size) {
  return axis_in("Hz", static_cast<double>(sampling_rate) / size, view);
}

PaneParts parts_of(const PaneView& view, const ViewPoints& loaded) {
  PaneParts parts = {.largest = view.full_scale,
                     .ysc = view.ysc,
                     .xsc = view.xsc,
                     .shift = -view.start * view.xsc,
                     .title = view.file.c_str()};
  parts.spectrum = view.kind == PaneKind::spectrum;
  parts.axis = parts.spectrum ? frequency_axis(view, loaded.file->size) : time_axis(view);
  if (parts.spectrum) parts.title = "Power spectrum";
  parts.decibels = loaded.decibels;
  return parts;
}

// Where the curve of a view goes, as draw_pane_parts says.
CurvePlace curve_place(const PaneView& view, const ViewPoints& loaded, int yoff) {
  const auto area = kept_drawing_area();
  set_pane_area(yoff);
  return place_of_curve(parts_of(view, loaded));
}

}  // namespace

void draw_view(const PaneView& view, const ViewPoints& loaded, int yoff) {
  set_pane_area(yoff);
  draw_dense_curve(loaded.points(), draw_pane_parts(parts_of(view, loaded)));
}

PointPlace place_of_point(const PaneView& view, const ViewPoints& loaded, int yoff,
                          std::size_t index) {
  const CurvePlace place = curve_place(view, loaded, yoff);
  return {saturate_to_int(column_of(view, static_cast<double>(index))),
          point_row(loaded.points()[index], place)};
}

std::size_t nearest_point(const PaneView& view, const ViewPoints& loaded, int yoff, int x, int y) {
  const std::span<const float> points = loaded.points();
  const double last = static_cast<double>(points.size() - 1);
  const auto index_in_file = [&](double index) {
    return static_cast<std::size_t>(std::clamp(index, 0.0, last));
  };
  if (view.xsc >= 1) return index_in_file(std::floor(index_at(view, x) + 0.5));
  const CurvePlace place = curve_place(view, loaded, yoff);
  const std::size_t begin = index_in_file(std::ceil(index_at(view, x)));
  const std::size_t end = index_in_file(std::ceil(index_at(view, x + 1)));
  std::size_t nearest = begin;
  int least = -1;
  for (std::size_t i = begin; i < std::max(end, begin + 1); ++i) {
    const int distance = std::abs(point_row(points[i], place) - y);
    if (least >= 0 && distance >= least) continue;
    least = distance;
    nearest = i;
  }
  return nearest;
}

}  // namespace torve
