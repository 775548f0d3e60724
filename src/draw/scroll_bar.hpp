// The geometry of scroll bars: where along a bar its arrows, its track and its thumb lie.
//
// All distances are pixels from the window's upper left corner, down for a vertical bar and to the
// right for a horizontal one. Positions on a bar are fractions in 1/128 of the scrolled range.
//
//     0        11        20                                                       window's end
//     | box    | arrow   | track, with the thumb                      | arrow | frame or box |
#pragma once

#include <algorithm>

namespace torve {

inline constexpr int scroll_full_scale_bits = 7;
inline constexpr int scroll_full_scale = 1 << scroll_full_scale_bits;

inline constexpr int scroll_bar_width = 11;  // with its frame lines
inline constexpr int scroll_bar_middle = 5;  // across the bar
inline constexpr int scroll_arrow_start = 11;
inline constexpr int scroll_arrow_size = 9;
inline constexpr int scroll_thumb_size = 5;   // of the thumb, its highlight included
inline constexpr int scroll_thumb_inset = 3;  // from the bar's edge, across it

/// The track of one bar.
struct ScrollTrack {
  int start = 0;   // first pixel behind the first arrow
  int end = 0;     // behind the last pixel before the second arrow
  int margin = 0;  // that the thumb keeps from the second arrow

  /// The pixel of the track nearest to one beside it.
  [[nodiscard]] constexpr int nearest(int at) const {
    return std::clamp(at, start, std::max(start, end - 1));
  }
  /// The thumb's first pixel at a fraction, and how far it can go.
  [[nodiscard]] constexpr int thumb_start() const {
    constexpr int margin_before = 2;
    return start + margin_before;
  }
  [[nodiscard]] constexpr int thumb_travel() const {
    return end - margin - scroll_thumb_size - thumb_start();
  }
  [[nodiscard]] constexpr int thumb_at(int fraction) const {
    return thumb_start() + ((fraction * thumb_travel()) >> scroll_full_scale_bits);
  }
  /// The fraction at which the middle of the thumb is nearest to a pixel.
  [[nodiscard]] constexpr int fraction_at(int at) const {
    const int middle = thumb_start() + scroll_thumb_size / 2;
    return std::clamp((at - middle) * scroll_full_scale / std::max(1, thumb_travel()), 0,
                      scroll_full_scale);
  }
};

/// The tracks of a window's bars. A vertical bar ends at the frame, a horizontal one at the close
/// box.
[[nodiscard]] constexpr ScrollTrack vertical_track(int height) {
  constexpr int frame = 1;
  return {.start = scroll_arrow_start + scroll_arrow_size,
          .end = height - frame - scroll_arrow_size,
          .margin = 3};
}
[[nodiscard]] constexpr ScrollTrack horizontal_track(int width) {
  constexpr int close_box = 11;
  return {.start = scroll_arrow_start + scroll_arrow_size,
          .end = width - close_box - scroll_arrow_size,
          .margin = 2};
}

// What is drawn is a contract: a thumb begins 22 pixels from the corner and travels over what the
// rows between the first and the last exceed 39 by, and the width 49.
static_assert(vertical_track(100).thumb_start() == 22 && horizontal_track(100).thumb_start() == 22);
static_assert(vertical_track(100).thumb_travel() == 100 - 1 - 39);
static_assert(horizontal_track(100).thumb_travel() == 100 - 49);

}  // namespace torve
