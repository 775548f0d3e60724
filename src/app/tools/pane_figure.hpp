// Figures for papers of what a pane shows.
#pragma once

#include <string>

#include "app/plot/pane_view.hpp"
#include "base/outcome.hpp"
#include "figure/request/figure_request.hpp"

namespace torve {

/// What a figure has to show to show what a pane does. Times and frequencies are true ones, also
/// where a tool's line with a step draws others; scales by which a pane shows nothing are left to
/// the figure.
[[nodiscard]] FigureInput pane_figure_input(const PaneView& view);

/// Makes a figure of what pane 0, 1 or 2 shows: of its curve, not of what lies above it.
Outcome draw_pane_figure(int pane, const std::string& output, FigureFormat format);

/// The line that makes the same figure; empty for a pane that shows nothing.
[[nodiscard]] std::string pane_figure_command(int pane, const std::string& output);

}  // namespace torve
