// What the canvas must show: the base, the figures in their order, the windows.
#pragma once

#include "diagram/figure_painter.hpp"
#include "dialogs/strip.hpp"
#include "support/screen.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/stacking.hpp"

namespace torve {

/// Without what the strip says, which is there until the next press.
inline Pixels base_now() {
  clear_strip();
  const CanvasPaint everything_off(whole_screen);
  return all_pixels();
}

/// What of the canvas differs from the model; empty when nothing does.
inline std::string canvas_fault(const Pixels& base) {
  if (base_now() != base) return "the base";
  const Pixels shown = all_pixels();
  {
    const CanvasPaint windows_off(whole_screen, PaintOn::figures);
    if (all_pixels() != with_figures(base)) return "the figures";
  }
  for (int id = 1; id <= wd_object_count; ++id) {
    if (is_eligible(wd(id)) && over_is_zero(id - 1) != 0) refresh_one_wd_object(id);
  }
  return all_pixels() == shown ? "" : "the windows";
}

}  // namespace torve
