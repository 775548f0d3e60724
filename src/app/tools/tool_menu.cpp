#include "app/tools/tool_menu.hpp"

#include <algorithm>
#include <cstdio>

#include "app/plot/plot_panes.hpp"
#include "base/number_text.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/popup_menu.hpp"
#include "display/colours.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int line_size = 80;    // bytes of a menu line
constexpr int height_cells = 3;  // height of every menu: cells plus lines of text
constexpr int least_height_lines = 4;
constexpr int text_area_colour = 16;
constexpr int frame_colour = 1;
constexpr int selected_colour = 3;
constexpr int field_colour = 9;
constexpr int text_colour = 0;
constexpr int failed_column = 10;  // of the message that a menu could not be had
constexpr int failed_row = 10;

int height_of(int line_count) {
  return height_cells * cs + std::max(least_height_lines, line_count) * cr;
}

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

void place_fields(const ToolMenu& menu, MenuItem* items) {
  MenuItem* first_of_line = nullptr;
  int line = -1;
  for (const ToolField& field : menu.fields) {
    MenuItem& item = *items++;
    item.x = field.column * cs;
    item.y = field.line * cr;
    item.width = field.width;
    set_field(item, field.default_pane == 0 ? field.text : pane_name(field.default_pane - 1));
    if (field.line != line) first_of_line = &item;
    line = field.line;
    ++first_of_line->nfields;
  }
}

void write_lines(const ToolMenu& menu, char** lines) {
  for (const char* text : menu.lines)
    std::snprintf(*lines++, static_cast<std::size_t>(menu.line_size), "%s", text);
}

int build(const ToolMenu& menu) {
  const int line_count = static_cast<int>(menu.lines.size());
  const int field_count = static_cast<int>(menu.fields.size()) + menu.spare_fields;
  fill_jmptable_b(menu.id - 1, menu.action);
  MenuStructure structure;
  if (create_menustructure(&structure.items, &structure.lines, &structure.flags, field_count,
                           line_count, menu.line_size) != 0) {
    free_menustructure(&structure.items, &structure.lines, &structure.flags, field_count,
                       line_count, menu.line_size);
    say_allocation_failed();
    return -1;
  }
  write_lines(menu, structure.lines);
  place_fields(menu, structure.items);
  make_popup_menu(menu.id, menu.x_cells * cs, menu.y_lines * cr + menu.y_pixels,
                  menu.width_cells * cs, height_of(line_count), text_area_colour, frame_colour,
                  selected_colour, field_colour, text_colour, structure.items, structure.lines,
                  structure.flags, field_count, line_count, line_count, menu.line_size);
  wd(menu.id).flags = wd(menu.id).flags | WdFlags::right_close_puts_down;
  return 0;
}

}  // namespace

int open_tool(const ToolMenu& menu) {
  flush_mouse();
  if (wd(menu.id).kind != kind_free) return 1;
  const int failed = build(menu);
  if (failed == 0) static_cast<void>(put_wd_objects(menu.id, menu.id));
  buttons = 0;
  return failed;
}

void refresh_tool(int id) {
  if (!is_eligible(wd(id))) return;
  if (over_is_zero(id - 1) != 0) {
    refresh_one_wd_object(id);
  } else {
    bring_id_to_top(id, 1);
  }
}

int chosen_line(const int* line_flags, const ToolMenu& menu) {
  for (std::size_t line = 0; line < menu.lines.size(); ++line) {
    if ((line_flags[line] & line_selected) != 0) return static_cast<int>(line);
  }
  return -1;
}

void set_field(MenuItem& field, const std::string& text) {
  std::snprintf(field.text, field_length + 1, "%s", text.c_str());
}

int int_field(const MenuItem& field, int otherwise) {
  return read_int(field.text).value_or(otherwise);
}

double real_field(const MenuItem& field, double otherwise) {
  const std::optional<float> value = read_float(field.text);
  return value ? static_cast<double>(*value) : otherwise;
}

int string_to_int(const char* text) {
  return read_int(text).value_or(0);
}

}  // namespace torve
