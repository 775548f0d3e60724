// What can be grabbed, shown while presses pick figures.
//
// A small square for each part of a figure that a press is on, other squares beside the head where
// a property menu opens, a dot where an arc holds on. They lie above all figures and below the
// windows, belong to no figure and are in nothing that is written.
#pragma once

#include "base/rect.hpp"

namespace torve {

/// What of them lies in a rectangle, pixels, off the canvas, and on it again. When the rectangle
/// holds the whole diagram they are laid where the figures are now, if presses pick figures.
void lift_handles(const Rect& rect);
void lay_handles(const Rect& rect);

/// Shows them when presses have begun to pick figures, and hides them when they no longer do.
void show_handles();

}  // namespace torve
