// What a plot pane shows, as one value.
//
// A line of a tool draws by the settings in its menu; whoever looks closer at the pane afterwards
// makes another value from this one and has that drawn.
#pragma once

#include <string>

#include "app/plot/plot_panes.hpp"

namespace torve {

enum class PaneKind { nothing, signal, spectrum };

struct PaneView {
  PaneKind kind = PaneKind::nothing;
  std::string file = {};        // as it was opened
  double start = 0;             // the sample or bin at the y axis; below 0: the drawing moves right
  int step = 1;                 // samples summed into a point; each sample starts a point
  double xsc = 1;               // pixels between points
  double ysc = 1;               // magnification; 1 lets the full scale reach the full height
  double full_scale = 0;        // a value; 0: the largest of what is drawn
  std::string samples = "all";  // most bins of a spectrum that are drawn
  bool decibels = false;        // of a spectrum: decibels below the largest bin
  bool closer = false;  // true times with any step, and all samples of the file; else as lines draw

  bool operator==(const PaneView&) const = default;
};

/// What pane 0, 1 or 2 shows.
[[nodiscard]] const PaneView& shown_view(int pane);

/// Notes what a pane shows from now on; whoever draws in it calls it.
void note_shown_view(int pane, const PaneView& view);

}  // namespace torve
