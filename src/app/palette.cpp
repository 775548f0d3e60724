#include "app/palette.hpp"

#include <array>
#include <iterator>

#include "app/tools/tool_menu.hpp"
#include "diagram/editor.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int palette_id = 2;
constexpr int palette_column = 85;  // cells: the first one right of the diagram area
constexpr int palette_width = 15;   // cells: up to the canvas' edge

struct PaletteLine {
  const char* text;
  int (*tool)();
};

constexpr PaletteLine palette[] = {
    {"Pointer", pointer_ope}, {"Node", node_ope},   {"Node b", nodeb_ope},
    {"Node c", nodec_ope},    {"Queue", queue_ope}, {"Telephone", tele_ope},
    {"Box", vbox_ope},        {"Line", vline_ope},  {"Arrow", arrow_ope},
    {"Leave tool", exit_ope},
};

constexpr auto texts = [] {
  std::array<const char*, std::size(palette)> lines = {};
  for (std::size_t i = 0; i < lines.size(); ++i)
    lines[i] = palette[i].text;
  return lines;
}();

int palette_actions(int, int* line_flags, MenuItem*, char**);

constexpr ToolMenu menu = {
    .id = palette_id,
    .x_cells = palette_column,
    .y_lines = 0,
    .y_pixels = 0,
    .table = {.lines = texts,
              .action = palette_actions,
              .width_cells = palette_width,
              .line_size = palette_width - 3},
};

int palette_actions(int, int* line_flags, MenuItem*, char**) {
  const int line = chosen_line(line_flags, menu.table);
  return line >= 0 ? palette[line].tool() : 0;
}

}  // namespace

void open_palette() {
  if (open_tool(menu) == 1) bring_id_to_top(palette_id, 1);
}

void palette_press(int button, int x) {
  if (button == 2 && x <= last_diagram_column && vobjmode != mode_pointer) open_palette();
}

}  // namespace torve
