#include "draw/lines.hpp"

#include <algorithm>
#include <cstdint>

#include "base/rect.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "eps/eps_stream.hpp"

namespace torve {

namespace {

using Wide = std::int64_t;

// Coordinates beyond any screen are brought nearer, so that products of differences fit.
constexpr int farthest = 1 << 30;

int near(int coordinate) {
  return std::clamp(coordinate, -farthest, farthest);
}

// Walks from `first` to `last` as far as the screen (`limit`) goes and hands over the runs of steps
// whose other coordinate is the same: draw_run(start, length, other).
template <typename OtherAt, typename DrawRun>
void walk(int first, int last, int limit, OtherAt other_at, DrawRun draw_run) {
  const int end = std::min(last, limit - 1) + 1;
  for (int at = std::max(first, 0); at < end;) {
    const int start = at;
    const int other = other_at(at);
    while (++at < end && other_at(at) == other) {
    }
    draw_run(start, at - start, other);
  }
}

int on_slope(Wide distance, Wide rise, Wide run, int origin) {
  const Wide position = distance * rise / run + origin;
  return static_cast<int>(std::clamp<Wide>(position, -1, screen_width));
}

}  // namespace

void draw_line(int x1, int y1, int x2, int y2, int colour, int target) {
  if (target == target_screen) {
    draw_line1(x1, y1, x2, y2, colour);
  } else {
    write_eps_segment(x1, y1, x2, y2, Y1_max - Y1_min);
  }
}

void draw_line1(int far_x1, int far_y1, int far_x2, int far_y2, int colour) {
  const int x1 = near(far_x1);
  const int y1 = near(far_y1);
  const int x2 = near(far_x2);
  const int y2 = near(far_y2);
  const auto [left, right] = std::minmax(x1, x2);
  const auto [top, bottom] = std::minmax(y1, y2);
  const Rect box = {std::max(left, 0), std::max(top, 0), std::min(right, screen_width - 1) + 1,
                    std::min(bottom, screen_height - 1) + 1};
  if (box.empty()) return;
  const std::uint32_t pixel = colour_pixel(colour);
  mark_dirty(box);
  if (left == right || top == bottom) {
    fillbox3(box.x1, box.y1, box.width(), box.height(), pixel);
    return;
  }
  const Wide dx = Wide{x2} - x1;
  const Wide dy = Wide{y2} - y1;
  if (Wide{bottom} - top > Wide{right} - left) {
    walk(
        top, bottom, screen_height, [&](int y) { return on_slope(Wide{y} - y1, dx, dy, x1); },
        [&](int y, int rows, int x) { fillbox3(x, y, 1, rows, pixel); });
  } else {
    walk(
        left, right, screen_width, [&](int x) { return on_slope(Wide{x} - x1, dy, dx, y1); },
        [&](int x, int columns, int y) { fillbox3(x, y, columns, 1, pixel); });
  }
}

}  // namespace torve
