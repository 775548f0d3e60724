#include "display/input.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "base/console.hpp"
#include "display/scale.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"

namespace torve {

int buttons, X, Y, oldX, oldY;
int cur_button;
int mouse_off;
int X1mouse, Y1mouse, X2mouse, Y2mouse;
char keybuffer[20];
int charcount;
unsigned long keysym;
InputEvent report;
InputEvent last_event;

namespace {

constexpr int clamp_margin = 5;       // rows at the bottom that the start clamp leaves out
constexpr int last_mouse_button = 3;  // above it: the wheel
constexpr int wheel_up = 4, wheel_down = 5, wheel_left = 6, wheel_right = 7;
constexpr int delay_count = 10'000;

const DisplayBackend* backend = nullptr;
void (*close_handler)() = nullptr;
void (*press_handler)() = nullptr;
int held_button = 0;  // the held button's own number, which tells 2 from 3; cur_button follows it
bool press_waits = false;  // last_event is a press that is to be reported next

[[maybe_unused]] const bool initialised = (reset_input(), true);

using Type = InputEvent::Type;

bool is_press(const InputEvent& event) {
  return event.type == Type::press && event.button <= last_mouse_button;
}

bool ends_held_button(const InputEvent& event) {
  return event.type == Type::release && event.button <= last_mouse_button &&
         (held_button == 0 || event.button == held_button);
}

// A second button while one is held changes nothing, neither its press nor its release.
bool counts(const InputEvent& event) {
  if (is_press(event)) return held_button == 0 || event.button == held_button;
  return ends_held_button(event) || event.type == Type::motion;
}

// The middle and the right button count as one.
void hold(int button) {
  held_button = button;
  cur_button = std::min(button, second_button);
}

void note_key(const InputEvent& event) {
  std::memcpy(keybuffer, event.characters, sizeof keybuffer);
  charcount = event.character_count;
  keysym = event.keysym;
}

// What an event means whoever is reading: the picture, the window's size, the wish to close.
void handle_window_event(const InputEvent& event) {
  switch (event.type) {
    case Type::expose:
      backend->drop_events(Type::expose);
      mark_dirty(whole_screen);
      break;
    case Type::resize:
      window_width = event.width;
      window_height = event.height;
      break;
    case Type::close:
      if (close_handler != nullptr) close_handler();
      break;
    default:
      break;
  }
}

// Waits for the next event. While more of them are waiting the picture may change again, so it is
// shown only when there is nothing left to handle.
void next_event() {
  if (!backend->event_pending()) present();
  backend->wait_event(report);
  last_event = report;
  handle_window_event(report);
}

PointerAction action_of(const InputEvent& event) {
  if (event.type == Type::press) return PointerAction::press;
  // A motion without a button: somebody who waited for keys has read the release.
  return event.type == Type::motion && cur_button != 0 ? PointerAction::motion
                                                       : PointerAction::release;
}

// What the wheel has done, if it was turned.
PointerEvent wheel_event() {
  if (report.type != Type::press || held_button != 0) return {};
  const auto step = [](int forth, int back) {
    return report.button == forth ? 1 : report.button == back ? -1 : 0;
  };
  const int lines = step(wheel_down, wheel_up);
  const int columns = step(wheel_right, wheel_left);
  if (lines == 0 && columns == 0) return {};
  return {.action = PointerAction::wheel, .lines = lines, .columns = columns};
}

bool is_hover(const InputEvent& event) {
  return event.type == Type::hover || event.type == Type::leave;
}

// An event that moves nothing but what is shown of where the pointer is.
PointerEvent event_without_button() {
  if (!is_hover(report)) return wheel_event();
  if (held_button != 0) return {};
  return {.action = report.type == Type::hover ? PointerAction::hover : PointerAction::leave};
}

// The event that has been read, as one of the mouse.
PointerEvent handle_pointer() {
  PointerEvent event = event_without_button();
  event.button = cur_button;
  event.modifiers = report.modifiers;
  if (event.action != PointerAction::none) {
    event.x = report.x;
    event.y = report.y;
    event.time = report.time;
  }
  if (!counts(report)) return event;
  event.action = action_of(report);
  event.x = std::max(X1mouse, std::min(report.x, X2mouse));
  event.y = std::max(Y1mouse, std::min(report.y, Y2mouse));
  event.time = report.time;
  if (report.type == Type::motion) return event;
  hold(report.type == Type::press ? report.button : 0);
  event.button = cur_button;
  oldX = event.x;
  oldY = event.y;
  if (event.action == PointerAction::press) flush_mouse();
  return event;
}

bool moves_pointer(const PointerEvent& event) {
  return event.action == PointerAction::press || event.action == PointerAction::motion ||
         event.action == PointerAction::release;
}

PointerEvent next_event_of_pointer(Hover hover) {
  if (backend == nullptr) return {.button = cur_button};
  if (press_waits) {
    report = last_event;
    press_waits = false;
  } else {
    do
      next_event();
    while (hover == Hover::skipped && is_hover(report));
  }
  if (report.type == Type::key) note_key(report);
  return handle_pointer();
}

void forget_report() {
  report.type = Type::none;
}

}  // namespace

const DisplayBackend* display_backend() {
  return backend;
}

void set_display_backend(const DisplayBackend* replacement) {
  backend = replacement;
}

void reset_input() {
  buttons = X = Y = oldX = oldY = 0;
  hold(0);
  press_waits = false;
  last_event = {};
  mouse_off = 0;
  setmouselim(0, 0, screen_width - 1, screen_height - 1 - clamp_margin);
  std::memset(keybuffer, 0, sizeof keybuffer);
  charcount = 0;
  keysym = 0;
  report = {};
  close_handler = nullptr;
}

void set_close_handler(void (*handler)()) {
  close_handler = handler;
}

void set_press_handler(void (*handler)()) {
  press_handler = handler;
}

PointerEvent next_pointer_event(Hover hover) {
  const PointerEvent event = next_event_of_pointer(hover);
  buttons = event.button;
  if (!moves_pointer(event)) return event;
  X = event.x;
  Y = event.y;
  if (event.action == PointerAction::press && press_handler != nullptr) press_handler();
  return event;
}

PointerEvent present_pointer() {
  return {.action = PointerAction::press,
          .button = buttons,
          .x = X,
          .y = Y,
          .time = last_event.time,
          .modifiers = last_event.modifiers};
}

int readmouse(int* button, int* x, int* y) {
  const PointerEvent event = next_event_of_pointer(Hover::skipped);
  *button = event.button;
  if (!moves_pointer(event)) return 0;
  *x = event.x;
  *y = event.y;
  return 0;
}

namespace {

// Waits for a key that is more than a modifier or, if asked to, for a press; true for a key.
bool wait_for_key(bool press_counts) {
  press_waits = false;
  for (;;) {
    next_event();
    if (ends_held_button(report)) hold(0);
    if (press_counts && is_press(report)) return false;
    if (report.type == Type::key && !report.is_modifier) return true;
  }
}

int take_key() {
  note_key(report);
  flush_key();
  return keybuffer[0];
}

}  // namespace

int getch() {
  if (backend == nullptr) return std::max(0, read_console_char());
  wait_for_key(false);
  return take_key();
}

int getch_or_press() {
  if (backend == nullptr) return getch();
  if (wait_for_key(true)) return take_key();
  // Whoever reads it next has not seen the press before this one end.
  hold(0);
  press_waits = true;
  return press_instead_of_key;
}

void serve_expose_events() {
  if (backend == nullptr) return;
  // Only the picture is looked after: presses and keys keep their place in the queue.
  if (backend->drop_events(Type::expose)) mark_dirty(whole_screen);
  present();
}

void serve_window_until_readable(int descriptor) {
  InputEvent event;
  while (backend != nullptr && backend->wait_readable != nullptr &&
         !backend->wait_readable(descriptor, event)) {
    handle_window_event(event);
    present();
  }
}

bool change_scale(int by) {
  return backend != nullptr && backend->change_scale != nullptr && backend->change_scale(by);
}

bool offer_text(const std::string& text) {
  if (backend == nullptr || backend->offer_text == nullptr) return false;
  backend->offer_text(text);
  return true;
}

int kbhit() {
  return 0;
}

bool take_waiting_key(unsigned long key) {
  return backend != nullptr && backend->drop_key != nullptr && backend->drop_key(key);
}

void flush_mouse() {
  if (backend != nullptr) backend->drop_events(Type::press);
  press_waits = false;
  forget_report();
}

void flush_key() {
  if (backend != nullptr) backend->drop_events(Type::key);
  forget_report();
}

void delay(int n) {
  present();
  for (int round = 0; round < n; ++round) {
    volatile std::uint16_t counter = 0;
    while (counter < delay_count)
      counter = static_cast<std::uint16_t>(counter + 1);
  }
}

void showmouse() {
  mouse_off = 0;
}

void hidemouse() {
  mouse_off = 1;
}

void setmouselim(int x1, int y1, int x2, int y2) {
  X1mouse = x1;
  Y1mouse = y1;
  X2mouse = x2;
  Y2mouse = y2;
}

}  // namespace torve
