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
int cxoff = 0, cyoff = 0;
int markershape = 0, oldmarkershape = 0;
int debug311 = 0;

namespace {

constexpr int outline_slack = 10;      // pixels that an outline may lag behind the pointer
constexpr int pause_after_free = 500;  // rounds of delay
constexpr int margin_after_move = 5;   // rows at the bottom that the pointer cannot reach then

// Whose the press is that is going on.
enum class Owner { nobody, object, canvas, spent };
Owner owner = Owner::nobody;
bool press_began = false;
bool move_has_picture = false;  // fgbuffer holds the picture of the object being moved

EngineHooks hooks;

[[gnu::format(printf, 1, 2)]] void trace(const char* format, ...) {
  if (debug311 == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::vprintf(format, arguments);
  va_end(arguments);
}

void toggle_off_screen(int id) {
  wd(id).flags = wd(id).flags ^ WdFlags::off_screen;
}

void lift(int id) {
  trace("taking popwindow=%d up\n", id);
  toggle_off_screen(id);
  update_over(id);
  if_b_opt_bgfromfile(id);
}

void put_down(int id) {
  if_b_opt_bgtofile(id);
  toggle_off_screen(id);
  update_over(id);
  if (hooks.object_put_down != nullptr) hooks.object_put_down();
}

void end_press() {
  showmouse();
  owner = Owner::nobody;
  press_began = false;
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

void follow_pointer() {
  trace("moving true, moving=%d\n", moving);
  if (!move_has_picture) return;
  WdObject& object = wd(moving);
  if (as_rectangle != 0) {
    trace("as rectangle\n");
    if (std::abs(X - object.x) <= outline_slack && std::abs(Y - object.y) <= outline_slack) return;
    erase_outline();
    show_outline_at(X, Y);
    return;
  }
  trace("not as rectangle\n");
  const Rect place = place_of_move(X - cxoff, Y - cyoff);
  if (!has(object.flags, WdFlags::outline_move)) {
    movingPicture(place.x1, place.y1, 1, moving);
    return;
  }
  movingPicture(place.x1, place.y1, 2, moving);
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

int start_move() {
  trace("command=-4, moving\n");
  moving = popwindow;
  const WdObject& object = wd(moving);
  setmouselim(0, 0, X__max - object.width, Y__max - object.height);
  move_has_picture = fg_to_fgbuf(moving) == 0;
  if (move_has_picture) return engine_idle;
  setmouselim(0, 0, X__max, Y__max);
  return engine_move_failed;
}

// --- commands -----------------------------------------------------------------------------------

void put_popwindow_down() {
  put_down(popwindow);
  owner = Owner::spent;
}

// The object went down because of a press beside it; the press is for what lies there.
bool press_was_beside() {
  return !rect_of(wd(popwindow)).contains(X, Y);
}

int offer_to_canvas() {
  showmouse();
  owner = Owner::canvas;
  press_began = true;
  return engine_canvas_press;
}

int begin_press();

int put_down_on_command() {
  trace("command=-2, putting popwindow down\n");
  const bool beside = press_was_beside();
  put_popwindow_down();
  showmouse();
  if (!beside || buttons == 0) return engine_canvas_press;
  return an_object_is_at(X, Y) ? begin_press() : offer_to_canvas();
}

int act_on(int command) {
  switch (command) {
    case command_put_down:
      return put_down_on_command();
    case command_move:
      return start_move();
    case command_make_icon:
      trace("command=-3, make menu to an icon\n");
      if (make_icon(popwindow) != 0) no_memory();
      put_popwindow_down();
      popwindow = 0;
      return engine_idle;
    case command_free:
      trace("command=-1 free popwindow \n");
      free_one_wd_object(popwindow);
      owner = Owner::spent;
      popwindow = 0;
      if (hooks.object_put_down != nullptr) hooks.object_put_down();
      flush_mouse();
      delay(pause_after_free);
      return engine_idle;
    case command_hide:
      trace("command=-5 move popwindow and put it down \n");
      movingPicture(0, 0, 2, popwindow);
      owner = Owner::spent;
      popwindow = 0;
      if (hooks.object_put_down != nullptr) hooks.object_put_down();
      return engine_idle;
    case command_run_action:
      trace("command=0 put popwindow down, call operations \n");
      put_popwindow_down();
      return engine_run_action;
    case command_missing_file:
      put_popwindow_down();
      cannot_find_file(wd(popwindow).name);
      return engine_idle;
    case command_no_memory:
      put_popwindow_down();
      no_memory();
      return engine_idle;
    default:
      put_popwindow_down();
      return engine_idle;
  }
}

int serve() {
  trace("to serve_wd_objects with popwindow=%d\n", popwindow);
  const int command = serve_wd_objects(popwindow - 1);
  trace("served popwindow=%d, command=%d\n", popwindow, command);
  if (popwindow == 0) {  // freed by its own kind
    owner = Owner::spent;
    return engine_idle;
  }
  const int result = act_on(command);
  // A serve waits for events of its own and may have seen the release.
  if (cur_button == 0 && moving == 0 && owner != Owner::canvas) end_press();
  if (cur_button == 0 && moving != 0) end_move();
  return result;
}

// A press has begun at X, Y.
int begin_press() {
  trace("buttons pressed, mouse off, calling bring_to_top\n");
  hidemouse();
  int covered = 0;
  // The message goes away when anything else is touched, before that is raised.
  if (any_window_under(X, Y, &covered) != message_window_id && an_object_is_at(X, Y)) {
    hide_errormsg();
  }
  const bool on_object = an_object_is_at(X, Y);
  popwindow = bring_to_top(X, Y);
  trace("bring_to_top found popwindow=%d\n", popwindow);
  if (popwindow == 0) {
    if (!on_object) return offer_to_canvas();
    owner = Owner::spent;  // a permanent object lies there and stays where it is
    return engine_idle;
  }
  lift(popwindow);
  moving = 0;
  owner = Owner::object;
  return serve();
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

int continue_press() {
  press_began = false;
  if (moving != 0) {
    follow_pointer();
    return engine_idle;
  }
  return owner == Owner::canvas ? engine_canvas_press : engine_idle;
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
  moving = popwindow = as_rectangle = 0;
  end_press();
  return 0;
}

int do_operations() {
  readmouse(&buttons, &X, &Y);
  if (!last_event_was_mouse()) return engine_idle;
  if (last_event.type == InputEvent::Type::press) {
    // A release that got lost is made up for before the next press.
    if (owner != Owner::nobody) finish_press();
    return begin_press();
  }
  if (buttons != 0) return owner == Owner::nobody ? engine_idle : continue_press();
  if (owner != Owner::nobody) finish_press();
  return engine_idle;
}

bool canvas_press_began() {
  return press_is_for_canvas() && press_began;
}

bool press_is_for_canvas() {
  return owner == Owner::canvas;
}

void spend_press() {
  buttons = 0;
  press_began = false;
  if (owner != Owner::nobody) owner = Owner::spent;
}

void forget_served_object(int id) {
  if (popwindow == id) popwindow = 0;
  if (moving != id) return;
  if (as_rectangle != 0) erase_outline();
  moving = as_rectangle = 0;
  setmouselim(0, 0, X__max, Y__max - margin_after_move);
}

bool an_object_is_lifted() {
  if (moving != 0) return true;
  return popwindow != 0 && wd(popwindow).painted && has(wd(popwindow).flags, WdFlags::off_screen);
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
