// Presses in the text area of a menu.
#pragma once

#include <cstdint>

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

/// What a press in the text area has done.
enum class MenuPress : std::uint8_t {
  nothing,  // it was not on a line
  line_selected,
  edit_undone,  // a field was left empty and has its old text again
  edited,
  next_choice,  // a field shows its next choice
};

/// Lets the user change a field.
MenuPress change_field(const MenuText& menu, int field);

/// One press at (x, y): selects the line there and handles the field there. `fgcol` is the text
/// colour.
MenuPress press_on_menu(const MenuText& menu, int x, int y);

// Not used by the workbench itself.

/// press_on_menu with the parts of a MenuText one by one. Returns the result's number, 3 for the
/// next choice, too.
int check_command(MenuItem* items, char** lines, int* flags, int coloff, int firstline, int nitems,
                  int nlines, int nvisible, int c1, int c3, int c4, int x, int y);

}  // namespace torve
