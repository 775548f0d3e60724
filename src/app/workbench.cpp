#include "app/workbench.hpp"

#include <array>
#include <string>

#include "app/icon_bar.hpp"
#include "app/jump_table.hpp"
#include "app/main_loop.hpp"
#include "app/plot/plot_panes.hpp"
#include "app/plot/view_points.hpp"
#include "app/tools/pane_views.hpp"
#include "base/files.hpp"
#include "base/memory_reserve.hpp"
#include "diagram/diagram_file.hpp"
#include "diagram/editor.hpp"
#include "dialogs/messages.hpp"
#include "dialogs/outcomes.hpp"
#include "dialogs/strip.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"

namespace torve {

namespace {

constexpr int work_buffers = 15;          // mask of init_win
constexpr int pool_bytes_per_row = 1200;  // of the block for backgrounds, per row of a text line
constexpr int diagram_right = 680;        // first column outside the area open to figures
constexpr double start_xsc = 0.02;

struct StartPlot {
  const char* file;
  int start;
};

// The second recorder was switched on 1544 samples later: the shift lines the strokes up.
constexpr std::array<StartPlot, pane_count> start_plots = {{
    {.file = "bhld1.res", .start = 0},
    {.file = "bhld2.res", .start = -1544},
    {.file = "compar3.res", .start = 0},
}};

void clear_canvas() {
  nocolor = 15;
  pensize = 0;
  xxmin = yymin = 0;
  xxmax = diagram_right;
  yymax = Y__max;
  clearwin(0, 0, X__max + 1, Y__max + 1, nocolor);
}

using SignalFiles = std::array<FilePtr, pane_count>;

bool open_start_files(SignalFiles& files) {
  bool all = true;
  for (int pane = 0; pane < pane_count; ++pane) {
    const StartPlot& plot = start_plots.at(static_cast<std::size_t>(pane));
    set_pane_name(pane, plot.file);
    FilePtr& file = files.at(static_cast<std::size_t>(pane));
    file = open_regular_file(plot.file, "r");
    all = all && file != nullptr;
  }
  return all;
}

void draw_start_plots(const SignalFiles& files) {
  for (int pane = 0; pane < pane_count; ++pane) {
    const std::size_t i = static_cast<std::size_t>(pane);
    const StartPlot& plot = start_plots.at(i);
    plot_curve(files.at(i).get(),
               {.start = plot.start, .xsc = start_xsc, .yoff = pane * pane_pitch}, plot.file);
    note_shown_view(pane, {.kind = PaneKind::signal,
                           .file = plot.file,
                           .start = static_cast<double>(plot.start),
                           .xsc = start_xsc});
  }
}

Outcome show_in_pane(int pane, const std::string& name) {
  set_pane_name(pane, name);
  if (!open_regular_file(name, "r")) return input_failure(name);  // no pane is to say so
  const PaneView view = {.xsc = name.ends_with(".spe") ? spectrum_xsc : overview_xsc};
  return name.ends_with(".spe") ? show_spectrum(pane, view, "all") : show_signal(pane, view);
}

// What the user has asked for in place of the sample signals, whose names other tools still offer.
// The first that cannot be shown is reported.
void show_named_files(const StartFiles& named) {
  Outcome first;
  for (int pane = 0; pane < pane_count; ++pane) {
    const std::size_t i = static_cast<std::size_t>(pane);
    set_pane_name(pane, start_plots.at(i).file);
    if (i >= named.panes.size()) continue;
    const Outcome shown = show_in_pane(pane, named.panes[i]);
    if (first.is_done()) first = shown;
  }
  if (!named.diagram.empty()) {
    read_diagram(named.diagram.c_str());
    exit_ope();  // as at every start no press does anything yet
  }
  show_outcome(first);
}

}  // namespace

void set_start_state() {
  term = text_screen;
  lg = plg = 0;
  bgcol = 1;
  open_drawing_area();
}

int editor(const StartFiles& named) {
  if (init_win(0, work_buffers) != 0 || !allocate_staging()) return 1;
  if (initPool(1, pool_bytes_per_row * cr, 0, 0) != 0) return 1;
  set_press_handler([] {
    end_looking();
    clear_strip();
  });
  set_memory_giver(release_kept_points);
  clear_canvas();
  load_icon_bar();
  SignalFiles files;  // open for the whole run
  if (!named.panes.empty() || !named.diagram.empty()) {
    create_message_window();
    show_named_files(named);
  } else if (open_start_files(files)) {
    draw_start_plots(files);
  } else {
    say_cannot_find_files();
  }
  do_edi1_engine(1, c_table);
  free_win(0, work_buffers);
  return 1;
}

}  // namespace torve
