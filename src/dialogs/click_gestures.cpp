#include "dialogs/click_gestures.hpp"

#include <algorithm>
#include <cstdlib>

namespace torve {

namespace {

constexpr int last_round = double_press_window * rounds_per_millisecond + 1;

int rounds_between(std::uint32_t from, std::uint32_t to) {
  // Beyond the window only "too late" matters, and the product stays small.
  const std::uint32_t elapsed = std::min<std::uint32_t>(to - from, double_press_window + 1);
  return static_cast<int>(elapsed) * rounds_per_millisecond;
}

}  // namespace

// Rounding an event up must not make the window shorter than its milliseconds say.
void ClickGestures::advance(std::uint32_t time, bool is_edge) {
  const int elapsed = rounds_between(last_time_, time);
  const int step = is_edge ? std::max(rounds_of_an_event, elapsed) : elapsed;
  last_time_ = time;
  if (press_rounds == 0) return;
  const int since_first = rounds_between(first_.time, time) + 1;
  if (since_first > last_round) {
    forget();
    return;
  }
  press_rounds = std::clamp(press_rounds + step, since_first, last_round);
  if (release_rounds > 0) release_rounds += step;
}

Gesture ClickGestures::pressed(const PointerEvent& event) {
  held_ = true;
  const bool again = release_rounds >= double_press_threshold && event.row == first_.row &&
                     std::abs(event.x - first_.x) <= double_press_slack &&
                     std::abs(event.y - first_.y) <= double_press_slack;
  if (again) return Gesture::double_press;
  first_ = event;
  press_rounds = event.row >= 0 ? 1 : 0;
  release_rounds = 0;
  return Gesture::none;
}

Gesture ClickGestures::on_event(const PointerEvent& event) {
  advance(event.time, event.action != PointerAction::motion);
  switch (event.action) {
    case PointerAction::press:
      return pressed(event);
    case PointerAction::release:
      held_ = false;
      if (press_rounds >= rounds_of_an_event && release_rounds == 0) release_rounds = 1;
      return Gesture::none;
    case PointerAction::motion:
      break;
  }
  const bool drag =
      held_ && first_.row >= 0 && event.row == first_.row && event.x - first_.x >= drag_distance;
  return drag ? Gesture::drag : Gesture::none;
}

void ClickGestures::missed_release() {
  on_event({.action = PointerAction::release, .time = last_time_});
}

void ClickGestures::forget() {
  press_rounds = release_rounds = 0;
}

}  // namespace torve
