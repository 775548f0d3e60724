// What window objects and pictures of panes cost.

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "app/plot/plot_panes.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/tools/tools.hpp"
#include "diagram/construction.hpp"
#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "dialogs/install.hpp"
#include "dialogs/tool_menu.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/pixels.hpp"
#include "draw/rectangles.hpp"
#include "gif/gif_writer.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"
#include "wm/stacking.hpp"

namespace torve {
namespace {

constexpr std::uint32_t plain_kind = 5;

bool put_plain(int id) {
  if (make_background(wd(id), false) != 0) return false;
  const Rect rect = rect_of(wd(id));
  clearwin(rect.x1, rect.y1, rect.x2, rect.y2, id % 16);
  return true;
}

bool refresh_plain(int id) {
  const Rect rect = rect_of(wd(id));
  clearwin(rect.x1, rect.y1, rect.x2, rect.y2, id % 16);
  return true;
}

void start_canvas() {
  std::FILE* console = stdout;
  stdout = std::fopen("/dev/null", "w");
  static_cast<void>(create_screen_image());
  allocate_colours(allocate_true_colour);
  set_xcolor2();
  reset_screen_state();
  defaultfont = 7;
  static_cast<void>(init_font(7));
  static_cast<void>(initPool(1, 1200 * cr, 0, 0));
  init_win(0, 15);
  static_cast<void>(allocate_staging());
  install_dialogs();
  register_wd_kind(plain_kind, {.put = put_plain, .refresh = refresh_plain});
  static_cast<void>(init_engine(1));
  clearwin(0, 0, screen_width, screen_height, nocolor);
  std::fclose(stdout);
  stdout = console;
}

// From the press on a tool's icon to its menu in the image, and from its close box to the canvas.
void open_and_close_a_menu(benchmark::State& state) {
  start_canvas();
  for (auto _ : state) {
    analysis_ope(1, 0, 0);
    free_one_wd_object(analysis_menu_id);
  }
}
BENCHMARK(open_and_close_a_menu)->Unit(benchmark::kMicrosecond);

void raise_one_of_100(benchmark::State& state) {
  start_canvas();
  constexpr int first = 2;
  constexpr int count = 100;
  for (int id = first; id < first + count; ++id) {
    const int x = (id * 37) % 560;
    const int y = (id * 23) % 420;
    start_wd_object(id, plain_kind, {x, y, x + 240, y + 180}, WdFlags::none);
  }
  static_cast<void>(put_wd_objects(first, first + count - 1));
  int next = first;
  for (auto _ : state) {
    benchmark::DoNotOptimize(bring_id_to_top(next, 1));
    next = first + (next - first + 1) % count;
  }
  free_wd_objects();
}
BENCHMARK(raise_one_of_100)->Unit(benchmark::kMicrosecond);

// One motion of a held figure, the uppermost of as many as the argument says; `grabbed`: the
// lowest, which is raised each time. With the menu that covers it, as every property menu does.
void move_a_figure(benchmark::State& state, bool grabbed, bool covered) {
  start_canvas();
  xxmin = yymin = 0;
  xxmax = last_diagram_column + 1;
  yymax = screen_height - 1;
  for (int i = 0; i < state.range(0); ++i)
    put_hline(i * 37 % 560, 100 + i * 23 % 300, 90);
  if (covered) audio_ope(1, 0, 0);
  const int row = covered ? 550 : 230;
  int step = 0;
  for (auto _ : state) {
    cvobj = grabbed ? firstvobj : lastvobj;
    vobjmode = mode_moving;
    vect_ed(1, 500 + ++step % 50, row);
  }
  free_wd_objects();
  free_vector_objects(VectorMode::clipped);
}
BENCHMARK_CAPTURE(move_a_figure, uppermost, false, false)
    ->Arg(1)
    ->Arg(100)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(move_a_figure, uppermost_under_a_menu, false, true)
    ->Arg(100)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(move_a_figure, lowest, true, false)
    ->Arg(100)
    ->Arg(1000)
    ->Unit(benchmark::kMicrosecond);

void gif_of_a_noisy_pane(benchmark::State& state) {
  start_canvas();
  for (int x = 0; x < screen_width; ++x) {
    for (int y = 0; y < 171; ++y)
      drawpixel(x, y, (x * 7919 + y * 104729) / 3 % 21);
  }
  for (auto _ : state) {
    const std::vector<std::uint8_t> indices = gif_indices({0, 0, screen_width, 171});
    benchmark::DoNotOptimize(gif_file(gif_width(screen_width), 171, indices));
  }
}
BENCHMARK(gif_of_a_noisy_pane)->Unit(benchmark::kMillisecond);

// A line of a tool, from the call of its action to the new picture, on 100,000 samples of noise.
void run_line(benchmark::State& state, int (*open)(int, int, int), int id, int line,
              const char* samples_of_spectrum) {
  start_canvas();
  const auto before = std::filesystem::current_path();
  std::filesystem::create_directories("/tmp/torve_bench_tools");
  std::filesystem::current_path("/tmp/torve_bench_tools");
  std::mt19937 noise(7);
  for (int pane = 0; pane < pane_count; ++pane) {
    set_pane_name(pane, "noise" + std::to_string(pane) + ".res");
    std::FILE* file = std::fopen(pane_name(pane), "w");
    for (int i = 0; i < 100'000; ++i) {
      std::fprintf(file, "%d %f\n", i, std::uniform_real_distribution<double>(-1, 1)(noise));
    }
    std::fclose(file);
  }
  static_cast<void>(allocate_work_buffer());
  open(1, 0, 0);
  WdObject& menu = wd(id);
  menu.line_flags[line] = 1;
  if (samples_of_spectrum != nullptr) set_field(menu.menu_items[5], samples_of_spectrum);
  std::FILE* console = stdout;
  stdout = std::fopen("/dev/null", "w");
  for (auto _ : state) {
    wd_actions[id - 1](id - 1, menu.line_flags, menu.menu_items, menu.menu_lines);
  }
  std::fclose(stdout);
  stdout = console;
  free_wd_objects();
  std::filesystem::current_path(before);
  std::filesystem::remove_all("/tmp/torve_bench_tools");
}
BENCHMARK_CAPTURE(run_line, plot, audio_ope, plot_menu_id, 0, nullptr)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run_line, eps, printeps_ope, print_menu_id, 0, nullptr)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run_line, correlation, analysis_ope, analysis_menu_id, 1, nullptr)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run_line, comparison, analysis_ope, analysis_menu_id, 2, nullptr)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run_line, spectrum_of_20000, analysis2_ope, spectrum_menu_id, 1, "20000")
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torve
