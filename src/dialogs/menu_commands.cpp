#include "dialogs/menu_commands.hpp"

#include <algorithm>
#include <cstring>

#include "dialogs/menu_structure.hpp"
#include "dialogs/popup_menu.hpp"
#include "dialogs/strip.hpp"
#include "display/screen_state.hpp"
#include "text/field_editing.hpp"
#include "text/fonts.hpp"
#include "text/menu_lines.hpp"

namespace torve {

namespace {

constexpr const char* field_keys =
    "Type to insert; Backspace deletes, Left and Right move, Return ends.";

}  // namespace

int line_at(const MenuText& menu, int x, int y) {
  if (x < X1_min || x >= X1_max || y < Y1_min || y >= Y1_min + cr * menu.visible_lines) return -1;
  const int line = (y - Y1_min) / cr + menu.firstline;
  return line < menu.line_count ? line : -1;
}

int selected_line(const MenuText& menu) {
  for (int line = 0; line < menu.line_count; ++line) {
    if ((menu.flags[line] & line_selected) != 0) return line;
  }
  return -1;
}

void draw_menu_line(const MenuText& menu, int line) {
  if (line < menu.firstline || line >= menu.firstline + menu.visible_lines) return;
  const bool selected = (menu.flags[line] & line_selected) != 0;
  display_line(menu.items, menu.lines, menu.item_count, line, menu.coloff, menu.firstline,
               selected ? menu.selected_background : menu.background, menu.field_background);
}

void draw_menu_lines(const MenuText& menu) {
  const int end = std::min(menu.firstline + menu.visible_lines, menu.line_count);
  for (int line = menu.firstline; line < end; ++line)
    draw_menu_line(menu, line);
}

void select_line(const MenuText& menu, int line) {
  for (int other = 0; other < menu.line_count; ++other) {
    const bool was_selected = (menu.flags[other] & line_selected) != 0;
    menu.flags[other] &= ~line_double_clicked;
    if (was_selected == (other == line)) continue;
    menu.flags[other] ^= line_selected;
    draw_menu_line(menu, other);
  }
}

int field_at(const MenuText& menu, int line, int x) {
  int field = 0;
  while (field < menu.item_count && line_of_field(menu.items[field]) != line)
    ++field;
  if (field == menu.item_count) return -1;
  const int column = (x - X1_min) / cs + menu.coloff;
  const int end = std::min(field + std::max(menu.items[field].nfields, 1), menu.item_count);
  for (; field < end; ++field) {
    const int start = menu.items[field].x / cs;
    if (start <= column && column < start + menu.items[field].width) return field;
  }
  return -1;
}

MenuPress change_field(const MenuText& menu, int field) {
  MenuItem& item = menu.items[field];
  const int line = line_of_field(item);
  MenuPress result = MenuPress::edited;
  if (has(item.itemflags, ItemFlags::selection)) {
    next_selection(item.text);
    result = MenuPress::next_choice;
  } else {
    // A menu that has said whose it is goes on saying so.
    const std::string& whose = strip_text();
    const StripNote help(whose.empty() ? field_keys : whose + ": " + field_keys);
    char before[field_room];
    std::memcpy(before, item.text, sizeof before);
    const int limit = has(item.itemflags, ItemFlags::use_maxlen) ? item.maxlen : field_length;
    const auto draw_scrolled = [scrolled = menu](int coloff) mutable {
      scrolled.coloff = coloff;
      draw_menu_lines(scrolled);
    };
    if (!edit_field({.items = menu.items,
                     .lines = menu.lines,
                     .field = field,
                     .coloff = menu.coloff,
                     .x = X1_min + item.x - cs * menu.coloff,
                     .y = Y1_min + (line - menu.firstline) * cr,
                     .limit = limit,
                     .line_background = menu.selected_background,
                     .field_background = menu.field_background,
                     .scrolled = draw_scrolled})) {
      std::memcpy(item.text, before, sizeof before);
      result = MenuPress::edit_undone;
    }
  }
  draw_menu_line(menu, line);
  return result;
}

MenuPress press_on_menu(const MenuText& menu, int x, int y) {
  const int line = line_at(menu, x, y);
  if (line < 0) return MenuPress::nothing;
  select_line(menu, line);
  const int field = field_at(menu, line, x);
  return field < 0 ? MenuPress::line_selected : change_field(menu, field);
}

int check_command(MenuItem* items, char** lines, int* flags, int coloff, int firstline, int nitems,
                  int nlines, int nvisible, int c1, int c3, int c4, int x, int y) {
  const MenuPress done = press_on_menu({.items = items,
                                        .lines = lines,
                                        .flags = flags,
                                        .coloff = coloff,
                                        .firstline = firstline,
                                        .item_count = nitems,
                                        .line_count = nlines,
                                        .visible_lines = nvisible,
                                        .background = c1,
                                        .selected_background = c3,
                                        .field_background = c4},
                                       x, y);
  return static_cast<int>(done == MenuPress::next_choice ? MenuPress::edited : done);
}

}  // namespace torve
