// The workbench: fonts, pool and display, then the editor, then the way back.

#include <algorithm>
#include <cstdio>
#include <new>

#include "app/arguments.hpp"
#include "app/pool_failure.hpp"
#include "app/shutdown.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/tools/work_watch.hpp"
#include "app/workbench.hpp"
#include "base/console.hpp"
#include "base/memory_reserve.hpp"
#include "base/typed_names.hpp"
#include "diagram/diagram_file.hpp"
#include "diagram/editor.hpp"
#include "dialogs/install.hpp"
#include "display/colours.hpp"
#include "display/graph.hpp"
#include "display/input.hpp"
#include "display/scale.hpp"
#include "display/screen_state.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"

namespace {

using namespace torve;

constexpr int status_font_missing = 1;
constexpr int status_no_memory = 1;

// Six-bit palette registers of the sixteen basic colours.
constexpr int palette[] = {0, 9, 26, 54, 36, 13, 10, 7, 56, 59, 58, 6, 37, 61, 62, 63};

int report_font_problem(const char* problem) {
  std::fputs(problem, stdout);
  static_cast<void>(getch());
  return status_font_missing;
}

bool load_fonts() {
  return init_font(menu_font) == 0 && init_font2(label_font) == 0;
}

void set_palette() {
  int index = 0;
  for (const int value : palette)
    setVGApalette(index++, value);
  xcolor2 = xcolor;
  set_xcolor2();
}

void close_window() {
  texit_ope(0, 0, 0);
}

int run(int argc, char** argv, const StartFiles& named) {
  defaultfont = menu_font;
  install_pool_reporters();
  install_dialogs();
  install_diagram();
  if (!load_fonts()) return report_font_problem("problems in loading font\n");
  if (initPool(0, 0, 0, 0) != 0) return 0;
  ask_for_scale(named.scale);
  initgraph(argc, argv);
  set_close_handler(close_window);
  set_connection_lost_handler(rescue_diagram);
  set_screen_service(serve_expose_events);
  watch_computations();
  set_input_waiter(serve_window_until_readable);
  take_names_as_typed(true);
  set_start_state();
  set_palette();
  if (allocate_work_buffer()) editor(named);
  if (release_everything() != 0) return report_font_problem("problems in freeing font\n");
  return 0;
}

int say_no_memory() {
  std::fputs("no memory\n", stdout);
  return status_no_memory;
}

}  // namespace

int main(int argc, char** argv) try {
  set_up_console();
  int status = 0;
  const auto named = read_arguments({argv + std::min(argc, 1), argv + argc}, &status);
  if (!named) return status;
  return_large_blocks();
  return hold_memory_reserve() ? run(argc, argv, *named) : say_no_memory();
} catch (const std::bad_alloc&) {
  release_everything();
  return say_no_memory();
}
