#include "app/tools/plot_tool.hpp"

#include <cstdio>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/matching.hpp"
#include "app/tools/batch_line.hpp"
#include "app/tools/tools.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/tool_menu.hpp"

namespace torve {

namespace {

// The fields: four of each pane, then those of the match.
enum Setting { start, step, xsc, ysc, settings_of_a_pane };
constexpr int field_of(int pane, Setting setting) {
  return pane * settings_of_a_pane + setting;
}
constexpr int match_start = field_of(pane_count, start);
constexpr int match_output = match_start + 1;

PaneView view_of(const MenuItem* items, int pane) {
  const MenuItem* fields = items + field_of(pane, start);
  return {.start = static_cast<double>(int_field(fields[start], 0)),
          .step = int_field(fields[step], 1),
          .xsc = real_field(fields[xsc], 1.0),
          .ysc = real_field(fields[ysc], 1.0)};
}

// The fields of all three panes after a match: the shift that lines them up, and one x scale. The
// first pane starts at its beginning; the match lies that many samples, 0 or more, further on.
void show_match(const MenuRun& menu, int samples, float scale) {
  constexpr std::size_t scale_characters = 5;
  set_field(menu.field(field_of(0, start)), "0");
  set_field(menu.field(field_of(0, ysc)), std::to_string(scale).substr(0, scale_characters));
  for (int pane = 1; pane < pane_count; ++pane) {
    set_field(menu.field(field_of(pane, start)), std::to_string(samples));
    set_field(menu.field(field_of(pane, step)), menu.text(field_of(0, step)));
    set_field(menu.field(field_of(pane, xsc)), menu.text(field_of(0, xsc)));
    set_field(menu.field(field_of(pane, ysc)), "1.0");
  }
}

void find_match(const MenuRun& menu) {
  const std::string shown_before = pane_name(2);
  set_pane_name(2, menu.text(match_output));
  Match match = {.scale = 1};
  const Outcome outcome = match_files({.path1 = pane_name(0),
                                       .path2 = pane_name(1),
                                       .path3 = pane_name(2),
                                       .start = int_field(menu.field(match_start), 0),
                                       .samples = menu.text(field_of(2, start))},
                                      &match);
  if (outcome.cause == Cause::cancelled) {
    set_pane_name(2, shown_before);
    return show_outcome(outcome);
  }
  // A negative start is no refusal: the panes are drawn as they are, without a match.
  if (!outcome.is_done() && outcome.cause != Cause::negative_start) {
    std::printf("sample too small\n");
    show_outcome(outcome);
    return;
  }
  show_match(menu, match.offset, match.scale);
  PaneView view = view_of(menu.items, 0);
  view.start = -match.offset;
  view.ysc = static_cast<double>(match.scale);
  const Outcome first = show_signal(0, view);
  view.start = 0;
  view.ysc = 1;
  const Outcome second = show_signal(1, view);
  const Outcome third = show_signal(2, view);
  show_first_failure({outcome, first, second, third});
  refresh_menu(menu.id);
}

template <int pane>
void plot(const MenuRun& menu) {
  show_outcome(show_signal(pane, view_of(menu.items, pane)));
}

template <int pane>
std::string plot_command(const MenuRun& menu) {
  PaneView view = view_of(menu.items, pane);
  view.file = pane_name(pane);
  return batch_plot_line(view, pane, picture_name(pane));
}

std::string match_command(const MenuRun& menu) {
  const std::string start = std::to_string(int_field(menu.field(match_start), 0));
  return batch_line({"match", pane_name(0), pane_name(1), menu.text(match_output), start, "1",
                     menu.text(field_of(2, Setting::start))});
}

template <int pane>
constexpr MenuLine plot_line(const char* text) {
  return {.text = text,
          .fields = {{
              {.number = field_of(pane, start), .column = 12, .width = 5, .text = "0"},
              {.number = field_of(pane, step), .column = 23, .width = 5, .text = "44"},
              {.number = field_of(pane, xsc), .column = 33, .width = 5, .text = "1.0"},
              {.number = field_of(pane, ysc), .column = 42, .width = 5, .text = "1.0", .beyond = 1},
          }},
          .run = plot<pane>,
          .command = plot_command<pane>};
}

constexpr MenuLine lines[] = {
    plot_line<0>("Plot1 start=      step=      xsc=     ysc=    "),
    plot_line<1>("Plot2 start=      step=      xsc=     ysc=    "),
    plot_line<2>("Plot3 start=      step=      xsc=     ysc=    "),
    {.text = "Find a match, start sample=         outfile=",
     .fields = {{
         {.number = match_start, .column = 27, .width = 5, .text = "0"},
         {.number = match_output, .column = 44, .width = 8, .text = "compres.res", .beyond = 8},
     }},
     .run = find_match,
     .command = match_command},
};

constexpr ToolMenu menu = {
    .id = plot_menu_id,
    .x_cells = 50,
    .table = {.lines = lines, .action = audio_menu_actions, .width_cells = 49},
};

}  // namespace

PaneView plot_settings_of(int pane) {
  const WdObject& object = wd(plot_menu_id);
  if ((object.kind & ~kind_icon_bit) != kind_popup_menu) return {.xsc = overview_xsc};
  return view_of(object.menu_items, pane);
}

int fill_audiomenu() {
  return fill_menu(menu);
}

int audio_ope(int, int, int) {
  return open_tool(menu);
}

int audio_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace torve
