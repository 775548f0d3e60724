// Choosing a stretch of a pane by dragging over it.
#pragma once

#include "display/input.hpp"

namespace torve {

/// Begins at a press in pane 0 .. 2.
void begin_stretch(int pane, const PointerEvent& press);

/// Shows how far it reaches; nothing when none has begun.
void drag_stretch(const PointerEvent& pointer);

/// Shows it over the whole pane, if it is 4 pixels wide at least.
void end_stretch(const PointerEvent& pointer);

/// Forgets it; whether there was one.
bool give_up_stretch();

}  // namespace torve
