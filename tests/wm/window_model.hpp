// A second opinion on the window layer: an explicit list of pictures, painted bottom to top.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <vector>

#include "base/rect.hpp"
#include "display/screen_image.hpp"
#include "wm/wd_object.hpp"

namespace torve {

/// What an object of the test kind shows at (x, y) of itself: never two equal ones.
inline std::uint32_t picture_pixel(int id, int version, int x, int y) {
  return static_cast<std::uint32_t>(id * 0x050301 + version * 0x1D0B07 + x * 0x0101 + y * 0x3) &
         0xFFFFFF;
}

struct WindowModel {
  std::vector<std::uint32_t> base;  // the canvas without window objects
  std::vector<int> stack;           // what is on it, bottom to top
  std::map<int, int> version;       // of each object's picture

  void put_on_top(int id) {
    take_off(id);
    stack.push_back(id);
  }
  void take_off(int id) { std::erase(stack, id); }
  [[nodiscard]] bool shows(int id) const {
    return std::find(stack.begin(), stack.end(), id) != stack.end();
  }

  /// The topmost object at a point; 0 for none.
  [[nodiscard]] int at(int x, int y) const {
    for (auto id = stack.rbegin(); id != stack.rend(); ++id) {
      if (rect_of(wd(*id)).contains(x, y)) return *id;
    }
    return 0;
  }

  /// The whole screen as it should be.
  [[nodiscard]] std::vector<std::uint32_t> picture() const {
    std::vector<std::uint32_t> pixels = base;
    for (const int id : stack) {
      const Rect rect = rect_of(wd(id));
      for (int y = rect.y1; y < rect.y2; ++y) {
        for (int x = rect.x1; x < rect.x2; ++x) {
          pixels[static_cast<std::size_t>(y * screen_width + x)] =
              picture_pixel(id, version.at(id), x - rect.x1, y - rect.y1);
        }
      }
    }
    return pixels;
  }

  /// Bit i of j's over set as it should be: i is later in the list and meets j. An object that is
  /// lifted is in no set.
  [[nodiscard]] OverSet over(int id) const {
    OverSet set = {};
    const auto self = std::find(stack.begin(), stack.end(), id);
    for (auto above = self; above != stack.end(); ++above) {
      if (*above == id || !is_eligible(wd(*above)) ||
          intersection(rect_of(wd(*above)), rect_of(wd(id))).empty())
        continue;
      set[static_cast<std::size_t>((*above - 1) / 32)] |= 1U << ((*above - 1) % 32);
    }
    return set;
  }
};

}  // namespace torve
