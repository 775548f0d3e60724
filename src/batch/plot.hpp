// Pictures of sample files without a window.
#pragma once

#include <string>

namespace torve {

/// What a pane shows and how, as in the plot settings menu.
struct PlotRequest {
  std::string input;  // a spectrum if its name ends in ".spe", else a signal
  int pane = 0;       // 0 .. 2: where the picture would stand on the canvas
  int start = 0;
  int step = 1;
  double xsc = 0.02;
  double ysc = 1;
  std::string samples = "all";  // of a spectrum
};

/// Draws the pane and writes it to `output`: as EPS if the name ends in ".eps", else as GIF.
/// Returns 0, or 1 when the input or the fonts cannot be read or the output not be written.
[[nodiscard]] int plot_to_file(const PlotRequest& request, const std::string& output);

}  // namespace torve
