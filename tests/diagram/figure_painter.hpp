// A painter that knows only a base picture and the list of figures.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "base/rect.hpp"
#include "diagram/drawing.hpp"
#include "diagram/label_points.hpp"

namespace torve {

using Pixels = std::vector<std::uint32_t>;

inline void set_pixel(Pixels& pixels, int x, int y, std::uint32_t value) {
  if (Rect{0, 0, 680, 599}.contains(x, y)) pixels[static_cast<std::size_t>(y * 800 + x)] = value;
}

// The figure's pixels, step by step.
inline void paint(Pixels& pixels, const Vobj& figure) {
  const FigurePlace place = place_of(figure);
  for (const FigureSegment& part : figure_segments(figure.kind, place)) {
    const VectorSegment& s = part.segment;
    const int n = std::max(std::abs(s.x2 - s.x1), std::abs(s.y2 - s.y1));
    for (int i = 0; i <= n && i < 3000; ++i) {
      if ((i == 0 && s.without_first) || (i == n && s.without_last)) continue;
      const std::size_t slot = static_cast<std::size_t>(i - (s.without_first ? 1 : 0));
      if (slot >= part.slot_limit || part.first_slot + slot >= figure.saved.size()) continue;
      set_pixel(pixels, s.x1 + (s.x2 - s.x1) * i / std::max(n, 1),
                s.y1 + (s.y2 - s.y1) * i / std::max(n, 1), figure.colour);
    }
  }
  if (figure.kind == FigureKind::vcircle) {
    for (const auto& [x, y] : circle_points(place))
      set_pixel(pixels, x, y, figure.colour);
  }
  if (figure.kind == FigureKind::label) {
    for (const auto& [x, y] : label_points(figure.text, place))
      set_pixel(pixels, x, y, figure.colour);
  }
}

/// The base with the figures that are on the canvas, first to last.
inline Pixels with_figures(const Pixels& base) {
  Pixels pixels = base;
  for (const Vobj* figure = firstvobj; figure != nullptr; figure = figure->next) {
    if ((figure->phase & phase_on_canvas) != 0) paint(pixels, *figure);
  }
  return pixels;
}

}  // namespace torve
