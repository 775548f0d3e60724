// Laying out the canvas and running the workbench on it.
#pragma once

#include "app/arguments.hpp"

namespace torve {

/// Prepares memory and canvas, draws the icon bar and the three start-up plots, or what the user
/// has named in their place, and runs the main loop. Returns 1, at once when there is no memory to
/// begin with.
int editor(const StartFiles& named = {});

/// The drawing state that `main` hands to editor: limits, graphic output, text background.
void set_start_state();

}  // namespace torve
