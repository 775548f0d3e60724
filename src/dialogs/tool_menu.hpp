// A tool's menu: a table that has its own object and its own place.
#pragma once

#include "dialogs/menu_table.hpp"

namespace torve {

/// A tool's menu stays open when its close box is pressed with the right button, and has room for
/// four lines at least.
struct ToolMenu {
  int id = 0;                       // of its window object
  int x_cells = 0;                  // left edge, cells
  int y_lines = 3, y_pixels = 487;  // upper edge: lines of text plus pixels
  MenuTable table;
};

/// Makes a tool's menu, to be put on the canvas. Returns 0, or -1 after "failed to allocate menu"
/// has been written there.
[[nodiscard]] int fill_menu(const ToolMenu& menu);

/// Shows a tool's menu. Returns 0; 1 when its object is in use, and then nothing happens; what
/// fill_menu returned when it failed.
int open_tool(const ToolMenu& menu);

/// The same, but a menu that is open already is raised.
void open_or_raise(const ToolMenu& menu);

/// The numbers that fields hold, or what a field without a number stands for. A real is a float
/// before it is anything else.
[[nodiscard]] int int_field(const MenuItem& field, int otherwise);
[[nodiscard]] double real_field(const MenuItem& field, double otherwise);

/// Blanks, a sign, digits; what is too large becomes the largest. 0 without a digit.
[[nodiscard]] int string_to_int(const char* text);

}  // namespace torve
