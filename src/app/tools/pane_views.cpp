#include "app/tools/pane_views.hpp"

#include <string>

#include "app/plot/plot_panes.hpp"
#include "base/saturate.hpp"
#include "dialogs/strip.hpp"
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

PlotSettings settings_of(int pane, const PaneView& view, int target) {
  return {.target = target,
          .step = view.step,
          .start = saturate_to_int(view.start),
          .xsc = view.xsc,
          .ysc = view.ysc,
          .yoff = pane_row(pane)};
}

// What could not be drawn has left nothing to look at.
Outcome note(int pane, PaneView view, PaneKind kind, const Outcome& drawn) {
  view.kind = drawn.is_done() ? kind : PaneKind::nothing;
  view.file = pane_name(pane);
  note_shown_view(pane, view);
  return drawn;
}

Outcome plot(int pane, const PaneView& view) {
  return note(pane, view, PaneKind::signal,
              plot_signal_file(pane_name(pane), settings_of(pane, view, target_screen)));
}

Outcome plot_bins(int pane, PaneView view, const char* samples) {
  view.samples = samples;
  return note(pane, view, PaneKind::spectrum,
              plot_spectrum_file(pane_name(pane), settings_of(pane, view, target_screen), samples));
}

}  // namespace

std::optional<int> pane_of(const char* field) {
  if (field[0] >= '1' && field[0] <= '3' && field[1] == 0) return field[0] - '1';
  say_in_strip("Plot has to be 1, 2 or 3, not \"" + std::string(field) + "\".");
  return std::nullopt;
}

int pane_row(int pane) {
  return pane * pane_pitch;
}

void clear_pane(int pane) {
  note_shown_view(pane, {});
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
}

Outcome show_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
  return plot(pane, view);
}

Outcome show_spectrum(int pane, const PaneView& view, const char* samples) {
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
  return plot_bins(pane, view, samples);
}

Outcome draw_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  return plot(pane, view);
}

Outcome draw_spectrum(int pane, const PaneView& view, const char* samples) {
  const CanvasPaint beneath(all_panes);
  return plot_bins(pane, view, samples);
}

Outcome print_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  return plot_signal_file(pane_name(pane), settings_of(pane, view, target_eps));
}

}  // namespace torve
