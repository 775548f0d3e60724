#include "dialogs/menu_table.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "dialogs/menu_structure.hpp"
#include "dialogs/popup_menu.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int margin_cells = 3;  // of a menu's height: two cells above the text, one below
constexpr int text_area_colour = 16;
constexpr int frame_colour = 1;
constexpr int selected_colour = 3;
constexpr int field_colour = 9;
constexpr int text_colour = 0;
constexpr int failed_column = 10;  // of the message that a menu could not be had
constexpr int failed_row = 10;

struct MenuStructure {
  MenuItem* items = nullptr;
  char** lines = nullptr;
  int* flags = nullptr;
};

void say_allocation_failed() {
  const CanvasPaint beneath({0, failed_row, screen_width, failed_row + cr});
  xkoord = failed_column;
  ykoord = failed_row;
  textn("failed to allocate menu", white_colour, 0);
}

int column_of(const MenuField& field, const MenuTable& table) {
  if (field.column != behind_the_line) return field.column;
  return static_cast<int>(std::strlen(table.lines[static_cast<std::size_t>(field.line)]));
}

void place_fields(const MenuTable& table, MenuItem* items) {
  MenuItem* first_of_line = nullptr;
  int line = -1;
  for (const MenuField& field : table.fields) {
    MenuItem& item = *items++;
    item.x = column_of(field, table) * cs;
    item.y = field.line * cr;
    item.width = field.width;
    item.maxlen = field.maxlen;
    set_field(item, field.text_now != nullptr ? field.text_now() : field.text);
    if (field.line != line) first_of_line = &item;
    line = field.line;
    ++first_of_line->nfields;
  }
}

void write_lines(const MenuTable& table, char** lines) {
  for (const char* text : table.lines)
    std::snprintf(*lines++, static_cast<std::size_t>(table.line_size), "%s", text);
}

}  // namespace

int make_menu(const MenuTable& table, int id, int x, int y) {
  if (!is_wd_id(id)) return 1;
  const int line_count = static_cast<int>(table.lines.size());
  const int field_count = static_cast<int>(table.fields.size()) + table.spare_fields;
  const int visible = table.visible_lines > 0 ? table.visible_lines : line_count;
  use_default_font();  // a plot leaves another one, and the lines are those of this one
  fill_jmptable_b(id - 1, table.action);
  MenuStructure made;
  if (create_menustructure(&made.items, &made.lines, &made.flags, field_count, line_count,
                           table.line_size) != 0) {
    free_menustructure(&made.items, &made.lines, &made.flags, field_count, line_count,
                       table.line_size);
    say_allocation_failed();
    return -1;
  }
  write_lines(table, made.lines);
  place_fields(table, made.items);
  make_popup_menu(id, x, y, table.width_cells * cs,
                  margin_cells * cs + std::max(table.least_rows, visible) * cr, text_area_colour,
                  frame_colour, selected_colour, field_colour, text_colour, made.items, made.lines,
                  made.flags, field_count, line_count, visible, table.line_size);
  wd(id).flags = wd(id).flags | table.flags;
  keep_on_canvas(wd(id), true);
  return 0;
}

void refresh_menu(int id) {
  if (!is_eligible(wd(id))) return;
  if (over_is_zero(id - 1) != 0) {
    refresh_one_wd_object(id);
  } else {
    bring_id_to_top(id, 1);
  }
}

int chosen_line(const int* line_flags, const MenuTable& table) {
  for (std::size_t line = 0; line < table.lines.size(); ++line) {
    if ((line_flags[line] & line_selected) != 0) return static_cast<int>(line);
  }
  return -1;
}

void set_field(MenuItem& field, const std::string& text) {
  std::snprintf(field.text, field_length + 1, "%s", text.c_str());
}

}  // namespace torve
