// Double presses and drags, recognised from presses, motions and releases.
//
// A double press is two presses on one row at most 3 pixels apart, the second within 500 ms of the
// first by the server's clock, with a release between. A drag is a pointer 8 pixels or more to the
// right of where the press began that is still going on, on the same row.
#pragma once

#include "display/input.hpp"

namespace torve {

inline constexpr std::uint32_t double_press_window = 500;  // milliseconds
inline constexpr int double_press_slack = 3;               // pixels
inline constexpr int drag_distance = 8;                    // pixels

enum class Gesture { none, double_press, drag };

class ClickGestures {
 public:
  /// What the gesture is that this event completes. `row` tells rows of text apart; -1 stands for
  /// any place outside the text, where no gesture begins.
  Gesture on_event(const PointerEvent& event, int row);

  /// The present press is over, although its release was not seen here.
  void missed_release() { released_ = true; }

  /// What has been pressed so far is not the beginning of a double press.
  void forget() { begun_ = false; }

 private:
  Gesture pressed(const PointerEvent& event, int row);

  PointerEvent first_;  // the press that began what is going on, and its row
  int first_row_ = -1;
  bool begun_ = false;     // it may be the first of a double press
  bool released_ = false;  // the release of the last press has come
};

}  // namespace torve
