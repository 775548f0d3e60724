// Presses in the text area of a menu.
#pragma once

#include "text/menu_items.hpp"

namespace torve {

/// A menu's lines as they stand in its text area, whose limits are the drawing limits.
struct MenuText {
  MenuItem* items = nullptr;
  char** lines = nullptr;
  int* flags = nullptr;
  int coloff = 0, firstline = 0;  // first shown column and line
  int item_count = 0, line_count = 0;
  int visible_lines = 0;
  int background = 0, selected_background = 0, field_background = 0;  // colour numbers
};

/// The line at (x, y), -1 for none.
[[nodiscard]] int line_at(const MenuText& menu, int x, int y);

/// The lowest selected line, -1 for none.
[[nodiscard]] int selected_line(const MenuText& menu);

/// Draws a line in the colours of its state, if it shows.
void draw_menu_line(const MenuText& menu, int line);
void draw_menu_lines(const MenuText& menu);

/// Makes a line the only selected one. Marks of double presses go.
void select_line(const MenuText& menu, int line);

/// The field of a line at column x of the screen, -1 for none.
[[nodiscard]] int field_at(const MenuText& menu, int line, int x);

/// Lets the user change a field; check_edited or check_undone.
int change_field(const MenuText& menu, int field);

}  // namespace torve
