#include "app/tools/pane_views.hpp"

#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/plot/view_drawing.hpp"
#include "base/saturate.hpp"
#include "dialogs/strip.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
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

// Draws the file of a view as its kind says. What could not be drawn has left nothing to look at.
Outcome draw(int pane, PaneView view) {
  const PlotSettings settings = settings_of(pane, view, target_screen);
  Outcome drawn = view.kind == PaneKind::spectrum
                      ? plot_spectrum_file(view.file, settings, view.samples)
                      : plot_signal_file(view.file, settings);
  if (!drawn.is_done()) view.kind = PaneKind::nothing;
  note_shown_view(pane, view);
  return drawn;
}

PaneView of_pane(int pane, PaneView view, PaneKind kind, const char* samples = "all") {
  view.kind = kind;
  view.file = pane_name(pane);
  view.samples = samples;
  return view;
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

Rect band_of(int pane) {
  return {0, pane_row(pane), X__max + 1, pane_row(pane) + pane_rows + 1};
}

void clear_pane(int pane) {
  note_shown_view(pane, {});
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
}

Outcome show_as_told(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  clear_band(pane);
  return draw(pane, view);
}

Outcome show_signal(int pane, const PaneView& view) {
  return show_as_told(pane, of_pane(pane, view, PaneKind::signal));
}

Outcome show_spectrum(int pane, const PaneView& view, const char* samples) {
  return show_as_told(pane, of_pane(pane, view, PaneKind::spectrum, samples));
}

Outcome draw_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  return draw(pane, of_pane(pane, view, PaneKind::signal));
}

Outcome draw_spectrum(int pane, const PaneView& view, const char* samples) {
  const CanvasPaint beneath(all_panes);
  return draw(pane, of_pane(pane, view, PaneKind::spectrum, samples));
}

Outcome show_closer(int pane, const PaneView& view) {
  ViewPoints loaded;
  Outcome outcome = load_points(view, &loaded);
  if (!outcome.is_done()) return outcome;
  const auto limits = kept_drawing_area();
  const Kept cursor(xkoord, ykoord, truncate1);
  const KeptFont font;
  const CanvasPaint beneath(band_of(pane));
  clear_band(pane);
  draw_view(view, loaded, pane_row(pane));
  note_shown_view(pane, view);
  return outcome;
}

Outcome print_signal(int pane, const PaneView& view) {
  const CanvasPaint beneath(all_panes);
  return plot_signal_file(pane_name(pane), settings_of(pane, view, target_eps));
}

}  // namespace torve
