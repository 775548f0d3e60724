#include "diagram/palette.hpp"

#include "diagram/editor.hpp"
#include "diagram/files_menu.hpp"
#include "diagram/history.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/tool_menu.hpp"
#include "display/input.hpp"
#include "wm/engine.hpp"

namespace torve {

namespace {

constexpr int palette_column = 85;  // cells: the first one right of the diagram area
constexpr int palette_width = 15;   // cells: up to the canvas' edge
constexpr int no_line = -1;
constexpr int pointer_line = 0;

int tool_line = no_line;  // of the tool that was armed last

// A tool's line stays selected while the tool is in use.
template <int (*arm)()>
void use_tool(const MenuRun& menu) {
  tool_line = menu.line;
  arm();
}

template <int (*what)()>
void run(const MenuRun&) {
  what();
}

constexpr MenuLine lines[] = {
    {.text = "Pointer", .run = use_tool<pointer_ope>},
    {.text = "Node", .run = use_tool<node_ope>},
    {.text = "Node b", .run = use_tool<nodeb_ope>},
    {.text = "Node c", .run = use_tool<nodec_ope>},
    {.text = "Queue", .run = use_tool<queue_ope>},
    {.text = "Telephone", .run = use_tool<tele_ope>},
    {.text = "Box", .run = use_tool<vbox_ope>},
    {.text = "Line", .run = use_tool<vline_ope>},
    {.text = "Arrow", .run = use_tool<arrow_ope>},
    {.text = "Undo", .run = run<undo_ope>},
    {.text = "Files", .run = run<open_diagram_files>},
    {.text = "Leave tool", .run = run<exit_ope>},
    {.text = "Arc", .run = use_tool<arc_ope>},
    {.text = "Text", .run = use_tool<text_ope>},
};
static_assert(lines[pointer_line].run == use_tool<pointer_ope>);

int palette_actions(int index, int* line_flags, MenuItem* items, char**);

constexpr ToolMenu menu = {
    .id = palette_id,
    .x_cells = palette_column,
    .y_lines = 0,
    .y_pixels = 0,
    .table = {.lines = lines,
              .action = palette_actions,
              .width_cells = palette_width,
              .line_size = palette_width - 3},
};

int palette_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace

void open_palette() {
  open_or_raise(menu);
}

void palette_press(const PointerEvent& press) {
  if (press.button == second_button && press.x <= last_diagram_column && vobjmode != mode_pointer)
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
  if (changed) refresh_menu_in_its_place(palette_id);
}

}  // namespace torve
