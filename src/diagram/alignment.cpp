#include "diagram/alignment.hpp"

#include <algorithm>
#include <cstdlib>

#include "diagram/editor.hpp"
#include "display/screen_state.hpp"

namespace torve {

namespace {

int rounded(int value, int last) {
  const int nearest = (value + grid_step / 2) / grid_step * grid_step;
  return nearest > last ? last / grid_step * grid_step : nearest;
}

}  // namespace

FigureAnchor on_grid(const PointerEvent& press) {
  if (!has(press.modifiers, Modifiers::control)) return {press.x, press.y};
  return {rounded(press.x, last_diagram_column), rounded(press.y, Y2mouse)};
}

FigureAnchor in_line(const FigureAnchor& from, const PointerEvent& press) {
  const FigureAnchor to = on_grid(press);
  if (!has(press.modifiers, Modifiers::shift)) return to;
  const int dx = to.x - from.x, dy = to.y - from.y;
  const int wide = std::abs(dx), high = std::abs(dy);
  constexpr int near = 12, far = 29;  // the tangent of half of 45 degrees
  if (far * high < near * wide) return {to.x, from.y};
  if (far * wide < near * high) return {from.x, to.y};
  // The shorter way, so that it stays inside the diagram.
  const int way = std::min(wide, high);
  return {from.x + (dx < 0 ? -way : way), from.y + (dy < 0 ? -way : way)};
}

}  // namespace torve
