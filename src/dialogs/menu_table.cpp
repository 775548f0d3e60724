#include "dialogs/menu_table.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "dialogs/menu_structure.hpp"
#include "dialogs/messages.hpp"
#include "dialogs/popup_menu.hpp"
#include "dialogs/strip.hpp"
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

void place_fields(const MenuLine& line, int row, MenuItem* items) {
  const int count = count_of(line.fields);
  for (int i = 0; i < count; ++i) {
    const MenuField& field = line.fields[static_cast<std::size_t>(i)];
    const bool behind = field.column == behind_the_line;
    MenuItem& item = items[field.number];
    item.x = (behind ? static_cast<int>(std::strlen(line.text)) : field.column) * cs;
    item.y = row * cr;
    item.width = field.width;
    item.maxlen = field.maxlen;
    item.nfields = i == 0 ? count : 0;
    set_field(item, field.text_now != nullptr ? field.text_now() : field.text);
  }
}

void fill(const MenuTable& table, const MenuStructure& made) {
  int row = 0;
  for (const MenuLine& line : table.lines.all()) {
    std::snprintf(made.lines[row], static_cast<std::size_t>(table.line_size), "%s", line.text);
    place_fields(line, row++, made.items);
  }
}

}  // namespace

int make_menu(const MenuTable& table, int id, int x, int y) {
  if (!is_wd_id(id)) return 1;
  const int line_count = static_cast<int>(table.lines.all().size());
  const int field_count = table.lines.field_count() + table.spare_fields;
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
  fill(table, made);
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

void refresh_menu_in_its_place(int id) {
  StackingOrder above;
  if (!is_eligible(wd(id)) || find_stacking_order(id, &above) != 0) return;
  put_back_order(above, above.last);
  refresh_menu(id);
  for (int k = above.last - 1; k >= 0; --k)
    bring_any_to_top(above.ids[static_cast<std::size_t>(k)], 1);
}

int chosen_line(const MenuTable& table, const int* line_flags) {
  const int count = static_cast<int>(table.lines.all().size());
  for (int line = 0; line < count; ++line) {
    if ((line_flags[line] & line_selected) != 0) return line;
  }
  return -1;
}

int run_chosen_line(const MenuTable& table, int index, const int* line_flags, MenuItem* items) {
  const int chosen = chosen_line(table, line_flags);
  if (chosen < 0) return 0;
  const MenuLine& line = table.lines.all()[static_cast<std::size_t>(chosen)];
  const MenuRun menu = {.id = index + 1, .line = chosen, .items = items};
  const std::string command = line.command != nullptr ? line.command(menu) : std::string();
  if (line.run != nullptr) line.run(menu);
  if (!command.empty() && strip_text().empty() && !message_is_shown()) say_in_strip(command);
  return 0;
}

void set_field(MenuItem& field, const std::string& text) {
  std::snprintf(field.text, field_length + 1, "%s", text.c_str());
}

}  // namespace torve
