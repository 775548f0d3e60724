// A painter that knows only a base picture and where figures stand. What they look like is written
// down here once more, stroke by stroke.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "base/rect.hpp"
#include "diagram/model/vobj.hpp"
#include "text/fonts.hpp"

namespace torve {

using Pixels = std::vector<std::uint32_t>;

inline void set_pixel(Pixels& pixels, int x, int y, std::uint32_t value) {
  if (Rect{0, 0, 680, 599}.contains(x, y)) pixels[static_cast<std::size_t>(y * 800 + x)] = value;
}

struct Line {
  int x1, y1, x2, y2;
};
using Lines = std::vector<Line>;

// Relative to the first point.
inline const Lines crossing_shape = {
    {-5, -1, -2, -1}, {-2, -1, -2, -10}, {-2, -10, 1, -10}, {1, -10, 2, -1},
    {2, -1, 8, -1},   {8, -1, 9, -3},    {9, -3, 10, -3},   {10, -3, 10, 3},
    {9, 3, 10, 3},    {8, 1, 9, 3},      {2, 1, 8, 1},      {1, 10, 2, 1},
    {-2, 10, 1, 10},  {-2, 1, -2, 10},   {-5, 1, -2, 1},    {-5, -1, -5, 1}};
inline const Lines telephone_shape = {
    {4, 0, 18, 0},   {18, 0, 22, 4}, {0, 4, 4, 0},    {6, 2, 16, 2},   {2, 6, 6, 2},
    {16, 2, 20, 6},  {0, 4, 2, 6},   {20, 6, 22, 4},  {0, 10, 6, 4},   {6, 4, 16, 4},
    {16, 4, 22, 10}, {0, 14, 0, 10}, {22, 14, 0, 14}, {22, 10, 22, 14}};

inline Lines frame(int x1, int y1, int x2, int y2) {
  return {{x1, y1, x2, y1}, {x1, y2, x2, y2}, {x1, y1, x1, y2}, {x2, y1, x2, y2}};
}

// The shaft and two strokes of ten pixels, 0.628 rad (36 degrees) beside the way back.
inline Lines arrow_lines(int x1, int y1, int x2, int y2) {
  const double dx = x1 - x2, dy = y1 - y2, unit = 10 / std::hypot(dx, dy);
  Lines lines = {{x1, y1, x2, y2}};
  for (const double turn : {-0.628, 0.628}) {
    const double across = unit * (dx * std::cos(turn) - dy * std::sin(turn));
    const double down = unit * (dx * std::sin(turn) + dy * std::cos(turn));
    lines.push_back({static_cast<int>(x2 + across), static_cast<int>(y2 + down), x2, y2});
  }
  return lines;
}

// From bend to bend; the last piece that is one is an arrow.
inline Lines arc_lines(const Vobj& f) {
  std::vector<FigureAnchor> points = {{f.x1, f.y1}};
  points.insert(points.end(), f.bends.begin(), f.bends.end());
  points.push_back({f.x2, f.y2});
  Lines lines;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const auto [x1, y1] = points[i - 1];
    const auto [x2, y2] = points[i];
    if (x1 != x2 || y1 != y2) lines.push_back({x1, y1, x2, y2});
  }
  if (lines.empty()) return lines;
  const Line last = lines.back();
  for (const Line& stroke : arrow_lines(last.x1, last.y1, last.x2, last.y2))
    lines.push_back(stroke);
  return lines;
}

inline Lines lines_of(const Vobj& f) {
  const int x1 = f.x1, y1 = f.y1, x2 = f.x2, y2 = f.y2;
  Lines lines;
  const auto at_first = [&](const Lines& shape) {
    for (const Line& s : shape)
      lines.push_back({x1 + s.x1, y1 + s.y1, x1 + s.x2, y1 + s.y2});
  };
  using enum FigureKind;
  if (f.kind == node || f.kind == nodeb) {
    lines = {{x1, y1 + 10, x1, y2}};
    at_first(frame(f.kind == node ? -10 : 0, 0, 10, 10));
  }
  if (f.kind == nodec) at_first(crossing_shape);
  if (f.kind == tel) at_first(telephone_shape);
  if (f.kind == queue) {  // has room for 990 pixels of its sides, the left one comes last
    const int height = std::abs(y2 - y1), shown = std::min(height, 990 - height);
    lines = frame(x1 - 5, y1, x1, y2);
    lines[2].y2 = y2 > y1 ? y1 + shown : y1 - shown;
    if (shown < height) ++lines[1].x1;  // the corner belongs to that side
  }
  if (f.kind == vbox) lines = frame(x1, y1, x2, y2);
  if (f.kind == vline) lines = {{x1, y1, x2, y2}};
  if (f.kind == arc) lines = arc_lines(f);
  if (f.kind == arrow) lines = arrow_lines(x1, y1, x2, y2);
  return lines;
}

inline void paint_line(Pixels& pixels, const Line& s, std::uint32_t colour) {
  const int n = std::max({std::abs(s.x2 - s.x1), std::abs(s.y2 - s.y1), 1});
  for (int i = 0; i <= n; ++i)
    set_pixel(pixels, s.x1 + (s.x2 - s.x1) * i / n, s.y1 + (s.y2 - s.y1) * i / n, colour);
}

inline void paint_circle(Pixels& pixels, const Vobj& f) {
  const double radius = std::abs(f.x1 - f.x2) / 2.0;
  for (double angle = 0; angle < 6.28; angle += 0.1) {
    set_pixel(pixels, static_cast<int>(radius * std::cos(angle) + (f.x1 + f.x2 + 1) / 2.0),
              static_cast<int>(radius * std::sin(angle) + (f.y1 + f.y2 + 1) / 2.0), f.colour);
  }
}

inline void paint_text(Pixels& pixels, const Vobj& f) {
  int left = f.x1;
  for (int i = 0; i < 20 && f.text[i] != 0; ++i) {
    for (int bit = 0; bit < 80; ++bit) {  // ten rows of eight
      if ((glyph_rows2(f.text[i])[bit / 8] << bit % 8 & 0x80) != 0) {
        set_pixel(pixels, left + bit % 8, f.y1 + bit / 8, f.colour);
      }
    }
    const int advance = f.text[i + 1] != 0 ? get_xoff(chdist2, f.text, i) : 0;
    left += advance != 0 ? advance : 8;
  }
}

inline void paint(Pixels& pixels, const Vobj& f) {
  using enum FigureKind;
  const bool stands = f.kind == node || f.kind == nodeb || f.kind == nodec || f.kind == queue;
  if (f.kind == vcircle) return paint_circle(pixels, f);
  if (f.y1 == f.y2 && (stands || f.x1 == f.x2) && f.bends.empty()) return;
  if (f.kind == FigureKind::label) return paint_text(pixels, f);
  for (const Line& line : lines_of(f))
    paint_line(pixels, line, f.colour);
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
