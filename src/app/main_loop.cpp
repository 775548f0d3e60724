#include "app/main_loop.hpp"

#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "wm/engine.hpp"

namespace torve {

namespace {

constexpr int pause_after_handler = 100;  // rounds of delay

// Offers a press that is for no window object to the icons; whether the program is to end.
bool press_on_canvas(const JumpEntry* table) {
  const JumpEntry* icon = find_icon(table, X, Y);
  if (icon == nullptr) return false;
  present();
  if (icon->handler(buttons, X, Y) != 0) return true;
  delay(pause_after_handler);
  spend_press();
  return false;
}

}  // namespace

int do_edi1_engine(int first, const JumpEntry* table) {
  if (init_engine(first) != 0) return 1;
  for (;;) {
    if (do_operations() == engine_canvas_press && press_on_canvas(table)) return 1;
    kbhit();
  }
}

}  // namespace torve
