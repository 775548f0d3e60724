#include "app/inspect/gestures.hpp"

#include <algorithm>

#include "app/inspect/help.hpp"
#include "app/inspect/reading.hpp"
#include "app/inspect/views.hpp"
#include "app/plot/view_geometry.hpp"
#include "app/tools/pane_views.hpp"
#include "dialogs/strip.hpp"
#include "display/scale.hpp"

namespace torve {

namespace {

// X names of keys; letters and signs are their own.
enum Key : unsigned long {
  key_back_space = 0xFF08,
  key_return = 0xFF0D,
  key_home = 0xFF50,
  key_left = 0xFF51,
  key_up = 0xFF52,
  key_right = 0xFF53,
  key_down = 0xFF54,
  keypad_enter = 0xFF8D,
  keypad_plus = 0xFFAB,
  keypad_minus = 0xFFAD,
};

constexpr double zoom_step = 1.5;
constexpr double height_step = 1.25;
constexpr double scroll_step = 0.125;  // widths of a pane

void change(const GesturePlace& place, ViewChange how, double amount) {
  change_view(place.pane, how, place.x, amount, place.time);
}

void zoom_time(const GesturePlace& place, double factor) {
  change(
      place,
      [](const PaneView& view, std::size_t points, int column, double amount) {
        return zoomed(view, points, std::clamp(column, first_curve_column, last_curve_column),
                      amount);
      },
      factor);
}

void scroll_time(const GesturePlace& place, double widths) {
  change(
      place,
      [](const PaneView& view, std::size_t points, int, double amount) {
        return scrolled(view, points, amount);
      },
      widths);
}

void zoom_values(const GesturePlace& place, double factor) {
  change(
      place,
      [](const PaneView& view, std::size_t, int, double amount) {
        return view.decibels ? view : values_zoomed(view, amount);
      },
      factor);
}

void show_whole_file(const GesturePlace& place, double) {
  change(
      place,
      [](const PaneView& view, std::size_t points, int, double) {
        return fitted(view, points, 0, static_cast<double>(points));
      },
      0);
}

void go_back(const GesturePlace& place, double) {
  show_view_before(place.pane);
}

void show_told(const GesturePlace& place, double) {
  show_told_view(place.pane);
}

void turn_decibels(const GesturePlace& place, double) {
  toggle_decibels(place.pane);
}

void couple(const GesturePlace&, double) {
  say_in_strip(toggle_coupling() ? "The signals go along with each other in time."
                                 : "Each pane goes its own way.");
}

void show_help(const GesturePlace&, double) {
  open_help();
}

// Where it cannot be, the window stays as it is, which is answer enough.
void enlarge(const GesturePlace&, double by) {
  static_cast<void>(change_scale(static_cast<int>(by)));
}

constexpr Modifiers shift = Modifiers::shift;
constexpr Modifiers control = Modifiers::control;

constexpr Gesture gestures[] = {
    {.trigger = Trigger::wheel_up, .act = zoom_time, .amount = zoom_step},
    {.trigger = Trigger::wheel_down, .act = zoom_time, .amount = 1 / zoom_step},
    {.trigger = Trigger::wheel_up, .modifiers = shift, .act = scroll_time, .amount = -scroll_step},
    {.trigger = Trigger::wheel_down, .modifiers = shift, .act = scroll_time, .amount = scroll_step},
    {.trigger = Trigger::tilt_left, .act = scroll_time, .amount = -scroll_step},
    {.trigger = Trigger::tilt_right, .act = scroll_time, .amount = scroll_step},
    {.trigger = Trigger::wheel_up, .modifiers = control, .act = zoom_values, .amount = height_step},
    {.trigger = Trigger::wheel_down,
     .modifiers = control,
     .act = zoom_values,
     .amount = 1 / height_step},
    {.keysym = '+', .act = zoom_time, .amount = zoom_step},
    {.keysym = keypad_plus, .act = zoom_time, .amount = zoom_step},
    {.keysym = '-', .act = zoom_time, .amount = 1 / zoom_step},
    {.keysym = keypad_minus, .act = zoom_time, .amount = 1 / zoom_step},
    {.keysym = key_left, .act = scroll_time, .amount = -scroll_step},
    {.keysym = key_right, .act = scroll_time, .amount = scroll_step},
    {.keysym = key_up, .act = zoom_values, .amount = height_step},
    {.keysym = key_down, .act = zoom_values, .amount = 1 / height_step},
    {.keysym = key_home, .act = show_whole_file},
    {.keysym = key_back_space, .act = go_back},
    {.keysym = key_return, .act = show_told},
    {.keysym = keypad_enter, .act = show_told},
    {.keysym = 'd', .act = turn_decibels},
    {.keysym = 'm', .act = [](const GesturePlace&, double) { keep_mark(); }, .keeps_reading = true},
    {.keysym = 'w',
     .act = [](const GesturePlace&, double) { write_stretch(); },
     .keeps_reading = true,
     .reads_again = false},
    {.keysym = 'c',
     .needs = Needs::nothing,
     .act = [](const GesturePlace&, double) { copy_line(); },
     .keeps_reading = true,
     .reads_again = false},
    {.keysym = '+',
     .modifiers = control,
     .needs = Needs::nothing,
     .act = enlarge,
     .amount = 1,
     .reads_again = false},
    {.keysym = keypad_plus,
     .modifiers = control,
     .needs = Needs::nothing,
     .act = enlarge,
     .amount = 1,
     .reads_again = false},
    {.keysym = '-',
     .modifiers = control,
     .needs = Needs::nothing,
     .act = enlarge,
     .amount = -1,
     .reads_again = false},
    {.keysym = keypad_minus,
     .modifiers = control,
     .needs = Needs::nothing,
     .act = enlarge,
     .amount = -1,
     .reads_again = false},
    {.keysym = 'l', .needs = Needs::nothing, .act = couple, .reads_again = false},
    {.keysym = '?', .needs = Needs::nothing, .act = show_help, .reads_again = false},
};

constexpr bool all_differ() {
  for (const Gesture& one : gestures) {
    int alike = 0;
    for (const Gesture& other : gestures) {
      alike += one.trigger == other.trigger && one.keysym == other.keysym &&
                       one.modifiers == other.modifiers
                   ? 1
                   : 0;
    }
    if (alike != 1) return false;
  }
  return true;
}
static_assert(all_differ());

const Gesture* make_gesture(Trigger trigger, unsigned long keysym, Modifiers modifiers,
                            const GesturePlace& place) {
  for (const Gesture& gesture : gestures) {
    if (gesture.trigger != trigger || gesture.keysym != keysym || gesture.modifiers != modifiers) {
      continue;
    }
    if (gesture.needs == Needs::pane && place.pane < 0) return nullptr;
    if (!gesture.keeps_reading) take_reading_away();
    gesture.act(place, gesture.amount);
    return &gesture;
  }
  return nullptr;
}

}  // namespace

std::span<const Gesture> all_gestures() {
  return gestures;
}

const Gesture* gesture_of_wheel(const PointerEvent& event) {
  const Trigger trigger = event.columns < 0   ? Trigger::tilt_left
                          : event.columns > 0 ? Trigger::tilt_right
                          : event.lines < 0   ? Trigger::wheel_up
                                              : Trigger::wheel_down;
  const bool tilts = event.columns != 0;
  const Modifiers held = tilts ? Modifiers::none : event.modifiers & (shift | control);
  return make_gesture(trigger, 0, held, {pane_at(event.x, event.y), event.x, event.y, event.time});
}

const Gesture* gesture_of_key(const InputEvent& key) {
  return make_gesture(Trigger::key, key.keysym, key.modifiers & control,
                      {pane_at(key.x, key.y), key.x, key.y, key.time});
}

int pane_at(int x, int y) {
  for (int pane = 0; pane < pane_count; ++pane) {
    if (band_of(pane).contains(x, y)) return pane;
  }
  return -1;
}

}  // namespace torve
