// What shows where figures can be grabbed, painted once more.
#pragma once

#include "diagram/figure_painter.hpp"
#include "support/screen.hpp"
#include "wm/stacking.hpp"

namespace torve {

inline void paint_block(Pixels& pixels, int x1, int x2, int y1, int y2, std::uint32_t colour) {
  for (int y = y1; y <= y2; ++y) {
    for (int x = x1; x <= x2; ++x)
      set_pixel(pixels, x, y, colour);
  }
}

/// Blue at both points and in the middle, red beside the head where a menu opens, a green dot where
/// an arc holds on.
inline void paint_handles(Pixels& pixels, const Vobj& f) {
  constexpr std::uint32_t blue = 0x0000FF, red = 0xFF0000, green = 0x00FF00;
  using enum FigureKind;
  const int rows = std::min(std::max((f.y2 - f.y1) / 10, 2), 3);
  if (f.kind != arrow && f.kind != label && f.kind != vcircle) {
    paint_block(pixels, f.x1 - 4, f.x1 - 2, f.y1, f.y1 + rows - 1, red);
    paint_block(pixels, f.x1 + 2, f.x1 + 4, f.y1, f.y1 + rows - 1, red);
  }
  paint_block(pixels, f.x1 - 1, f.x1 + 1, f.y1, f.y1 + rows - 1, blue);
  paint_block(pixels, f.x2 - 1, f.x2 + 1, f.y2 - rows + 1, f.y2, blue);
  std::vector<FigureAnchor> points = {{f.x1, f.y1}};
  points.insert(points.end(), f.bends.begin(), f.bends.end());
  points.push_back({f.x2, f.y2});
  const std::size_t piece = (f.bends.size() + 1 - 1) / 2;
  const int x = (points[piece].x + points[piece + 1].x) / 2;
  const int y = (points[piece].y + points[piece + 1].y) / 2;
  paint_block(pixels, x - 1, x + 1, y - 1, y + 1, blue);
  for (const auto& [bend_x, bend_y] : f.bends)
    paint_block(pixels, bend_x - 1, bend_x + 1, bend_y - 1, bend_y + 1, blue);
  for (const auto& [hold, end_x, end_y] :
       {std::tuple(f.from, f.x1, f.y1), std::tuple(f.to, f.x2, f.y2)}) {
    if (hold.figure == 0 || f.kind != arc) continue;
    for (const int row : {-2, -1, 0, 1, 2}) {
      const int reach = row * row == 4 ? 1 : 2;
      paint_block(pixels, end_x - reach, end_x + reach, end_y + row, end_y + row, green);
    }
  }
}

/// What differs from the figures with their handles, where no window lies above them.
inline std::string handle_fault(Pixels wanted) {
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if (is_seen(*figure)) paint_handles(wanted, *figure);
  }
  const Pixels shown = all_pixels();
  for (int y = 0; y < 585; ++y) {
    for (int x = 0; x < 680; ++x) {
      bool is_covered = false;
      for (int id = 1; id <= wd_object_count && !is_covered; ++id)
        is_covered = wd(id).painted && rect_of(wd(id)).contains(x, y);
      const auto at = static_cast<std::size_t>(y * 800 + x);
      if (!is_covered && shown[at] != wanted[at])
        return "at " + std::to_string(x) + ", " + std::to_string(y);
    }
  }
  return "";
}

}  // namespace torve
