#include "app/plot/plot_panes.hpp"
#include "app/tools/batch_line.hpp"
#include "app/tools/pane_figure.hpp"
#include "app/tools/pane_views.hpp"
#include "app/tools/plot_tool.hpp"
#include "app/tools/tools.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/tool_menu.hpp"
#include "eps/eps_stream.hpp"

namespace torve {

namespace {

constexpr int name_field = 0;  // the first one: every line writes to the file that it names

template <int pane>
void print(const MenuRun& menu) {
  const char* name = menu.text(name_field);
  if (const auto format = figure_format_of(name)) {
    return show_outcome(draw_pane_figure(pane, name, *format));
  }
  FilePtr template_file = open_eps(name, "psexampl.dat");
  if (!template_file) return say_outcome({.cause = Cause::not_created, .name = name});
  const Outcome drawn = print_signal(pane, plot_settings_of(pane));
  const Outcome written = finish_eps(std::move(template_file));
  if (!written.is_done()) return say_outcome(written);
  show_outcome(drawn);
}

template <int pane>
std::string print_command(const MenuRun& menu) {
  const char* name = menu.text(name_field);
  if (figure_format_of(name)) return pane_figure_command(pane, name);
  PaneView view = plot_settings_of(pane);
  view.file = pane_name(pane);
  return batch_plot_line(view, pane, name) + " --format eps";
}

template <int pane>
constexpr MenuLine print_line(const char* text, const char* name) {
  return {.text = text,
          .fields = {{{.number = name_field + pane, .column = 24, .text = name, .beyond = 26}}},
          .run = print<pane>,
          .command = print_command<pane>};
}

constexpr MenuLine lines[] = {
    print_line<0>("Save Plot1 in eps, name=    ", "plot1.eps"),
    print_line<1>("Save Plot2 in eps, name=    ", "plot2.eps"),
    print_line<2>("Save Plot3 in eps, name=    ", "plot3.eps"),
};

constexpr ToolMenu menu = {
    .id = print_menu_id,
    .x_cells = 50,
    .table = {.lines = lines, .action = printeps_menu_actions, .width_cells = 40},
};

}  // namespace

int fill_printeps_menu() {
  return fill_menu(menu);
}

int printeps_ope(int, int, int) {
  return open_tool(menu);
}

int printeps_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace torve
