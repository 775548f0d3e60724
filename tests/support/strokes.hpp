// The rule of lines, stroke by stroke, without a thought for speed or edges.
#pragma once

#include <algorithm>
#include <cstdlib>

namespace torve {

template <typename Put>
void for_each_point_of_line(int x1, int y1, int x2, int y2, Put put) {
  const int dx = x2 - x1, dy = y2 - y1;
  if (std::abs(dy) > std::abs(dx)) {
    for (int y = std::min(y1, y2); y <= std::max(y1, y2); ++y)
      put((y - y1) * dx / dy + x1, y);
  } else {
    for (int x = std::min(x1, x2); x <= std::max(x1, x2); ++x)
      put(x, dx == 0 ? y1 : (x - x1) * dy / dx + y1);
  }
}

}  // namespace torve
