#include "app/tools/plot_tool.hpp"

#include <cstdio>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/matching.hpp"
#include "app/tools/tool_menu.hpp"
#include "app/tools/tools.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Plot1 start=      step=      xsc=     ysc=    ",
    "Plot2 start=      step=      xsc=     ysc=    ",
    "Plot3 start=      step=      xsc=     ysc=    ",
    "Find a match, start sample=         outfile=",
};
constexpr int match_line = 3;

constexpr MenuField fields[] = {
    {.line = 0, .column = 12, .width = 5, .text = "0"},
    {.line = 0, .column = 23, .width = 5, .text = "44"},
    {.line = 0, .column = 33, .width = 5, .text = "1.0"},
    {.line = 0, .column = 42, .width = 5, .text = "1.0"},
    {.line = 1, .column = 12, .width = 5, .text = "0"},
    {.line = 1, .column = 23, .width = 5, .text = "44"},
    {.line = 1, .column = 33, .width = 5, .text = "1.0"},
    {.line = 1, .column = 42, .width = 5, .text = "1.0"},
    {.line = 2, .column = 12, .width = 5, .text = "0"},
    {.line = 2, .column = 23, .width = 5, .text = "44"},
    {.line = 2, .column = 33, .width = 5, .text = "1.0"},
    {.line = 2, .column = 42, .width = 5, .text = "1.0"},
    {.line = 3, .column = 27, .width = 5, .text = "0"},
    {.line = 3, .column = 44, .width = 8, .text = "compres.res"},
};
constexpr int fields_per_pane = 4;
enum PaneField { start_field, step_field, xsc_field, ysc_field };
constexpr int match_start_field = 12;
constexpr int match_output_field = 13;

constexpr ToolMenu menu = {
    .id = plot_menu_id,
    .x_cells = 50,
    .table = {.lines = lines, .fields = fields, .action = audio_menu_actions, .width_cells = 49},
};

MenuItem& pane_field(MenuItem* items, int pane, PaneField field) {
  return items[pane * fields_per_pane + field];
}

PaneView view_of(MenuItem* items, int pane) {
  return {.start = int_field(pane_field(items, pane, start_field), 0),
          .step = int_field(pane_field(items, pane, step_field), 1),
          .xsc = real_field(pane_field(items, pane, xsc_field), 1.0),
          .ysc = real_field(pane_field(items, pane, ysc_field), 1.0)};
}

// The fields of all three panes after a match: the shift that lines them up, and one x scale.
void show_match(MenuItem* items, int offset, float scale) {
  constexpr std::size_t scale_characters = 5;
  set_field(pane_field(items, 0, start_field), offset < 0 ? "0" : std::to_string(offset));
  set_field(pane_field(items, 0, ysc_field), std::to_string(scale).substr(0, scale_characters));
  for (int pane = 1; pane < pane_count; ++pane) {
    set_field(pane_field(items, pane, start_field), offset < 0 ? std::to_string(-offset) : "0");
    set_field(pane_field(items, pane, step_field), pane_field(items, 0, step_field).text);
    set_field(pane_field(items, pane, xsc_field), pane_field(items, 0, xsc_field).text);
    set_field(pane_field(items, pane, ysc_field), "1.0");
  }
}

void find_match(MenuItem* items) {
  set_pane_name(2, items[match_output_field].text);
  float mean = 0;
  float scale = 1;
  int offset = 0;
  if (my_correlation(pane_name(0), pane_name(1), pane_name(2), &mean, &offset, &scale, 1,
                     int_field(items[match_start_field], 0),
                     pane_field(items, 2, start_field).text) != 0) {
    std::printf("sample too small\n");
    return;
  }
  show_match(items, offset, scale);
  PaneView view = view_of(items, 0);
  view.start = offset;
  view.ysc = static_cast<double>(scale);
  show_signal(0, view);
  view.start = 0;
  view.ysc = 1;
  show_signal(1, view);
  show_signal(2, view);
  refresh_menu(plot_menu_id);
}

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
  return open_tool(menu.id, fill_audiomenu);
}

int audio_menu_actions(int, int* line_flags, MenuItem* items, char**) {
  const int line = chosen_line(line_flags, menu.table);
  if (line == match_line) {
    find_match(items);
  } else if (line >= 0) {
    show_signal(line, view_of(items, line));
  }
  return 0;
}

}  // namespace torve
