#include <cstdio>
#include <optional>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/tools/pane_views.hpp"
#include "app/tools/tools.hpp"
#include "base/errors.hpp"
#include "base/files.hpp"
#include "dialogs/tool_menu.hpp"

namespace torve {

namespace {

enum Field {
  signal,  // of the autocorrelation
  autocorrelation_pane,
  first_signal,  // of the correlation
  second_signal,
  correlation_pane,
  compared_signal,  // of the comparison
  compared_with,
  comparison_pane,
  samples,
};

// How the comparison into each pane begins. Into the third it looks for the second recorder's
// delay, at the loudness the second microphone had.
struct ComparisonStart {
  int offset;
  float scale;
};
constexpr ComparisonStart comparison_starts[pane_count] = {{0, 1.0F}, {0, 1.0F}, {1544, 0.7F}};

std::string result_name(const char* stem, int pane, const char* ending) {
  return stem + std::to_string(pane + 1) + ending;
}

void show_result(int pane, const std::string& name) {
  set_pane_name(pane, name);
  show_signal(pane, {});
}

// A correlation that could not be made says nothing of its own; a missing file is the usual reason.
void report_missing(const char* name) {
  if (!open_regular_file(name, "r")) cannot_find_file(name);
}

void autocorrelate_into_pane(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(autocorrelation_pane));
  if (!pane) return;
  if (autocorrelation(menu.text(signal), std::to_string(*pane + 1)) != 0) {
    report_missing(menu.text(signal));
    return;
  }
  show_result(*pane, result_name("autocor", *pane, ".res"));
}

void correlate_into_pane(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(correlation_pane));
  if (!pane) return;
  if (correlation(menu.text(first_signal), menu.text(second_signal), std::to_string(*pane + 1)) !=
      0) {
    report_missing(menu.text(first_signal));
    report_missing(menu.text(second_signal));
    return;
  }
  show_result(*pane, result_name("corre", *pane, ".res"));
}

void compare_into_pane(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(comparison_pane));
  if (!pane) return;
  const ComparisonStart& start = comparison_starts[*pane];
  const std::string name = result_name("compar", *pane, ".res");
  set_pane_name(*pane, name);
  float mean = 0;
  float scale = start.scale;
  int offset = 0;
  if (my_correlation(menu.text(compared_signal), menu.text(compared_with), name, &mean, &offset,
                     &scale, 1, start.offset, menu.text(samples)) != 0) {
    std::printf("sample too small\n");  // what the pane shows is an older comparison
    report_missing(menu.text(compared_signal));
    report_missing(menu.text(compared_with));
  }
  PaneView view = {.start = offset, .xsc = overview_xsc};
  if (*pane == 2) {
    view.ysc = static_cast<double>(scale);
    show_signal(1, view);
    view.ysc = 1;
  }
  show_signal(*pane, view);
}

constexpr MenuLine lines[] = {
    {.text = "Autocorrelation of               to Plot",
     .fields = {{
         {.number = signal, .column = 19, .width = 8, .text_now = pane_file<1>},
         {.number = autocorrelation_pane, .column = 41, .width = 2, .text = "1", .beyond = 3},
     }},
     .run = autocorrelate_into_pane},
    {.text = "Correlation of           and            to Plot",
     .fields = {{
         {.number = first_signal, .column = 15, .width = 8, .text_now = pane_file<1>},
         {.number = second_signal, .column = 29, .width = 8, .text_now = pane_file<2>},
         {.number = correlation_pane, .column = 47, .width = 2, .text = "3", .beyond = 2},
     }},
     .run = correlate_into_pane},
    {.text = "Comparison  of           and            to Plot  samples=",
     .fields = {{
         {.number = compared_signal, .column = 15, .width = 8, .text_now = pane_file<1>},
         {.number = compared_with, .column = 29, .width = 8, .text_now = pane_file<2>},
         {.number = comparison_pane, .column = 47, .width = 2, .text = "3"},
         {.number = samples, .column = 57, .width = 6, .text = "all", .beyond = 6},
     }},
     .run = compare_into_pane},
};

constexpr ToolMenu menu = {
    .id = analysis_menu_id,
    .x_cells = 32,
    .table = {.lines = lines, .action = analysis_menu_actions, .width_cells = 67},
};

}  // namespace

int fill_analysis_menu() {
  return fill_menu(menu);
}

int analysis_ope(int, int, int) {
  return open_tool(menu);
}

int analysis_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace torve
