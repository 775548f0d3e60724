#include "app/plot/plot_panes.hpp"
#include "app/tools/panes.hpp"
#include "app/tools/plot_tool.hpp"
#include "app/tools/tool_menu.hpp"
#include "app/tools/tools.hpp"
#include "eps/eps_stream.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Save Plot1 in eps, name=    ",
    "Save Plot2 in eps, name=    ",
    "Save Plot3 in eps, name=    ",
};

constexpr MenuField fields[] = {
    {.line = 0, .column = 24, .width = field_length, .text = "plot1.eps"},
    {.line = 1, .column = 24, .width = field_length, .text = "plot2.eps"},
    {.line = 2, .column = 24, .width = field_length, .text = "plot3.eps"},
};

constexpr ToolMenu menu = {
    .id = print_menu_id,
    .x_cells = 50,
    .table = {.lines = lines, .fields = fields, .action = printeps_menu_actions, .width_cells = 40},
};

}  // namespace

int fill_printeps_menu() {
  return fill_menu(menu);
}

int printeps_ope(int, int, int) {
  return open_tool(menu.id, fill_printeps_menu);
}

// Every line writes to the file named in the first field.
int printeps_menu_actions(int, int* line_flags, MenuItem* items, char**) {
  const int pane = chosen_line(line_flags, menu.table);
  if (pane < 0) return 0;
  FilePtr template_file = open_eps(items[0].text, "psexampl.dat");
  if (!template_file) return 0;
  print_signal(pane, plot_settings_of(pane));
  close_eps(std::move(template_file));
  return 0;
}

}  // namespace torve
