// A program to try menus, text windows, labels and messages by hand.
//
// It opens three menus that overlap, a text window over the first argument (or "messages.txt") and
// a label, and says on standard output what it is asked to do. On the bare canvas: a left press
// says where; a right press in the upper half opens what is closed, in the lower half it reports
// an error. An error in the middle of a serve: a file window whose file goes away.

#include <cstdio>
#include <cstdlib>

#include "base/console.hpp"
#include "base/errors.hpp"
#include "dialogs/file_window.hpp"
#include "dialogs/install.hpp"
#include "dialogs/label.hpp"
#include "dialogs/messages.hpp"
#include "dialogs/sample_menus.hpp"
#include "display/colours.hpp"
#include "display/graph.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "draw/rectangles.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"
#include "wm/wd_object.hpp"

namespace torve {
namespace {

constexpr int first_menu = 14;
constexpr int text_window = 20;
constexpr int label = 21;
constexpr const SampleMenu* menus[] = {&queue_menu, &pen_menu, &analysis_menu};

void draw_canvas() {
  clearwin(0, 0, screen_width, screen_height, white_colour);
  for (int i = 0; i < screen_width; i += 40)
    draw_line1(i, 0, screen_width - 1 - i, screen_height - 1, i / 40 % 15);
}

int say_line(int index, int* flags, MenuItem* items, char** lines) {
  const WdObject& menu = wd(index + 1);
  for (int line = 0; line < menu.line_count; ++line) {
    if ((flags[line] & line_selected) == 0) continue;
    std::printf("menu %d runs line %d: %.30s\n", index + 1, line, lines[line]);
  }
  for (int i = 0; i < menu.item_count; ++i)
    std::printf("  [%s]\n", items[i].text);
  return 0;
}

void open_what_is_closed(const char* file) {
  int id = first_menu;
  for (const SampleMenu* menu : menus) {
    if (wd(id).kind == kind_free && make_sample_menu(id, *menu) == 0) {
      wd(id).flags = wd(id).flags | WdFlags::right_close_puts_down;
      if (id == first_menu) wd(id).flags = wd(id).flags & ~WdFlags::right_close_puts_down;
      put_wd_objects(id, id);
    }
    ++id;
  }
  if (wd(text_window).kind == kind_free) {
    make_file_window(text_window, 500, 400, 240, 160, 15, 1, 0, 0, file, -1, -1);
    put_wd_objects(text_window, text_window);
  }
  if (wd(label).kind == kind_free) {
    make_label(label, 203, 431, "a label");
    put_wd_objects(label, label);
  }
}

void canvas_press(const char* file) {
  if (!canvas_press_began()) return;
  std::printf("press on the canvas: button %d at %d,%d; %d blocks lent\n", buttons, X, Y,
              b_counter);
  if (buttons != 2) return;
  if (Y < screen_height / 2) {
    open_what_is_closed(file);
  } else {
    std::printf("message: %d\n", cannot_find_file("measurement7.res"));
  }
  spend_press();
}

void run(const char* file) {
  fill_jmptable_b(default_action_slot, say_line);
  draw_canvas();
  open_what_is_closed(file);
  for (;;) {
    const int wanted = do_operations();
    if (wanted == engine_run_action) {
      hide_errormsg();
      present();
      wd_actions[default_action_slot](popwindow - 1, wd(popwindow).line_flags,
                                      wd(popwindow).menu_items, wd(popwindow).menu_lines);
      spend_press();
    }
    if (wanted == engine_canvas_press) canvas_press(file);
  }
}

}  // namespace
}  // namespace torve

int main(int argc, char** argv) {
  using namespace torve;
  set_up_console();
  defaultfont = 7;
  if (init_font(defaultfont) != 0 || init_font2(label_font) != 0) return EXIT_FAILURE;
  if (initPool(0, 0, 0, 0) != 0) return EXIT_FAILURE;
  initgraph(argc, argv);
  set_close_handler([] {
    free_wd_objects();
    std::printf("closed; %d blocks lent\n", b_counter);
    endgraph();
    std::exit(EXIT_SUCCESS);
  });
  set_xcolor2();
  install_dialogs();
  if (!allocate_staging() || init_win(0, 0) != 0 || init_engine(1) != 0) return EXIT_FAILURE;
  run(argc > 1 ? argv[1] : "messages.txt");
}
