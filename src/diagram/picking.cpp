#include "diagram/picking.hpp"

#include <algorithm>
#include <cmath>

#include "diagram/figure_points.hpp"
#include "diagram/model/arcs.hpp"
#include "display/input.hpp"

namespace torve {

namespace {

constexpr int least_tolerance = 2;       // rows
constexpr double tolerance_share = 0.1;  // of a figure's height

bool beside(int column, int x, int reach) {
  return column - reach < x && x < column + reach;
}

constexpr double ink_reach = 4;  // pixels

// Which of an arc's bends a press is on; as many as there are for none.
std::size_t bend_at(const Vobj& arc, const PointerEvent& press) {
  std::size_t bend = 0;
  while (bend < arc.bends.size() && !(beside(arc.bends[bend].x, press.x, grab_reach) &&
                                      beside(arc.bends[bend].y, press.y, grab_reach)))
    ++bend;
  return bend;
}

}  // namespace

int tolerance_of(const Vobj& figure) {
  const int share = static_cast<int>((figure.y2 - figure.y1) * tolerance_share);
  return std::max(share, least_tolerance);
}

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
    if (is_seen(*figure) && ink_distance(*figure, x, y) <= ink_reach) return true;
  }
  return false;
}

PickedFigure picked_at(const PointerEvent& press) {
  for (Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (figure->phase == 0) continue;
    const FigurePart part = part_at(*figure, press);
    if (part != FigurePart::none) return {figure, part};
    const std::size_t bend = bend_at(*figure, press);
    if (press.button == first_button && bend < figure->bends.size())
      return {figure, FigurePart::bend, bend};
  }
  return {};
}

}  // namespace torve
