// The palette of the diagram tools: a menu right of the diagram area, so that it can stay open.
#pragma once

#include "display/input.hpp"

namespace torve {

/// Shows the palette, above all others when it is open already.
void open_palette();

/// A press of the second button on the free canvas opens the palette, unless presses pick figures
/// or it lies outside the diagram area.
void palette_press(const PointerEvent& press);

/// Keeps the line of the tool in use selected, and none when no tool is. The main loop calls it
/// after each event.
void show_armed_tool();

}  // namespace torve
