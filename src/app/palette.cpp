#include "app/palette.hpp"

#include <array>
#include <iterator>

#include "app/diagram_files.hpp"
#include "app/tools/tool_menu.hpp"
#include "diagram/editor.hpp"
#include "diagram/history.hpp"
#include "dialogs/menu_structure.hpp"
#include "display/input.hpp"
#include "wm/engine.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int palette_id = 2;
constexpr int palette_column = 85;  // cells: the first one right of the diagram area
constexpr int palette_width = 15;   // cells: up to the canvas' edge

struct PaletteLine {
  const char* text;
  int (*run)();
  bool is_tool = true;  // stays selected while it is in use
};

constexpr PaletteLine palette[] = {
    {"Pointer", pointer_ope},
    {"Node", node_ope},
    {"Node b", nodeb_ope},
    {"Node c", nodec_ope},
    {"Queue", queue_ope},
    {"Telephone", tele_ope},
    {"Box", vbox_ope},
    {"Line", vline_ope},
    {"Arrow", arrow_ope},
    {"Undo", undo_ope, false},
    {"Files", open_diagram_files, false},
    {"Leave tool", exit_ope, false},
};
constexpr int no_line = -1;
constexpr int pointer_line = 0;
static_assert(palette[pointer_line].run == pointer_ope);

constexpr std::array<const char*, std::size(palette)> texts_of_palette() {
  std::array<const char*, std::size(palette)> lines = {};
  for (std::size_t i = 0; i < lines.size(); ++i)
    lines[i] = palette[i].text;
  return lines;
}
constexpr auto texts = texts_of_palette();

int tool_line = no_line;  // of the tool that was armed last

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
  if (line < 0) return 0;
  if (palette[line].is_tool) tool_line = line;
  return palette[line].run();
}

}  // namespace

void open_palette() {
  if (open_tool(menu.id, [] { return fill_menu(menu); }) == 1) bring_id_to_top(palette_id, 1);
}

void palette_press(int button, int x) {
  if (button == second_button && x <= last_diagram_column && vobjmode != mode_pointer)
    open_palette();
}

// A line that was pressed and not run is selected, too, until the palette is left.
void show_armed_tool() {
  if (vobjmode == mode_idle || vobjmode == mode_properties) tool_line = no_line;
  if (vobjmode == mode_pointer) tool_line = pointer_line;
  // What is being moved lies above the palette, or is the palette.
  if (wd(palette_id).kind != kind_popup_menu || lifted_object() != 0) return;
  bool changed = false;
  for (int line = 0; line < wd(palette_id).line_count; ++line) {
    int& flags = wd(palette_id).line_flags[line];
    const int wanted = line == tool_line ? line_selected : 0;
    changed = changed || (flags & line_selected) != wanted;
    flags = wanted;
  }
  if (changed) refresh_menu(palette_id);
}

}  // namespace torve
