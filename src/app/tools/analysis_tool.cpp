#include <array>
#include <cstdio>
#include <optional>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/tools/batch_line.hpp"
#include "app/tools/pane_views.hpp"
#include "app/tools/tools.hpp"
#include "base/errors.hpp"
#include "base/files.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/strip.hpp"
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

// A result that could not be made leaves the pane as it is.
void show_result(int pane, const std::string& name, const Outcome& made) {
  if (made.is_done()) {
    set_pane_name(pane, name);
    show_outcome(show_signal(pane, {}));
  }
  show_outcome(made);
}

void autocorrelate_into_pane(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(autocorrelation_pane));
  if (!pane) return;
  const std::string name = autocorrelation_name(std::to_string(*pane + 1));
  show_result(*pane, name, autocorrelate_file(menu.text(signal), name));
}

std::string correlation_command(const MenuRun& menu) {
  return batch_line({"correlation", menu.text(first_signal), menu.text(second_signal),
                     menu.text(correlation_pane)});
}

std::string peak_text(const CorrelationPeak& peak) {
  std::array<char, 128> text;
  std::snprintf(text.data(), text.size(), "peak at lag %d, %.3f ms, %.3f", peak.lag,
                peak.lag * 1000.0 / sampling_rate, peak.normalised);
  return text.data();
}

void correlate_into_pane(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(correlation_pane));
  if (!pane) return;
  const std::string name = correlation_name(std::to_string(*pane + 1));
  CorrelationPeak peak;
  const Outcome correlated =
      correlate_files(menu.text(first_signal), menu.text(second_signal), name, {}, &peak);
  show_result(*pane, name, correlated);
  if (correlated.is_done()) say_in_strip(peak_text(peak) + " | " + correlation_command(menu));
}

// A comparison that is refused for its samples leaves an empty file, which is drawn. Without any
// new one, a file that is there is an older result, which is not shown as this one.
bool makes_file(const Outcome& compared) {
  return compared.is_done() || compared.cause == Cause::too_few_samples ||
         compared.cause == Cause::no_match;
}

void compare_into_pane(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(comparison_pane));
  if (!pane) return;
  const ComparisonStart& start = comparison_starts[*pane];
  const std::string name = "compar" + std::to_string(*pane + 1) + ".res";
  const std::string shown_before = pane_name(*pane);
  set_pane_name(*pane, name);
  Match match = {.scale = start.scale};
  const Outcome compared = match_files({.path1 = menu.text(compared_signal),
                                        .path2 = menu.text(compared_with),
                                        .path3 = name,
                                        .start = start.offset,
                                        .scale = start.scale,
                                        .samples = menu.text(samples)},
                                       &match);
  if (compared.cause == Cause::cancelled) {
    set_pane_name(*pane, shown_before);
    return show_outcome(compared);
  }
  if (!compared.is_done()) std::printf("sample too small\n");
  if (!makes_file(compared) && open_regular_file(name, "r")) return show_outcome(compared);
  PaneView view = {.start = static_cast<double>(-match.offset), .xsc = overview_xsc};
  if (*pane == 2) {
    view.ysc = static_cast<double>(match.scale);
    show_outcome(show_signal(1, view));
    view.ysc = 1;
  }
  const Outcome shown = show_signal(*pane, view);
  show_outcome(compared.is_done() ? shown : compared);
}

std::string autocorrelation_command(const MenuRun& menu) {
  return batch_line({"autocorrelation", menu.text(signal), menu.text(autocorrelation_pane)});
}

std::string comparison_command(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(comparison_pane));
  if (!pane) return {};
  const ComparisonStart& start = comparison_starts[*pane];
  return batch_line({"match", menu.text(compared_signal), menu.text(compared_with),
                     "compar" + std::to_string(*pane + 1) + ".res", std::to_string(start.offset),
                     batch_number(static_cast<double>(start.scale)), menu.text(samples)});
}

constexpr MenuLine lines[] = {
    {.text = "Autocorrelation of               to Plot",
     .fields = {{
         {.number = signal, .column = 19, .width = 8, .text_now = pane_file<1>},
         {.number = autocorrelation_pane, .column = 41, .width = 2, .text = "1", .beyond = 3},
     }},
     .run = autocorrelate_into_pane,
     .command = autocorrelation_command},
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
     .run = compare_into_pane,
     .command = comparison_command},
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
