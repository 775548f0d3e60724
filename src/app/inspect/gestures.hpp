// What the wheel and the keys do over a pane: one table.
#pragma once

#include <cstdint>
#include <span>

#include "display/input.hpp"

namespace torve {

/// Where and when a gesture was made.
struct GesturePlace {
  int pane = -1;  // 0 .. 2, or -1: over none
  int x = 0, y = 0;
  std::uint32_t time = 0;  // milliseconds
};

enum class Trigger { wheel_up, wheel_down, tilt_left, tilt_right, key };

/// Whether a gesture is for the pane under the pointer alone.
enum class Needs { pane, nothing };

struct Gesture {
  Trigger trigger = Trigger::key;
  unsigned long keysym = 0;               // of a key
  Modifiers modifiers = Modifiers::none;  // Shift and Control of the wheel; of keys Control alone
  Needs needs = Needs::pane;
  void (*act)(const GesturePlace& place, double amount) = nullptr;
  double amount = 0;
  bool keeps_reading = false;  // what is read under the pointer stays meanwhile
  bool reads_again = true;     // and is read anew afterwards, if it was before
};

/// All of them; no two answer to the same.
[[nodiscard]] std::span<const Gesture> all_gestures();

/// Makes the gesture that an event of the wheel, or a key, stands for; null when it stands for
/// none.
const Gesture* gesture_of_wheel(const PointerEvent& event);
const Gesture* gesture_of_key(const InputEvent& key);

/// The pane 0 .. 2 whose band, below the title and left and right of the curve, too, holds a
/// position of the screen; -1 for none.
[[nodiscard]] int pane_at(int x, int y);

}  // namespace torve
