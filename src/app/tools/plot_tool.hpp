// What the plot settings menu holds for the other tools.
#pragma once

#include "app/tools/pane_views.hpp"

namespace torve {

/// The settings of a pane's line in the open plot settings menu; while it is closed, those of an
/// overview.
[[nodiscard]] PaneView plot_settings_of(int pane);

}  // namespace torve
