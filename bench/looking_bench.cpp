// What looking closer at a pane costs, from the event to the pixels that a window is sent.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "app/inspect/gestures.hpp"
#include "app/inspect/reading.hpp"
#include "app/plot/view_points.hpp"
#include "app/tools/pane_views.hpp"
#include "dialogs/install.hpp"
#include "display/backend.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "wm/engine.hpp"

namespace torve {
namespace {

// Pixels as they are sent; the sending itself is the X server's.
std::vector<std::uint32_t> sent(std::size_t{screen_width} * screen_height);

const DisplayBackend converting = {
    .wait_event = [](InputEvent&) {},
    .event_pending = [] { return true; },
    .drop_events = [](InputEvent::Type) { return false; },
    .push =
        [](const Rect& rect) {
          const int column = rect.x1 / 8 * 8;
          read_pixels(rect, sent.data() + rect.y1 * screen_width + column, screen_width);
        },
};

// Noise of so many samples in the first pane, as a line of a tool shows it.
void show_noise(int samples) {
  std::FILE* const console = stdout;
  stdout = std::fopen("/dev/null", "w");
  static_cast<void>(create_screen_image());
  allocate_colours(allocate_true_colour);
  set_xcolor2();
  reset_screen_state();
  defaultfont = menu_font;
  static_cast<void>(init_font(menu_font) + init_font2(label_font));
  static_cast<void>(initPool(1, 1200 * cr, 0, 0));
  install_dialogs();
  static_cast<void>(init_engine(1));
  clearwin(0, 0, screen_width, screen_height, white_colour);
  std::mt19937 dice(1);
  std::ofstream file("looking.res");
  for (int i = 0; i < samples; ++i)
    file << i << ' ' << std::to_string(static_cast<double>(dice() % 2000000) / 1e6 - 1) << '\n';
  file.close();
  set_pane_name(0, "looking.res");
  static_cast<void>(show_signal(0, {.xsc = overview_xsc}));
  std::fclose(stdout);
  stdout = console;
  set_display_backend(&converting);
  present();
}

void end() {
  take_reading_away();
  set_display_backend(nullptr);
  release_kept_points();
  std::remove("looking.res");
}

void read_a_file(benchmark::State& state) {
  show_noise(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    release_kept_points();
    ViewPoints loaded;
    benchmark::DoNotOptimize(load_points(shown_view(0), &loaded).is_done());
  }
  end();
}
BENCHMARK(read_a_file)->Arg(100000)->Arg(2646000)->Unit(benchmark::kMillisecond);

// In and out about a point, from and to the whole file.
void zoom(benchmark::State& state) {
  show_noise(static_cast<int>(state.range(0)));
  gesture_of_key({.type = InputEvent::Type::key, .x = 400, .y = 90, .keysym = 0xFF50});
  int turn = 0;
  for (auto _ : state) {
    gesture_of_wheel(
        {.action = PointerAction::wheel, .x = 400, .y = 90, .lines = turn++ % 8 < 4 ? -1 : 1});
    present();
  }
  end();
}
BENCHMARK(zoom)->Arg(100000)->Arg(2646000)->Unit(benchmark::kMillisecond);

void read_a_point(benchmark::State& state) {
  show_noise(static_cast<int>(state.range(0)));
  int x = 100;
  for (auto _ : state) {
    x = x == 700 ? 100 : x + 1;
    show_reading(0, x, 60 + x % 40);
    present();
  }
  end();
}
BENCHMARK(read_a_point)->Arg(100000)->Arg(2646000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace torve
