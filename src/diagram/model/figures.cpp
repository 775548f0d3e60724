#include "diagram/model/figures.hpp"

#include <cmath>
#include <cstdlib>
#include <utility>

namespace torve {

namespace {

int truncated(double value) {
  return static_cast<int>(value);
}

NamedPoints points_at(const FigureKindRow& row, const FigurePlace& place) {
  const auto& [x1, y1, x2, y2] = place;
  const ArrowHead head = row.has_head ? arrow_head(x1, y1, x2, y2) : ArrowHead{};
  return {{{x1, y1}, {x2, y2}, {head.x_right, head.y_right}, {head.x_left, head.y_left}}};
}

}  // namespace

ArrowHead arrow_head(int x1, int y1, int x2, int y2) {
  constexpr double length = 10.0;
  constexpr double half_angle = 0.628;
  constexpr double right_angle = 1.57;
  const auto corner = [=](double along, double across) {
    return std::pair(truncated(x2 + along), truncated(y2 + across));
  };
  std::pair<int, int> right(x2, y2);
  std::pair<int, int> left(x2, y2);
  if (x2 > x1) {
    const double angle = std::atan(static_cast<double>(y2 - y1) / (x2 - x1));
    right = corner(-length * std::cos(angle + half_angle), -length * std::sin(angle + half_angle));
    left = corner(-length * std::cos(angle - half_angle), -length * std::sin(angle - half_angle));
  } else if (x2 < x1) {
    const double angle = std::atan(static_cast<double>(y2 - y1) / (x1 - x2));
    right = corner(length * std::cos(half_angle - angle), length * std::sin(half_angle - angle));
    left = corner(length * std::cos(angle + half_angle), -length * std::sin(angle + half_angle));
  } else if (y2 != y1) {
    const double angle = right_angle - half_angle;
    const double down = y2 > y1 ? 1 : -1;
    right = corner(down * length * std::cos(angle), -down * length * std::sin(angle));
    left = corner(-down * length * std::cos(angle), -down * length * std::sin(angle));
  }
  return {right.first, right.second, left.first, left.second};
}

std::vector<FigureSegment> figure_segments(FigureKind kind, const FigurePlace& place) {
  const FigureKindRow& row = row_of(kind);
  if (row.strokes.empty() || !row.shows(place)) return {};
  const NamedPoints points = points_at(row, place);
  std::vector<FigureSegment> figure;
  figure.reserve(row.strokes.size());
  for (const Stroke& stroke : row.strokes)
    figure.push_back(resolved(stroke, points));
  return figure;
}

std::vector<PixelPosition> circle_points(const FigurePlace& place) {
  const double radius = std::abs(place.x2 - place.x1) / 2.0;
  const double cx = (place.x1 + place.x2) / 2.0;
  const double cy = (place.y1 + place.y2) / 2.0;
  std::vector<PixelPosition> points;
  for (double t = 0; t < 6.28; t += 0.1) {
    points.push_back(
        {truncated(radius * std::cos(t) + cx + 0.5), truncated(radius * std::sin(t) + cy + 0.5)});
  }
  return points;
}

}  // namespace torve
