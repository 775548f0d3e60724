// Half-open rectangles in pixels: columns x1 .. x2 - 1, rows y1 .. y2 - 1.
// A rectangle without a pixel (x1 >= x2 or y1 >= y2) is empty, whatever its corners.
#pragma once

#include <algorithm>

namespace torve {

struct Rect {
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;

  [[nodiscard]] constexpr bool empty() const { return x1 >= x2 || y1 >= y2; }
  [[nodiscard]] constexpr int width() const { return x2 - x1; }
  [[nodiscard]] constexpr int height() const { return y2 - y1; }
  [[nodiscard]] constexpr bool contains(int x, int y) const {
    return x >= x1 && x < x2 && y >= y1 && y < y2;
  }
  constexpr bool operator==(const Rect&) const = default;
};

/// The pixels that lie in both.
[[nodiscard]] constexpr Rect intersection(const Rect& a, const Rect& b) {
  return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}

/// The smallest rectangle that holds both; an empty one adds nothing.
[[nodiscard]] constexpr Rect bounding_box(const Rect& a, const Rect& b) {
  if (a.empty()) return b;
  if (b.empty()) return a;
  return {std::min(a.x1, b.x1), std::min(a.y1, b.y1), std::max(a.x2, b.x2), std::max(a.y2, b.y2)};
}

}  // namespace torve
