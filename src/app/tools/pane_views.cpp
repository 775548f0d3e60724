#include "app/tools/pane_views.hpp"

#include "app/plot/plot_panes.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "draw/rectangles.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

// All three panes, with the rows of the last one that menus reach into: a file that is missing is
// reported in the pane that was drawn last, whichever that is.
constexpr Rect all_panes = {0, 0, 800, (pane_count - 1) * pane_pitch + pane_rows + 1};

void clear_band(int pane) {
  clearwin(0, pane_row(pane), X__max + 1, pane_row(pane) + pane_rows, nocolor);
}

void plot(int pane, const PaneView& view, int target) {
  plot_anew(pane_name(pane), pane_row(pane), view.start, view.step, view.xsc, view.ysc, target);
}

void plot_bins(int pane, const PaneView& view, const char* samples) {
  plot_spectrum_anew(pane_name(pane), pane_row(pane), view.start, view.step, view.xsc, view.ysc,
                     target_screen, samples);
}

}  // namespace

std::optional<int> pane_of(const char* field) {
  if (field[0] < '1' || field[0] > '3' || field[1] != 0) return std::nullopt;
  return field[0] - '1';
}

int pane_row(int pane) {
  return pane * pane_pitch;
}

void clear_pane(int pane) {
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
}

void show_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
  plot(pane, view, target_screen);
}

void show_spectrum(int pane, const PaneView& view, const char* samples) {
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
  plot_bins(pane, view, samples);
}

void draw_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  plot(pane, view, target_screen);
}

void draw_spectrum(int pane, const PaneView& view, const char* samples) {
  const CanvasPaint beneath(all_panes);
  plot_bins(pane, view, samples);
}

void print_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  plot(pane, view, target_eps);
}

}  // namespace torve
