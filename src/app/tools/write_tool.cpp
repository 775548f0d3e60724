#include <cstdio>

#include "app/signal/au_file.hpp"
#include "app/tools/tool_menu.hpp"
#include "app/tools/tools.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Convert RES to AU.",
    "Cut AU to RES. Start sek=       End sek=   ",
    "RES=                 AU=                   ",
};
enum Line { convert_line, cut_line };

constexpr MenuField fields[] = {
    {.line = 2, .column = 4, .width = 10, .text = "checknew.res"},
    {.line = 2, .column = 24, .width = 10, .text = "checkts.au"},
    {.line = 1, .column = 25, .width = 5, .text = "1.9"},
    {.line = 1, .column = 40, .width = 5, .text = "2.37"},
};
enum Field { res_field, au_field, start_field, end_field, field_count };

constexpr ToolMenu menu = {
    .id = write_menu_id,
    .x_cells = 50,
    .y_lines = 4,
    .y_pixels = 485,
    .table = {.lines = lines,
              .fields = fields,
              .action = write_au_menu_actions,
              .width_cells = 48,
              .spare_fields = 1},
};

void cut(MenuItem* items) {
  std::printf("at write_au_menu_actions\n");
  for (int i = 0; i < field_count; ++i)
    std::printf("u1[%d].name=%s\n", i, items[i].text);
  cut_part(items[au_field].text, items[res_field].text, real_field(items[start_field], 0),
           real_field(items[end_field], 0));
}

}  // namespace

int fill_write_au_menu() {
  return fill_menu(menu);
}

int write_au_ope(int, int, int) {
  return open_tool(menu.id, fill_write_au_menu);
}

int write_au_menu_actions(int, int* line_flags, MenuItem* items, char**) {
  const int line = chosen_line(line_flags, menu.table);
  if (line == convert_line) make_au_file(items[res_field].text, items[au_field].text);
  if (line == cut_line) cut(items);
  if (line == convert_line || line == cut_line) std::printf("done\n");
  return 0;
}

}  // namespace torve
