// What the tools do with the plot panes: clear a pane's band and draw into it, beneath whatever
// window objects lie there.
#pragma once

#include <optional>

#include "app/plot/pane_view.hpp"
#include "app/plot/plot_panes.hpp"
#include "base/outcome.hpp"
#include "base/rect.hpp"

namespace torve {

/// The scales of a signal and of a spectrum that has just been read or computed.
inline constexpr double overview_xsc = 0.02;
inline constexpr double spectrum_xsc = 0.4;

/// As a menu field's text: the file of a pane 1 .. 3.
template <int pane>
const char* pane_file() {
  return pane_name(pane - 1);
}

/// The pane 0 .. 2 that a field names: exactly "1", "2" or "3". Nothing after the strip has said so
/// for any other text.
[[nodiscard]] std::optional<int> pane_of(const char* field);

/// The first row of a pane.
[[nodiscard]] int pane_row(int pane);

/// The band of a pane: all that a picture of it holds.
[[nodiscard]] Rect band_of(int pane);

/// Clears a pane's band, nothing more.
void clear_pane(int pane);

/// Clears the band and draws the pane's file as a signal, or as a spectrum of at most `samples`, by
/// the view's start, step and scales. What could be drawn is what the pane shows from then on.
Outcome show_signal(int pane, const PaneView& view);
Outcome show_spectrum(int pane, const PaneView& view, const char* samples);

/// The same without clearing, for a band that is clear.
Outcome draw_signal(int pane, const PaneView& view);
Outcome draw_spectrum(int pane, const PaneView& view, const char* samples);

/// Clears the band and draws the view's own file as its kind and the settings of a line say.
Outcome show_as_told(int pane, const PaneView& view);

/// The same for a closer view. When its file cannot be read, or there is no memory for it, the pane
/// stays as it is.
Outcome show_closer(int pane, const PaneView& view);

/// Draws a pane's signal into the open EPS file.
Outcome print_signal(int pane, const PaneView& view);

}  // namespace torve
