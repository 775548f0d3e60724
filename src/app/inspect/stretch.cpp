#include "app/inspect/stretch.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

#include "app/inspect/overlay.hpp"
#include "app/inspect/views.hpp"
#include "app/plot/view_geometry.hpp"
#include "app/tools/pane_views.hpp"

namespace torve {

namespace {

constexpr int least_width = 4;  // pixels; less is a click
constexpr int edge_colour = 4;

struct Stretch {
  int pane = 0;
  int from = 0, to = 0;  // columns
};
std::optional<Stretch> stretch;
Overlay edges;

int column_in_curve(int x) {
  return std::clamp(x, first_curve_column, last_curve_column);
}

}  // namespace

void begin_stretch(int pane, const PointerEvent& press) {
  const int column = column_in_curve(press.x);
  stretch = {pane, column, column};
}

void drag_stretch(const PointerEvent& pointer) {
  if (!stretch) return;
  stretch->to = column_in_curve(pointer.x);
  const auto [left, right] = std::minmax(stretch->from, stretch->to);
  const int top = band_of(stretch->pane).y1 + 12;
  const int bottom = top + 143;
  const std::array<OverlayLine, 3> lines = {{
      {{left, top, left + 1, bottom}, edge_colour},
      {{right, top, right + 1, bottom}, edge_colour},
      {{left, top, right, top + 2}, edge_colour},
  }};
  edges.show(lines);
}

void end_stretch(const PointerEvent& pointer) {
  if (!stretch) return;
  const auto [pane, from, last] = *stretch;
  const int to = column_in_curve(pointer.x);
  give_up_stretch();
  const PaneView view = shown_view(pane);
  if (std::abs(to - from) < least_width || !(view.xsc > 0)) return;
  show_stretch(pane, index_at(view, std::min(from, to)), index_at(view, std::max(from, to)),
               pointer.time);
}

bool give_up_stretch() {
  edges.clear();
  const bool had_begun = stretch.has_value();
  stretch.reset();
  return had_begun;
}

}  // namespace torve
