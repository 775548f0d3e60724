#include "dialogs/click_gestures.hpp"

#include <cstdlib>

namespace torve {

Gesture ClickGestures::pressed(const PointerEvent& event, int row) {
  const bool again = begun_ && released_ && row == first_row_ &&
                     event.time - first_.time <= double_press_window &&
                     std::abs(event.x - first_.x) <= double_press_slack &&
                     std::abs(event.y - first_.y) <= double_press_slack;
  released_ = false;
  if (again) return Gesture::double_press;
  first_ = event;
  first_row_ = row;
  begun_ = row >= 0;
  return Gesture::none;
}

Gesture ClickGestures::on_event(const PointerEvent& event, int row) {
  switch (event.action) {
    case PointerAction::press:
      return pressed(event, row);
    case PointerAction::release:
      released_ = true;
      break;
    case PointerAction::motion:
      if (!released_ && row >= 0 && row == first_row_ && event.x - first_.x >= drag_distance) {
        return Gesture::drag;
      }
      break;
    case PointerAction::wheel:
    case PointerAction::hover:
    case PointerAction::leave:
    case PointerAction::none:
      break;
  }
  return Gesture::none;
}

}  // namespace torve
