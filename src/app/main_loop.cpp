#include "app/main_loop.hpp"

#include <cstdio>
#include <cstdlib>
#include <new>

#include "app/inspect/gestures.hpp"
#include "app/inspect/reading.hpp"
#include "app/inspect/stretch.hpp"
#include "app/shutdown.hpp"
#include "base/errors.hpp"
#include "base/memory_reserve.hpp"
#include "diagram/diagram_state.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_menu.hpp"
#include "diagram/palette.hpp"
#include "diagram/picking.hpp"
#include "dialogs/messages.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "wm/engine.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_object.hpp"

namespace torve {

int color_request_flag = 0;
int exit_vect_ed = 0;

namespace {

constexpr int pause_after_handler = 100;      // rounds of delay
constexpr unsigned long escape_key = 0xFF1B;  // X names of keys
constexpr unsigned long delete_key = 0xFFFF;

// Whether the mouse is free for looking at the panes: no diagram tool is in use, nor Pointer.
bool hand_is_free() {
  return vobjmode == mode_idle;
}

bool bare_pane_is_at(int x, int y) {
  return pane_at(x, y) >= 0 && !an_object_is_at(x, y) && !a_figure_lies_at(x, y);
}

// What lies under the pointer is read as long as nothing else can be meant.
void follow_pointer(const PointerEvent& pointer) {
  const bool is_over = pointer.action == PointerAction::hover && hand_is_free() &&
                       bare_pane_is_at(pointer.x, pointer.y);
  if (!is_over) return take_reading_away();
  show_reading(pane_at(pointer.x, pointer.y), pointer.x, pointer.y);
}

void turn_wheel(const PointerEvent& wheel) {
  take_reading_away();
  gesture_of_wheel(wheel);
  PointerEvent pointer = wheel;
  pointer.action = PointerAction::hover;
  follow_pointer(pointer);
}

// A press that is for no window object: when it begins it may be an icon's, and whatever it is then
// goes to the diagram, held motion too. Whether the program is to end.
bool press_on_canvas(const JumpEntry* table, const PointerEvent& press) {
  const bool begins = press.action == PointerAction::press;
  const JumpEntry* icon = begins ? find_icon(table, press.x, press.y) : nullptr;
  if (icon != nullptr) {
    exit_vect_ed = 0;  // the handler may set it
    present();
    if (icon->handler(press.button, press.x, press.y) != 0) return true;
    delay(pause_after_handler);
    spend_press();
    // The diagram is told of every press on the canvas; of this one no button is left.
    if (exit_vect_ed == 0) vect_ed(0, press.x, press.y);
    return false;
  }
  if (begins) palette_press(press);
  if (begins && press.button == first_button && hand_is_free() &&
      bare_pane_is_at(press.x, press.y)) {
    begin_stretch(pane_at(press.x, press.y), press);
  } else {
    drag_stretch(press);
  }
  if (exit_vect_ed == 0 && edit_diagram(press) == PressUse::spent) spend_press();
  return false;
}

// Escape means one thing at a time.
void escape() {
  if (give_up_stretch()) return;
  if (!hand_is_free()) {
    exit_ope();
  } else {
    forget_mark();
  }
}

// A message goes with the next key, which does nothing else. Escape leaves whatever diagram tool is
// armed, Delete cuts the figure in hand. While a window is being moved nothing beneath it may
// change.
void heed_key() {
  const InputEvent key = last_event;
  if (lifted_object() != 0 || key.is_modifier) return;
  if (message_is_shown()) return hide_errormsg();
  const bool was_read = reading_is_shown();
  if (has(key.modifiers, Modifiers::control)) take_reading_away();  // the diagram may change
  const int character = charcount > 0 ? static_cast<unsigned char>(keybuffer[0]) : 0;
  if (character != 0 && diagram_key(character)) return;
  if (const Gesture* gesture = gesture_of_key(key)) {
    if (was_read && gesture->reads_again)
      follow_pointer({.action = PointerAction::hover, .x = key.x, .y = key.y});
    return;
  }
  take_reading_away();
  if (key.keysym == escape_key) escape();
  if (key.keysym == delete_key) cut_current_figure();
}

// Runs the action of an object that has just been put down; whether the program is to end.
bool run_action(int object) {
  pensize = 0;
  hide_errormsg();
  present();
  if (edi1_operations(object) == 1) return true;
  delay(pause_after_handler);
  flush_mouse();
  spend_press();
  return false;
}

// Whether the program is to end.
bool act_on(const EngineRound& round, const JumpEntry* table) {
  switch (round.result) {
    case EngineRound::Result::run_action:
      return run_action(round.object);
    case EngineRound::Result::canvas_press:
      return press_on_canvas(table, round.press);
    case EngineRound::Result::key:
      heed_key();
      break;
    case EngineRound::Result::canvas_release:
      end_stretch(round.press);
      break;
    case EngineRound::Result::canvas_wheel:
      turn_wheel(round.press);
      break;
    case EngineRound::Result::hover:
      follow_pointer(round.press);
      break;
    case EngineRound::Result::nothing:
    case EngineRound::Result::put_down:
    case EngineRound::Result::move_failed:
      break;
  }
  return false;
}

// After a round in which memory ran out: says so. Whether there is still too little to go on.
bool out_of_memory() {
  if (!memory_reserve_is_spent()) return false;
  no_memory();
  present();
  return !hold_memory_reserve();
}

// Whether the program ends because there is no memory.
bool run_rounds(const JumpEntry* table) try {
  while (!main_loop_round(table)) {
    if (out_of_memory()) return true;
  }
  return false;
} catch (const std::bad_alloc&) {
  return true;
}

[[noreturn]] void leave_without_memory() try {
  std::printf("memory has run out\n");
  texit_ope(0, 0, 0);
} catch (const std::bad_alloc&) {
  std::printf("the diagram could not be saved\n");
  std::exit(1);
}

}  // namespace

int edi2_operations(int id) {
  const WdAction own = is_wd_id(id) ? wd_actions[id - 1] : nullptr;
  const WdAction action = own != nullptr ? own : wd_actions[default_action_slot];
  if (action == nullptr || !is_wd_id(id)) return 0;
  const WdObject& object = wd(id);
  return action(id - 1, object.line_flags, object.menu_items, object.menu_lines);
}

int edi1_operations(int id) {
  return edi2_operations(id);
}

bool main_loop_round(const JumpEntry* table) {
  if (color_request_flag != 0) {
    next_pointer_event();
    return false;
  }
  if (act_on(engine_round(), table)) return true;
  show_diagram_state();
  kbhit();
  return false;
}

void end_looking() {
  give_up_stretch();
  take_reading_away();
}

int do_edi1_engine(int last, const JumpEntry* table) {
  if (init_engine(last) != 0) return 1;
  if (run_rounds(table)) leave_without_memory();
  return 1;
}

}  // namespace torve
