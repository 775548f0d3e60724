// Double presses and drags, recognised from presses, motions and releases.
//
// A double press is two presses on one row at most 3 pixels apart, the second within 500 ms of the
// first by the server's clock, with a release between. A drag is a pointer 8 pixels or more to the
// right of where the press began that is still going on, on the same row.
//
// Two words go with it, as the engine's test for both gestures wants them. They count rounds of
// 100 microseconds, but an event counts at least 51 of them: the server has debounced it, and
// clicks that a program sends may be shorter than any round.
#pragma once

#include <cstdint>

namespace torve {

inline constexpr int double_press_window = 500;  // milliseconds
inline constexpr int double_press_slack = 3;     // pixels
inline constexpr int drag_distance = 8;          // pixels
inline constexpr int rounds_per_millisecond = 10;
inline constexpr int rounds_of_an_event = 51;
inline constexpr int double_press_threshold = 50;  // rounds after the release

enum class PointerAction { press, motion, release };
enum class Gesture { none, double_press, drag };

/// `row` tells rows of text apart; -1 stands for any place outside the text, where no gesture
/// begins. `time` is the server's clock, milliseconds; it may wrap round.
struct PointerEvent {
  PointerAction action = PointerAction::press;
  int x = 0, y = 0;
  int row = -1;
  std::uint32_t time = 0;
};

class ClickGestures {
 public:
  /// What the gesture is that this event completes.
  Gesture on_event(const PointerEvent& event);

  /// The present press is over, although its release was not seen here.
  void missed_release();

  /// What has been pressed so far is not the beginning of a double press.
  void forget();

  /// The press that began what is going on.
  [[nodiscard]] const PointerEvent& first_press() const { return first_; }

  int press_rounds = 0;    // since the first press, 0: there is none
  int release_rounds = 0;  // since its release, 0: not yet

 private:
  void advance(std::uint32_t time, bool is_edge);
  Gesture pressed(const PointerEvent& event);

  PointerEvent first_;
  std::uint32_t last_time_ = 0;
  bool held_ = false;
};

}  // namespace torve
