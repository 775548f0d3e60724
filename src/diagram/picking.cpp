#include "diagram/picking.hpp"

#include <algorithm>
#include <cmath>

#include "diagram/figure_points.hpp"
#include "diagram/model/figures.hpp"
#include "display/input.hpp"

namespace torve {

namespace {

constexpr int grab_reach = 2;            // columns beside a point that no longer hit it
constexpr int properties_reach = 5;      // the same for the property menu
constexpr int least_tolerance = 2;       // rows
constexpr double tolerance_share = 0.1;  // of a figure's height

int tolerance_of(const Vobj& figure) {
  const int share = static_cast<int>((figure.y2 - figure.y1) * tolerance_share);
  return std::max(share, least_tolerance);
}

bool beside(int column, int x, int reach) {
  return column - reach < x && x < column + reach;
}

constexpr double ink_reach = 4;  // pixels

double distance_to(const VectorSegment& segment, double x, double y) {
  const double dx = segment.x2 - segment.x1;
  const double dy = segment.y2 - segment.y1;
  const double length2 = dx * dx + dy * dy;
  const double along = (x - segment.x1) * dx + (y - segment.y1) * dy;
  const double part = length2 > 0 ? std::clamp(along / length2, 0.0, 1.0) : 0;
  return std::hypot(segment.x1 + part * dx - x, segment.y1 + part * dy - y);
}

}  // namespace

FigurePart part_at(const Vobj& figure, const PointerEvent& press) {
  const int x = press.x;
  const int y = press.y;
  const FigureAnchor centre = centre_of(figure);
  const int t = tolerance_of(figure);
  if (beside(centre.x, x, grab_reach) && centre.y - t < y && y < centre.y + t) {
    return FigurePart::middle;
  }
  const bool in_head = figure.y1 <= y && y < figure.y1 + t;
  if (press.button != first_button) {
    const bool hit = in_head && beside(figure.x1, x, properties_reach);
    return hit ? FigurePart::properties : FigurePart::none;
  }
  if (beside(figure.x2, x, grab_reach) && figure.y2 - t < y && y <= figure.y2) {
    return FigurePart::end;
  }
  if (in_head && beside(figure.x1, x, grab_reach)) return FigurePart::head;
  return FigurePart::none;
}

bool a_figure_lies_at(int x, int y) {
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (!is_seen(*figure)) continue;
    for (const auto& [segment, slot, limit] : figure_segments(figure->kind, place_of(*figure))) {
      if (distance_to(segment, x, y) <= ink_reach) return true;
    }
  }
  return false;
}

PickedFigure picked_at(const PointerEvent& press) {
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (figure->phase == 0) continue;
    const FigurePart part = part_at(*figure, press);
    if (part != FigurePart::none) return {figure, part};
  }
  return {};
}

}  // namespace torve
