#include <cstdio>
#include <optional>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/tools/panes.hpp"
#include "app/tools/tool_menu.hpp"
#include "app/tools/tools.hpp"
#include "base/errors.hpp"
#include "base/files.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Autocorrelation of               to Plot",
    "Correlation of           and            to Plot",
    "Comparison  of           and            to Plot  samples=",
};
enum Line { autocorrelation_line, correlation_line, comparison_line };

constexpr MenuField fields[] = {
    {.line = autocorrelation_line, .column = 19, .width = 8, .text_now = pane_file<1>},
    {.line = autocorrelation_line, .column = 41, .width = 2, .text = "1"},
    {.line = correlation_line, .column = 15, .width = 8, .text_now = pane_file<1>},
    {.line = correlation_line, .column = 29, .width = 8, .text_now = pane_file<2>},
    {.line = correlation_line, .column = 47, .width = 2, .text = "3"},
    {.line = comparison_line, .column = 15, .width = 8, .text_now = pane_file<1>},
    {.line = comparison_line, .column = 29, .width = 8, .text_now = pane_file<2>},
    {.line = comparison_line, .column = 47, .width = 2, .text = "3"},
    {.line = comparison_line, .column = 57, .width = 6, .text = "all"},
};
// The first field of each line.
constexpr int autocorrelation_fields = 0;
constexpr int correlation_fields = 2;
constexpr int comparison_fields = 5;

constexpr ToolMenu menu = {
    .id = analysis_menu_id,
    .x_cells = 32,
    .table = {.lines = lines, .fields = fields, .action = analysis_menu_actions, .width_cells = 67},
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

void autocorrelate_into_pane(const MenuItem* file) {
  const std::optional<int> pane = pane_of(file[1].text);
  if (!pane) return;
  if (autocorrelation(file[0].text, std::to_string(*pane + 1)) != 0) {
    report_missing(file[0].text);
    return;
  }
  show_result(*pane, result_name("autocor", *pane, ".res"));
}

void correlate_into_pane(const MenuItem* file) {
  const std::optional<int> pane = pane_of(file[2].text);
  if (!pane) return;
  if (correlation(file[0].text, file[1].text, std::to_string(*pane + 1)) != 0) {
    report_missing(file[0].text);
    report_missing(file[1].text);
    return;
  }
  show_result(*pane, result_name("corre", *pane, ".res"));
}

void compare_into_pane(const MenuItem* file) {
  const std::optional<int> pane = pane_of(file[2].text);
  if (!pane) return;
  const ComparisonStart& start = comparison_starts[*pane];
  const std::string name = result_name("compar", *pane, ".res");
  set_pane_name(*pane, name);
  float mean = 0;
  float scale = start.scale;
  int offset = 0;
  if (my_correlation(file[0].text, file[1].text, name, &mean, &offset, &scale, 1, start.offset,
                     file[3].text) != 0) {
    std::printf("sample too small\n");  // what the pane shows is an older comparison
    report_missing(file[0].text);
    report_missing(file[1].text);
  }
  PaneView view = {.start = offset, .xsc = overview_xsc};
  if (*pane == 2) {
    view.ysc = static_cast<double>(scale);
    show_signal(1, view);
    view.ysc = 1;
  }
  show_signal(*pane, view);
}

}  // namespace

int fill_analysis_menu() {
  return fill_menu(menu);
}

int analysis_ope(int, int, int) {
  return open_tool(menu.id, fill_analysis_menu);
}

int analysis_menu_actions(int, int* line_flags, MenuItem* items, char**) {
  switch (chosen_line(line_flags, menu.table)) {
    case autocorrelation_line:
      autocorrelate_into_pane(items + autocorrelation_fields);
      break;
    case correlation_line:
      correlate_into_pane(items + correlation_fields);
      break;
    case comparison_line:
      compare_into_pane(items + comparison_fields);
      break;
    default:
      break;
  }
  return 0;
}

}  // namespace torve
