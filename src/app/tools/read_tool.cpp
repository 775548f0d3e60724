#include <optional>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/au_file.hpp"
#include "app/signal/report.hpp"
#include "app/tools/panes.hpp"
#include "app/tools/tool_menu.hpp"
#include "app/tools/tools.hpp"
#include "display/screen_state.hpp"
#include "gif/gif_writer.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Get .au/.res/.spe             to             into Plot",
    "Analyze au file ",
    "Make a gif-file                 from Plot",
};
enum Line { get_line, analyze_line, gif_line };

constexpr MenuField fields[] = {
    {.line = get_line, .column = 18, .width = 10, .text = "mid.res"},
    {.line = get_line, .column = 33, .width = 10, .text = "mid.res"},
    {.line = get_line, .column = 54, .width = 2, .text = "1"},
    {.line = analyze_line, .column = 16, .width = 10, .text = "bchk1.res"},
    {.line = gif_line, .column = 16, .width = 12, .text = "figure.gif"},
    {.line = gif_line, .column = 41, .width = 2, .text = "1"},
};
enum Field { file_field, to_field, pane_field, analyze_field, gif_field, gif_pane_field };

constexpr ToolMenu menu = {
    .id = read_menu_id,
    .x_cells = 30,
    .table = {.lines = lines, .fields = fields, .action = read_au_menu_actions, .width_cells = 62},
};

constexpr const char* bins_of_a_file = "20000";
constexpr double whole_recording = 100;  // seconds

bool has_ending(const std::string& name, const char* ending) {
  return name.ends_with(ending) && name != ending;
}

void get_file(MenuItem* items) {
  const std::optional<int> pane = pane_of(items[pane_field].text);
  if (!pane) return;
  const std::string name = items[file_field].text;
  set_pane_name(*pane, name);
  set_field(items[to_field], name);
  clear_pane(*pane);
  refresh_menu(read_menu_id);
  if (has_ending(name, ".spe")) {
    draw_spectrum(*pane, {.xsc = spectrum_xsc}, bins_of_a_file);
  } else if (has_ending(name, ".au")) {
    if (cut_part(name, name, 0, whole_recording) == 0) draw_signal(*pane, {.xsc = overview_xsc});
  } else if (has_ending(name, ".res")) {
    draw_signal(*pane, {.xsc = overview_xsc});
  }
}

void make_gif(MenuItem* items) {
  const std::optional<int> pane = pane_of(items[gif_pane_field].text);
  if (!pane) return;
  const int top = pane_row(*pane);
  // Menus that reach into the pane are no part of it; figures that are drawn over it are.
  const CanvasPaint beneath({0, top, X__max + 1, top + pane_rows + 1}, PaintOn::figures);
  writeGIF1(items[gif_field].text, 0, top, X__max, top + pane_rows);
}

}  // namespace

int fill_read_au_menu() {
  return fill_menu(menu);
}

int read_au_ope(int, int, int) {
  return open_tool(menu.id, fill_read_au_menu);
}

int read_au_menu_actions(int, int* line_flags, MenuItem* items, char**) {
  switch (chosen_line(line_flags, menu.table)) {
    case get_line:
      get_file(items);
      break;
    case analyze_line:
      analyse(items[analyze_field].text);
      break;
    case gif_line:
      make_gif(items);
      break;
    default:
      break;
  }
  return 0;
}

}  // namespace torve
