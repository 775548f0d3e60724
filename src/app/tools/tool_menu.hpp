// The mechanism behind the tools of the icon bar.
//
// A tool is a table: the lines of its menu, its fields with their defaults, and the action that
// runs when a line is chosen. Opening a tool builds the menu, shows it and registers the action.
#pragma once

#include <span>
#include <string>

#include "text/menu_items.hpp"
#include "wm/wd_object.hpp"

namespace torve {

struct ToolField {
  int line = 0;
  int column = 0;         // cells from the left edge of the text
  int width = 0;          // characters
  const char* text = "";  // default
  int default_pane = 0;   // 1 .. 3: the default is that pane's file instead
};

struct ToolMenu {
  int id = 0;                       // of its window object
  int x_cells = 0;                  // left edge, cells
  int y_lines = 3, y_pixels = 487;  // upper edge: lines of text plus pixels
  int width_cells = 0;
  std::span<const char* const> lines;
  std::span<const ToolField> fields;  // in the order in which actions number them; those of one
                                      // line stand side by side
  int line_size = 80;                 // bytes of a line
  int spare_fields = 0;               // fields more that belong to no line
  WdAction action = nullptr;
};

/// Object ids of the tools' menus.
inline constexpr int write_menu_id = 11;
inline constexpr int plot_menu_id = 12;
inline constexpr int print_menu_id = 13;
inline constexpr int read_menu_id = 14;
inline constexpr int analysis_menu_id = 15;
inline constexpr int spectrum_menu_id = 16;

/// Shows a tool's menu. Returns 0; 1 when its object is in use, and then nothing happens; -1 after
/// "failed to allocate menu" has been written on the canvas.
int open_tool(const ToolMenu& menu);

/// Repaints a tool's menu, above all others, if it lies on the canvas.
void refresh_tool(int id);

/// The line that was chosen: the first one whose flag says so, -1 for none.
[[nodiscard]] int chosen_line(const int* line_flags, const ToolMenu& menu);

/// Puts a text into a field, cut at the longest a field can hold.
void set_field(MenuItem& field, const std::string& text);

/// The numbers that fields hold, or what a field without a number stands for. A real is a float
/// before it is anything else.
[[nodiscard]] int int_field(const MenuItem& field, int otherwise);
[[nodiscard]] double real_field(const MenuItem& field, double otherwise);

/// Blanks, a sign, digits; what is too large becomes the largest. 0 without a digit.
[[nodiscard]] int string_to_int(const char* text);

}  // namespace torve
