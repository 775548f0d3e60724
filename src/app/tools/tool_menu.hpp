// The mechanism behind the tools of the icon bar.
//
// A tool is a menu, as a table says it, that has its own object and its own place.
#pragma once

#include "app/plot/plot_panes.hpp"
#include "dialogs/menu_table.hpp"
#include "text/menu_items.hpp"

namespace torve {

/// A tool's menu stays open when its close box is pressed with the right button, and has room for
/// four lines at least.
struct ToolMenu {
  int id = 0;                       // of its window object
  int x_cells = 0;                  // left edge, cells
  int y_lines = 3, y_pixels = 487;  // upper edge: lines of text plus pixels
  MenuTable table;
};

/// As a field's text: the file of a pane 1 .. 3.
template <int pane>
const char* pane_file() {
  return pane_name(pane - 1);
}

/// Object ids of the tools' menus.
inline constexpr int write_menu_id = 11;
inline constexpr int plot_menu_id = 12;
inline constexpr int print_menu_id = 13;
inline constexpr int read_menu_id = 14;
inline constexpr int analysis_menu_id = 15;
inline constexpr int spectrum_menu_id = 16;

/// Makes a tool's menu, to be put on the canvas. Returns 0, or -1 after "failed to allocate menu"
/// has been written there.
[[nodiscard]] int fill_menu(const ToolMenu& menu);

/// Has the menu of object `id` made and shows it. Returns 0; 1 when the object is in use, and then
/// nothing happens; what the builder returned when it failed.
int open_tool(int id, int (*fill)());

/// The numbers that fields hold, or what a field without a number stands for. A real is a float
/// before it is anything else.
[[nodiscard]] int int_field(const MenuItem& field, int otherwise);
[[nodiscard]] double real_field(const MenuItem& field, double otherwise);

/// Blanks, a sign, digits; what is too large becomes the largest. 0 without a digit.
[[nodiscard]] int string_to_int(const char* text);

}  // namespace torve
