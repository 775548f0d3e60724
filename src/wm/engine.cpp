#include "wm/engine.hpp"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "base/errors.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "wm/background.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_icon.hpp"
#include "wm/wd_object.hpp"

namespace torve {

int popwindow = 0;
int moving = 0;
int as_rectangle = 0;
int markershape = 0, oldmarkershape = 0;
int debug311 = 0;

namespace {

constexpr int outline_slack = 10;      // pixels that an outline may lag behind the pointer
constexpr int pause_after_free = 500;  // rounds of delay
constexpr int margin_after_move = 5;   // rows at the bottom that the pointer cannot reach then

// Whose the press is that is going on.
enum class Owner { nobody, object, canvas, spent };
Owner owner = Owner::nobody;
int lifted = 0;                 // the object that is out of the books, 0 for none
bool move_has_picture = false;  // fgbuffer holds the picture of the object being moved

EngineHooks hooks;

using Result = EngineRound::Result;

[[gnu::format(printf, 1, 2)]] void trace(const char* format, ...) {
  if (debug311 == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

void lift(int id) {
  trace("taking popwindow=%d up\n", id);
  leave_books(id);
  lifted = id;
}

// The lifted object lies in its place, or is gone: what has waited for that may come.
void end_lift() {
  lifted = 0;
  if (hooks.object_put_down != nullptr) hooks.object_put_down();
}

void put_down(int id) {
  enter_books(id);
  end_lift();
}

void end_press() {
  showmouse();
  owner = Owner::nobody;
}

// --- moving -------------------------------------------------------------------------------------

// Puts the object where the pointer asks for, inside the canvas.
Rect place_of_move(int x, int y) {
  WdObject object = wd(moving);
  object.x = x;
  object.y = y;
  keep_on_canvas(object, false);
  return rect_of(object);
}

void show_outline_at(int x, int y) {
  const Rect place = place_of_move(x, y);
  wd(moving).x = place.x1;
  wd(moving).y = place.y1;
  draw_outline(place);
}

void follow_pointer(const PointerEvent& pointer) {
  trace("moving true, moving=%d\n", moving);
  if (!move_has_picture) return;
  WdObject& object = wd(moving);
  if (as_rectangle != 0) {
    trace("as rectangle\n");
    if (std::abs(pointer.x - object.x) <= outline_slack &&
        std::abs(pointer.y - object.y) <= outline_slack) {
      return;
    }
    erase_outline();
    show_outline_at(pointer.x, pointer.y);
    return;
  }
  trace("not as rectangle\n");
  const Rect place = place_of_move(pointer.x - cxoff, pointer.y - cyoff);
  if (!has(object.flags, WdFlags::outline_move)) {
    movingPicture(place.x1, place.y1, 1, moving);
    return;
  }
  take_picture_off(moving);
  show_outline_at(place.x1, place.y1);
  as_rectangle = 1;
}

void end_move() {
  WdObject& object = wd(moving);
  const bool snaps = has(object.flags, WdFlags::snap);
  const int x = snaps ? object.x & ~7 : object.x;
  if (as_rectangle != 0) {
    trace("moving as rectangle\n");
    as_rectangle = 0;
    erase_outline();
    movingPicture(x, object.y, 0, moving);
  } else {
    trace("moving, not as rectangle\n");
    if (snaps && move_has_picture) movingPicture(x, object.y, 1, moving);
  }
  trace("putting down moving=%d\n", moving);
  const int moved = moving;
  moving = popwindow = 0;
  put_down(moved);
  setmouselim(0, 0, X__max, Y__max - margin_after_move);
}

EngineRound start_move() {
  trace("command=-4, moving\n");
  moving = popwindow;
  const WdObject& object = wd(moving);
  setmouselim(0, 0, X__max - object.width, Y__max - object.height);
  move_has_picture = fg_to_fgbuf(moving) == 0;
  if (move_has_picture) return {};
  setmouselim(0, 0, X__max, Y__max);
  return {.result = Result::move_failed};
}

// --- commands -----------------------------------------------------------------------------------

void put_popwindow_down() {
  put_down(popwindow);
  owner = Owner::spent;
}

EngineRound offer_to_canvas(const PointerEvent& press) {
  showmouse();
  owner = Owner::canvas;
  return {.result = Result::canvas_press, .press = press};
}

EngineRound begin_press(const PointerEvent& press);

// A press beside the object is for what lies there.
EngineRound put_down_on_command(const PointerEvent& press) {
  trace("command=-2, putting popwindow down\n");
  const bool beside = !rect_of(wd(popwindow)).contains(press.x, press.y);
  put_popwindow_down();
  showmouse();
  if (!beside || press.button == 0) return {.result = Result::put_down};
  return an_object_is_at(press.x, press.y) ? begin_press(press) : offer_to_canvas(press);
}

void shrink_to_icon() {
  trace("command=-3, make menu to an icon\n");
  if (!make_icon(popwindow)) no_memory();
  put_popwindow_down();
  popwindow = 0;
}

void free_popwindow() {
  trace("command=-1 free popwindow \n");
  free_one_wd_object(popwindow);
  owner = Owner::spent;
  popwindow = 0;
  end_lift();
  flush_mouse();
  delay(pause_after_free);
}

void hide_popwindow() {
  trace("command=-5 move popwindow and put it down \n");
  take_picture_off(popwindow);
  owner = Owner::spent;
  popwindow = 0;
  end_lift();
}

EngineRound act_on(const Served& served) {
  switch (served.command) {
    case Command::put_down:
      return put_down_on_command(served.last);
    case Command::move:
      return start_move();
    case Command::make_icon:
      shrink_to_icon();
      break;
    case Command::free:
      free_popwindow();
      break;
    case Command::hide:
      hide_popwindow();
      break;
    case Command::run_action:
      trace("command=0 put popwindow down, call operations \n");
      put_popwindow_down();
      return {.result = Result::run_action, .object = popwindow};
    case Command::missing_file:
      put_popwindow_down();
      cannot_find_file(wd(popwindow).name);
      break;
    case Command::no_memory:
      put_popwindow_down();
      no_memory();
      break;
    case Command::put_down_only:
      put_popwindow_down();
      break;
  }
  return {};
}

EngineRound serve(const PointerEvent& press) {
  trace("to serve_wd_objects with popwindow=%d\n", popwindow);
  const Served served = serve_object(popwindow, press);
  trace("served popwindow=%d, command=%d\n", popwindow, static_cast<int>(served.command));
  if (popwindow == 0) {  // freed by its own kind
    owner = Owner::spent;
    return {};
  }
  const EngineRound round = act_on(served);
  // A serve waits for events of its own and may have seen the release.
  if (cur_button == 0 && moving == 0 && owner != Owner::canvas) end_press();
  if (cur_button == 0 && moving != 0) end_move();
  return round;
}

EngineRound begin_press(const PointerEvent& press) {
  trace("buttons pressed, mouse off, calling bring_to_top\n");
  hidemouse();
  int covered = 0;
  // The message goes away when anything else is touched, before that is raised.
  if (any_window_under(press.x, press.y, &covered) != message_window_id &&
      an_object_is_at(press.x, press.y)) {
    hide_errormsg();
  }
  const bool on_object = an_object_is_at(press.x, press.y);
  popwindow = bring_to_top(press.x, press.y);
  trace("bring_to_top found popwindow=%d\n", popwindow);
  if (popwindow == 0) {
    if (!on_object) return offer_to_canvas(press);
    owner = Owner::spent;  // a permanent object lies there and stays where it is
    return {};
  }
  lift(popwindow);
  moving = 0;
  owner = Owner::object;
  return serve(press);
}

void finish_press() {
  if (moving != 0) {
    end_move();
  } else if (popwindow != 0) {
    trace("moving=0, popwindow is true\n");
    popwindow = 0;
    if (oldmarkershape != 0) {
      DefaultCursor();
      markershape = oldmarkershape = 0;
    }
  }
  end_press();
}

EngineRound continue_press(const PointerEvent& pointer) {
  if (moving != 0) follow_pointer(pointer);
  if (moving != 0 || owner != Owner::canvas) return {};
  return {.result = Result::canvas_press, .press = pointer};
}

EngineRound end_canvas_press(const PointerEvent& pointer) {
  const bool was_canvas = owner == Owner::canvas;
  finish_press();
  if (!was_canvas) return {};
  return {.result = Result::canvas_release, .press = pointer};
}

// What lies at the pointer comes to the top and scrolls, if it can.
EngineRound turn_wheel(const PointerEvent& event) {
  if (owner != Owner::nobody) return {};
  if (!an_object_is_at(event.x, event.y)) return {.result = Result::canvas_wheel, .press = event};
  if (event.lines == 0) return {};
  const int id = bring_to_top(event.x, event.y);
  const WdKind* kind = id != 0 && !is_icon(wd(id)) ? kind_of(wd(id)) : nullptr;
  if (kind != nullptr && kind->scroll != nullptr) scroll_object(id, event.lines);
  return {};
}

// An object has been freed: if it was being served or moved, nothing is any more.
void forget_served_object(int id) {
  if (lifted == id) lifted = 0;
  if (popwindow == id) popwindow = 0;
  if (moving != id) return;
  if (as_rectangle != 0) erase_outline();
  moving = as_rectangle = 0;
  setmouselim(0, 0, X__max, Y__max - margin_after_move);
}

}  // namespace

void set_engine_hooks(const EngineHooks& replacement) {
  hooks = replacement;
}

int init_engine(int last) {
  if (wd(message_window_id).kind == kind_free && hooks.create_message_window != nullptr) {
    hooks.create_message_window();
  }
  if (put_wd_objects(2, last) != 0) {
    std::printf("fail\n");
    return 1;
  }
  resetmouse();
  setmouselim(0, 0, X__max, Y__max);
  setmouse((X__max + 1) / 2, (Y__max + 1) / 2);
  moving = popwindow = as_rectangle = lifted = 0;
  set_freed_handler(forget_served_object);
  end_press();
  return 0;
}

EngineRound engine_round() {
  const PointerEvent event = next_pointer_event(Hover::reported);
  switch (event.action) {
    case PointerAction::none:
      return {.result = last_event.type == InputEvent::Type::key ? Result::key : Result::nothing};
    case PointerAction::press:
      // A release that got lost is made up for before the next press.
      if (owner != Owner::nobody) finish_press();
      return begin_press(event);
    case PointerAction::motion:
      return owner == Owner::nobody ? EngineRound{} : continue_press(event);
    case PointerAction::release:
      if (owner != Owner::nobody) return end_canvas_press(event);
      break;
    case PointerAction::wheel:
      return turn_wheel(event);
    case PointerAction::hover:
    case PointerAction::leave:
      if (owner == Owner::nobody) return {.result = Result::hover, .press = event};
      break;
  }
  return {};
}

int do_operations() {
  switch (engine_round().result) {
    case Result::run_action:
      return 1;
    case Result::canvas_press:
    case Result::put_down:
      return -1;
    case Result::move_failed:
      return 2;
    case Result::nothing:
    case Result::key:
    case Result::canvas_release:
    case Result::canvas_wheel:
    case Result::hover:
      break;
  }
  return 0;
}

void spend_press() {
  buttons = 0;
  if (owner != Owner::nobody) owner = Owner::spent;
}

int lifted_object() {
  return lifted;
}

int doubleclick_and_submenu(int* line_flags, int line_count, int x, int y, int button, int press_x,
                            int press_y, int* first_click, int* counter, int threshold) {
  constexpr int selected = 1;
  constexpr int double_clicked = 2;
  int line = 0;
  while (line < line_count && (line_flags[line] & selected) == 0)
    ++line;
  if (line == line_count || button == 0 || y != press_y) return 0;
  const bool again = x == press_x && *first_click != 0 && *counter >= threshold;
  if (!again && press_x >= x) return 0;
  if (again) *first_click = *counter = 0;
  line_flags[line] |= double_clicked;
  return 1;
}

}  // namespace torve
