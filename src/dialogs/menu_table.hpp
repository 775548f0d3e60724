// Menus as tables.
//
// A menu is a table of its lines, its fields and the action that runs when a line is chosen. From a
// table comes a menu object that can be put on the canvas.
#pragma once

#include <span>
#include <string>

#include "text/menu_items.hpp"
#include "wm/wd_object.hpp"

namespace torve {

/// As a field's column: right behind its line's text.
inline constexpr int behind_the_line = -1;

struct MenuField {
  int line = 0;
  int column = behind_the_line;         // cells from the left edge of the text
  int width = field_length;             // characters
  int maxlen = field_length;            // the width that Backspace stops at
  const char* text = "";                // at first
  const char* (*text_now)() = nullptr;  // says it instead when the menu is made
};

struct MenuTable {
  std::span<const char* const> lines;
  std::span<const MenuField> fields = {};  // in the order in which actions number them; those of
                                           // one line stand side by side
  WdAction action = nullptr;
  int width_cells = 0;
  int visible_lines = 0;          // 0: all
  int least_rows = 0;             // rows of text that there is room for at least
  int line_size = 80;             // bytes of a line
  int spare_fields = 0;           // fields more that belong to no line
  WdFlags flags = WdFlags::none;  // beside those that every menu has
};

/// Makes object `id` a menu whose upper left corner is (x, y), pixels, or as near as the canvas
/// allows; nothing is drawn. Returns 0; 1 for an id outside 1 .. 128; -1 after "failed to allocate
/// menu" has been written on the canvas.
int make_menu(const MenuTable& table, int id, int x, int y);

/// Repaints a menu, above all others, if it lies on the canvas.
void refresh_menu(int id);

/// The line that was chosen: the first one whose flag says so, -1 for none.
[[nodiscard]] int chosen_line(const int* line_flags, const MenuTable& table);

/// Puts a text into a field, cut at the longest a field can hold.
void set_field(MenuItem& field, const std::string& text);

}  // namespace torve
