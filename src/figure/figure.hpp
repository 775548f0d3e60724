// A figure: up to four inputs, one above the other.
//
// Signals share one axis of time, spectra one of frequency; the numbers stand below the last of
// those that follow each other.
#pragma once

#include "base/outcome.hpp"
#include "figure/drawing.hpp"
#include "figure/request/figure_request.hpp"

namespace torve {

/// Reads the inputs and lays them out.
Outcome lay_out_figure(const FigureRequest& request, Drawing* drawing);

}  // namespace torve
