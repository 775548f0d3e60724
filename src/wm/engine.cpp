#include "wm/engine.hpp"

#include "display/input.hpp"
#include "display/screen_state.hpp"

namespace torve {

namespace {

enum class PressOwner { none, canvas };

PressOwner owner = PressOwner::none;

}  // namespace

int init_engine(int) {
  owner = PressOwner::none;
  setmouselim(0, 0, X__max, Y__max);
  showmouse();
  return 0;
}

int do_operations() {
  readmouse(&buttons, &X, &Y);
  if (buttons == 0) {
    owner = PressOwner::none;
    return engine_idle;
  }
  if (owner != PressOwner::none) return engine_idle;
  owner = PressOwner::canvas;
  return engine_canvas_press;
}

void spend_press() {
  buttons = 0;
}

}  // namespace torve
