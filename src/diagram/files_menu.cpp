#include "diagram/files_menu.hpp"

#include "diagram/diagram_file.hpp"
#include "dialogs/tool_menu.hpp"
#include "figure/request/figure_request.hpp"

namespace torve {

namespace {

// Does something with the file that the line names.
template <int (*use)(const char* name)>
void run(const MenuRun& menu) {
  use(menu.text(menu.line));
}

// As EPS, or as a figure where the name says so.
int export_diagram(const char* name) {
  const auto format = figure_format_of(name);
  return format ? draw_diagram_figure(name, *format) : print_diagram(name);
}

constexpr MenuLine lines[] = {
    {.text = "Save diagram, name=",
     .fields = {{{.number = 0, .text = "figure.vob"}}},
     .run = run<save_diagram>},
    {.text = "Read diagram, name=",
     .fields = {{{.number = 1, .text = "figure.vob"}}},
     .run = run<read_diagram>},
    {.text = "Save diagram in eps, name=",
     .fields = {{{.number = 2, .text = "figure.eps"}}},
     .run = run<export_diagram>},
    {.text = "New diagram", .run = [](const MenuRun&) { new_diagram(); }},
};

int diagram_file_actions(int index, int* line_flags, MenuItem* items, char**);

// Left of the palette that opens it.
constexpr ToolMenu menu = {
    .id = diagram_files_id,
    .x_cells = 25,
    .y_lines = 0,
    .y_pixels = 0,
    .table = {.lines = lines, .action = diagram_file_actions, .width_cells = 60},
};

int diagram_file_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace

int open_diagram_files() {
  open_or_raise(menu);
  return 0;
}

}  // namespace torve
