#include "diagram/figures.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include "text/fonts.hpp"

namespace torve {

namespace {

constexpr std::size_t figure_slots = 1000;
constexpr std::size_t box_slots = 3000;
constexpr std::size_t bytes_per_slot = 4;

// A segment of a pictogram, relative to the anchor.
struct Stroke {
  int x1, y1, x2, y2;
  std::size_t byte_offset;
  bool without_first = false, without_last = false;
};

constexpr Stroke node_strokes[] = {
    {-10, 0, 10, 0, 0, false, true},
    {-10, 10, 10, 10, 80, true, false},
    {-10, 0, -10, 10, 160, true, false},
    {10, 0, 10, 10, 200, false, true},
};

constexpr Stroke nodeb_strokes[] = {
    {0, 0, 10, 0, 0, false, true},
    {0, 10, 10, 10, 80, true, false},
    {0, 0, 0, 10, 160, true, false},
    {10, 0, 10, 10, 200, false, true},
};

constexpr std::size_t lifeline_offset = 240;
constexpr int head_height = 10;

constexpr Stroke nodec_strokes[] = {
    {-5, -1, -2, -1, 0, false, true},
    {-2, -1, -2, -10, 12},
    {-2, -10, 1, -10, 52, true, true},
    {1, -10, 2, -1, 60},
    {2, -1, 8, -1, 108},
    {8, -1, 9, -3, 136},
    {9, -3, 10, -3, 148},
    {10, -3, 10, 3, 156, true, false},
    {9, 3, 10, 3, 180},
    {8, 1, 9, 3, 188},
    {2, 1, 8, 1, 200},
    {1, 10, 2, 1, 228},
    {-2, 10, 1, 10, 276, true, true},
    {-2, 1, -2, 10, 284},
    {-5, 1, -2, 1, 324, true, true},
    {-5, 1, -5, -1, 332},
};

constexpr Stroke tel_strokes[] = {
    {4, 0, 18, 0, 0},      {18, 0, 22, 4, 224},  {0, 4, 4, 0, 352},     {6, 2, 16, 2, 480},
    {2, 6, 6, 2, 640},     {16, 2, 20, 6, 768},  {0, 4, 2, 6, 896},     {20, 6, 22, 4, 960},
    {0, 10, 6, 4, 1024},   {6, 4, 16, 4, 1216},  {16, 4, 22, 10, 1376}, {22, 10, 22, 14, 1568},
    {22, 14, 0, 14, 1632}, {0, 14, 0, 10, 1984},
};

FigureSegment segment_at(const VectorSegment& segment, std::size_t first_slot, std::size_t slots) {
  return {segment, first_slot, slots > first_slot ? slots - first_slot : 0};
}

void add_strokes(std::vector<FigureSegment>& figure, std::span<const Stroke> strokes,
                 const FigurePlace& at) {
  for (const Stroke& stroke : strokes) {
    figure.push_back(segment_at({at.x1 + stroke.x1, at.y1 + stroke.y1, at.x1 + stroke.x2,
                                 at.y1 + stroke.y2, stroke.without_first, stroke.without_last},
                                stroke.byte_offset / bytes_per_slot, figure_slots));
  }
}

std::vector<FigureSegment> head_with_lifeline(std::span<const Stroke> head, const FigurePlace& at) {
  std::vector<FigureSegment> figure;
  add_strokes(figure, head, at);
  figure.push_back(segment_at({at.x1, at.y1 + head_height, at.x1, at.y2},
                              lifeline_offset / bytes_per_slot, figure_slots));
  return figure;
}

std::vector<FigureSegment> pictogram(std::span<const Stroke> strokes, const FigurePlace& at) {
  std::vector<FigureSegment> figure;
  add_strokes(figure, strokes, at);
  return figure;
}

std::size_t distance(int a, int b) {
  return static_cast<std::size_t>(std::llabs(static_cast<long long>(b) - a));
}

std::vector<FigureSegment> queue_box(const FigurePlace& at) {
  constexpr int width = 5;
  const std::size_t height = distance(at.y1, at.y2);
  const int left = at.x1 - width;
  return {
      segment_at({left, at.y1, at.x1, at.y1, false, true}, 0, figure_slots),
      segment_at({left, at.y2, at.x1, at.y2, true, false}, 5, figure_slots),
      segment_at({at.x1, at.y1, at.x1, at.y2, false, true}, 10, figure_slots),
      segment_at({left, at.y1, left, at.y2, true, false}, 10 + height, figure_slots),
  };
}

std::vector<FigureSegment> rectangle(const FigurePlace& at) {
  const std::size_t w = distance(at.x1, at.x2);
  const std::size_t h = distance(at.y1, at.y2);
  return {
      segment_at({at.x1, at.y1, at.x2, at.y1, false, true}, 0, box_slots),
      segment_at({at.x1, at.y1, at.x1, at.y2, true, false}, w, box_slots),
      segment_at({at.x2, at.y1, at.x2, at.y2, false, true}, w + h, box_slots),
      segment_at({at.x1, at.y2, at.x2, at.y2, true, false}, w + 2 * h, box_slots),
  };
}

std::vector<FigureSegment> arrow(const FigurePlace& at) {
  const ArrowHead head = arrow_head(at.x1, at.y1, at.x2, at.y2);
  return {
      segment_at({head.x_right, head.y_right, at.x2, at.y2}, 0, figure_slots),
      segment_at({head.x_left, head.y_left, at.x2, at.y2}, 20, figure_slots),
      segment_at({at.x1, at.y1, at.x2, at.y2}, 40, figure_slots),
  };
}

int truncated(double value) {
  return static_cast<int>(value);
}

}  // namespace

ArrowHead arrow_head(int x1, int y1, int x2, int y2) {
  constexpr double length = 10.0;
  constexpr double half_angle = 0.628;
  constexpr double right_angle = 1.57;
  const auto corner = [=](double along, double across) {
    return std::pair(truncated(x2 + along), truncated(y2 + across));
  };
  std::pair<int, int> right(x2, y2);
  std::pair<int, int> left(x2, y2);
  if (x2 > x1) {
    const double angle = std::atan(static_cast<double>(y2 - y1) / (x2 - x1));
    right = corner(-length * std::cos(angle + half_angle), -length * std::sin(angle + half_angle));
    left = corner(-length * std::cos(angle - half_angle), -length * std::sin(angle - half_angle));
  } else if (x2 < x1) {
    const double angle = std::atan(static_cast<double>(y2 - y1) / (x1 - x2));
    right = corner(length * std::cos(half_angle - angle), length * std::sin(half_angle - angle));
    left = corner(length * std::cos(angle + half_angle), -length * std::sin(angle + half_angle));
  } else if (y2 != y1) {
    const double angle = right_angle - half_angle;
    const double down = y2 > y1 ? 1 : -1;
    right = corner(down * length * std::cos(angle), -down * length * std::sin(angle));
    left = corner(-down * length * std::cos(angle), -down * length * std::sin(angle));
  }
  return {right.first, right.second, left.first, left.second};
}

bool shows(FigureKind kind, const FigurePlace& place) {
  switch (kind) {
    case FigureKind::node:
    case FigureKind::nodeb:
    case FigureKind::nodec:
    case FigureKind::queue:
      return place.y1 != place.y2;
    case FigureKind::vcircle:
      return true;
    default:
      return place.x1 != place.x2 || place.y1 != place.y2;
  }
}

std::vector<FigureSegment> figure_segments(FigureKind kind, const FigurePlace& place) {
  if (!shows(kind, place)) return {};
  switch (kind) {
    case FigureKind::arrow:
      return arrow(place);
    case FigureKind::node:
      return head_with_lifeline(node_strokes, place);
    case FigureKind::nodeb:
      return head_with_lifeline(nodeb_strokes, place);
    case FigureKind::nodec:
      return pictogram(nodec_strokes, place);
    case FigureKind::queue:
      return queue_box(place);
    case FigureKind::vline:
      return {segment_at({place.x1, place.y1, place.x2, place.y2}, 0, figure_slots)};
    case FigureKind::vbox:
      return rectangle(place);
    case FigureKind::tel:
      return pictogram(tel_strokes, place);
    default:
      return {};
  }
}

std::vector<PixelPosition> circle_points(const FigurePlace& place) {
  const double radius = std::abs(place.x2 - place.x1) / 2.0;
  const double cx = (place.x1 + place.x2) / 2.0;
  const double cy = (place.y1 + place.y2) / 2.0;
  std::vector<PixelPosition> points;
  for (double t = 0; t < 6.28; t += 0.1) {
    points.push_back(
        {truncated(radius * std::cos(t) + cx + 0.5), truncated(radius * std::sin(t) + cy + 0.5)});
  }
  return points;
}

std::vector<PixelPosition> label_points(const char* text, const FigurePlace& place) {
  constexpr int glyph_width = 8;
  std::vector<PixelPosition> points;
  int x = place.x1;
  for (int i = 0; i < label_text_length && text[i] != 0; ++i) {
    const std::uint8_t* rows = glyph_rows2(text[i]);
    for (int row = 0; row < ysizeb; ++row) {
      for (int column = 0; column < glyph_width; ++column) {
        if ((rows[row] & (0x80U >> column)) != 0) points.push_back({x + column, place.y1 + row});
      }
    }
    const int advance = chdist2 && text[i + 1] != 0 ? get_xoff(chdist2, text, i) : 0;
    x += advance != 0 ? advance : csb;
  }
  return points;
}

}  // namespace torve
