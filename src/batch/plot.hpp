// Pictures of sample files without a window.
#pragma once

#include <string>

#include "base/outcome.hpp"

namespace torve {

enum class PictureFormat { eps, gif };

/// What a pane shows and how, as in the plot settings menu.
struct PlotRequest {
  std::string input;
  bool spectrum = false;
  int pane = 0;  // 0 .. 2: where the picture would stand on the canvas
  int start = 0;
  int step = 1;
  double xsc = 0.02;
  double ysc = 1;
  std::string samples = "all";  // of a spectrum
  bool decibels = false;        // of a spectrum: decibels below the largest bin
};

/// Draws the pane and writes it to `output`, which stays as it was when there is nothing to draw.
Outcome plot_to_file(const PlotRequest& request, const std::string& output, PictureFormat format);

}  // namespace torve
