#include "app/diagram_files.hpp"

#include <iterator>

#include "app/tools/tool_menu.hpp"
#include "diagram/diagram_file.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Save diagram, name=",
    "Read diagram, name=",
    "Save diagram in eps, name=",
};
constexpr int (*actions[])(const char* name) = {save_diagram, read_diagram, print_diagram};
static_assert(std::size(actions) == std::size(lines));

constexpr MenuField fields[] = {
    {.line = 0, .column = 19, .width = field_length, .text = "figure.vob"},
    {.line = 1, .column = 19, .width = field_length, .text = "figure.vob"},
    {.line = 2, .column = 26, .width = field_length, .text = "figure.eps"},
};

int diagram_file_actions(int, int* line_flags, MenuItem* items, char**);

// Left of the palette that opens it.
constexpr ToolMenu menu = {
    .id = 4,
    .x_cells = 25,
    .y_lines = 0,
    .y_pixels = 0,
    .table = {.lines = lines, .fields = fields, .action = diagram_file_actions, .width_cells = 60},
};

int diagram_file_actions(int, int* line_flags, MenuItem* items, char**) {
  const int line = chosen_line(line_flags, menu.table);
  if (line >= 0) actions[line](items[line].text);
  return 0;
}

}  // namespace

int open_diagram_files() {
  if (open_tool(menu.id, [] { return fill_menu(menu); }) == 1) bring_id_to_top(menu.id, 1);
  return 0;
}

}  // namespace torve
