#include "dialogs/tool_menu.hpp"

#include <optional>

#include "base/number_text.hpp"
#include "display/input.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr int least_rows = 4;

MenuTable table_of(const ToolMenu& menu) {
  MenuTable table = menu.table;
  table.least_rows = least_rows;
  table.flags = table.flags | WdFlags::right_close_puts_down;
  return table;
}

}  // namespace

int fill_menu(const ToolMenu& menu) {
  use_default_font();  // a plot leaves another one, and the place is in lines of this one
  return make_menu(table_of(menu), menu.id, menu.x_cells * cs, menu.y_lines * cr + menu.y_pixels);
}

int open_tool(const ToolMenu& menu) {
  flush_mouse();
  if (wd(menu.id).kind != kind_free) return 1;
  const int failed = fill_menu(menu);
  if (failed == 0) static_cast<void>(put_wd_objects(menu.id, menu.id));
  buttons = 0;
  return failed;
}

void open_or_raise(const ToolMenu& menu) {
  if (open_tool(menu) == 1) bring_id_to_top(menu.id, 1);
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
