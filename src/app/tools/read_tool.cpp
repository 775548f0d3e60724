#include <optional>
#include <string>

#include "app/plot/plot_panes.hpp"
#include "app/signal/au_file.hpp"
#include "app/signal/report.hpp"
#include "app/tools/batch_line.hpp"
#include "app/tools/pane_figure.hpp"
#include "app/tools/pane_views.hpp"
#include "app/tools/sound_lines.hpp"
#include "app/tools/tools.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/strip.hpp"
#include "dialogs/tool_menu.hpp"
#include "display/screen_state.hpp"
#include "gif/gif_writer.hpp"
#include "sound/sound_names.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

enum Field { file, to, pane_number, analyzed_file, gif_file, gif_pane };

constexpr const char* bins_of_a_file = "20000";
constexpr double whole_recording = 100;  // seconds

bool has_ending(const std::string& name, const char* ending) {
  return name.ends_with(ending) && name != ending;
}

Outcome draw_by_ending(int pane, const std::string& name) {
  if (has_ending(name, ".spe")) {
    return draw_spectrum(pane, {.xsc = spectrum_xsc}, bins_of_a_file);
  }
  if (has_ending(name, ".au")) {
    const Outcome cut = cut_au(name, name, 0, whole_recording);
    return cut.is_done() ? draw_signal(pane, {.xsc = overview_xsc}) : cut;
  }
  if (has_ending(name, ".res")) return draw_signal(pane, {.xsc = overview_xsc});
  return {.cause = Cause::unknown_ending, .name = name};
}

/// A sound that cannot be read leaves the pane as it is.
void get_sound(const MenuRun& menu, int pane) {
  const std::string sound = menu.text(file);
  std::string line;
  const Outcome made = make_signal_of(sound, &line);
  if (!made.is_done()) return show_outcome(made);
  set_pane_name(pane, signal_name_of(sound));
  set_field(menu.field(to), sound);
  refresh_menu(menu.id);
  const Outcome shown = show_signal(pane, {.xsc = overview_xsc});
  shown.is_done() ? say_in_strip(line) : show_outcome(shown);
}

void get_file(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(pane_number));
  if (!pane) return;
  const std::string name = menu.text(file);
  if (names_sound(name)) return get_sound(menu, *pane);
  set_pane_name(*pane, name);
  set_field(menu.field(to), name);
  clear_pane(*pane);
  refresh_menu(menu.id);
  show_outcome(draw_by_ending(*pane, name));
}

void analyze(const MenuRun& menu) {
  const std::string name = menu.text(analyzed_file);
  const Outcome reported = report_au_file(name);
  if (reported.cause != Cause::not_au_file || !names_sound(name)) return show_outcome(reported);
  std::string line;
  const Outcome listed = list_sound_facts(name, &line);
  listed.is_done() ? say_in_strip(line) : show_outcome(listed);
}

Outcome gif_of_pane(const MenuRun& menu, int pane) {
  // Menus that reach into the pane are no part of it; figures that are drawn over it are.
  const CanvasPaint beneath(band_of(pane), PaintOn::figures);
  return write_gif(menu.text(gif_file), band_of(pane));
}

void make_gif(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(gif_pane));
  if (!pane) return;
  const char* const name = menu.text(gif_file);
  const auto format = figure_format_of(name);
  show_outcome(format ? draw_pane_figure(*pane, name, *format) : gif_of_pane(menu, *pane));
}

std::string get_command(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(pane_number));
  const std::string name = menu.text(file);
  const bool is_spectrum = has_ending(name, ".spe");
  if (!pane || (!is_spectrum && !has_ending(name, ".res"))) return {};
  PaneView view = {.file = name, .xsc = is_spectrum ? spectrum_xsc : overview_xsc};
  if (is_spectrum) view.samples = bins_of_a_file;
  return batch_plot_line(view, *pane, picture_name(*pane));
}

std::string analyze_command(const MenuRun& menu) {
  if (names_sound(menu.text(analyzed_file))) return {};
  return batch_line({"report", menu.text(analyzed_file)});
}

// Of a pane that shows what a line drew; a closer view is no command's.
std::string gif_command(const MenuRun& menu) {
  const std::optional<int> pane = pane_of(menu.text(gif_pane));
  if (!pane) return {};
  if (figure_format_of(menu.text(gif_file))) return pane_figure_command(*pane, menu.text(gif_file));
  const PaneView& view = shown_view(*pane);
  if (view.kind == PaneKind::nothing || view.closer) return {};
  return batch_plot_line(view, *pane, menu.text(gif_file)) + " --format gif";
}

constexpr MenuLine lines[] = {
    {.text = "Get .au/.res/.spe             to             into Plot",
     .fields = {{
         {.number = file, .column = 18, .width = 10, .text = "mid.res"},
         {.number = to, .column = 33, .width = 10, .text = "mid.res"},
         {.number = pane_number, .column = 54, .width = 2, .text = "1", .beyond = 2},
     }},
     .run = get_file,
     .command = get_command},
    {.text = "Analyze au file ",
     .fields = {{{.number = analyzed_file,
                  .column = 16,
                  .width = 10,
                  .text = "bchk1.res",
                  .beyond = 10}}},
     .run = analyze,
     .command = analyze_command},
    {.text = "Make a gif-file                 from Plot",
     .fields = {{
         {.number = gif_file, .column = 16, .width = 12, .text = "figure.gif"},
         {.number = gif_pane, .column = 41, .width = 2, .text = "1", .beyond = 2},
     }},
     .run = make_gif,
     .command = gif_command},
};

constexpr ToolMenu menu = {
    .id = read_menu_id,
    .x_cells = 30,
    .table = {.lines = lines, .action = read_au_menu_actions, .width_cells = 62},
};

}  // namespace

int fill_read_au_menu() {
  return fill_menu(menu);
}

int read_au_ope(int, int, int) {
  return open_tool(menu);
}

int read_au_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_chosen_line(menu.table, index, line_flags, items);
}

}  // namespace torve
