#include "draw/rectangles.hpp"

#include <cstring>

#include "base/rect.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "draw/pixels.hpp"

namespace torve {

namespace {

// The columns of a rectangle as the bytes of a plane row: a mask for the first and the last byte
// (the same byte when there is only one) and whole bytes between them.
struct ColumnSpan {
  int first_byte, last_byte;
  unsigned first_mask, last_mask;

  explicit ColumnSpan(const Rect& rect)
      : first_byte(rect.x1 / 8),
        last_byte((rect.x2 - 1) / 8),
        first_mask(0xFFU << (rect.x1 & 7) & 0xFFU),
        last_mask(0xFFU >> (7 - ((rect.x2 - 1) & 7))) {
    if (first_byte == last_byte) first_mask = last_mask = first_mask & last_mask;
  }
};

void set_bits(std::uint8_t& byte, unsigned mask, unsigned value) {
  byte = static_cast<std::uint8_t>((byte & ~mask) | (value & mask));
}

void fill_plane(std::uint8_t* plane, const Rect& rect, const ColumnSpan& span, unsigned value) {
  std::uint8_t* first = plane + rect.y1 * plane_line_bytes + span.first_byte;
  const std::uint8_t* end = plane + rect.y2 * plane_line_bytes;
  const int bytes_behind = span.last_byte - span.first_byte;
  if (bytes_behind == 0) {
    for (; first < end; first += plane_line_bytes)
      set_bits(*first, span.first_mask, value);
    return;
  }
  for (; first < end; first += plane_line_bytes) {
    set_bits(first[0], span.first_mask, value);
    std::memset(first + 1, static_cast<int>(value), static_cast<std::size_t>(bytes_behind - 1));
    set_bits(first[bytes_behind], span.last_mask, value);
  }
}

void fill(const Rect& wanted, std::uint32_t pixel) {
  const Rect rect = intersection(wanted, whole_screen);
  if (rect.empty() || !have_screen_image()) return;
  const ColumnSpan span(rect);
  std::uint8_t* plane = screen_block();
  for (int bit = screen_planes - 1; bit >= 0; --bit, plane += plane_bytes) {
    fill_plane(plane, rect, span, (pixel >> bit & 1U) != 0 ? 0xFFU : 0);
  }
}

// Far edges that int cannot hold lie beyond the screen anyway.
Rect box(int x, int y, int width, int height) {
  const auto far_edge = [](int from, int size) {
    return from > 0 && size > 0x7FFFFFFF - from ? 0x7FFFFFFF : from + size;
  };
  if (width <= 0 || height <= 0) return {};
  return {x, y, far_edge(x, width), far_edge(y, height)};
}

}  // namespace

void clearwin(int x1, int y1, int x2, int y2, int colour) {
  clear_win1(x1, y1, x2, y2, colour_pixel(colour));
}

int clear_win1(int x1, int y1, int x2, int y2, std::uint32_t pixel) {
  const Rect rect = {x1, y1, x2, y2};
  fill(rect, pixel);
  mark_dirty(rect);
  return 1;
}

void clear_win(int x1, int y1, int x2, int y2, int colour) {
  const Rect rect = intersection({x1, y1, x2, y2}, whole_screen);
  for (int y = rect.y1; y < rect.y2; ++y) {
    for (int x = rect.x1; x < rect.x2; ++x)
      drawpixel(x, y, colour);
  }
}

void clearwin_c(int x1, int y1, int x2, int y2, int colour) {
  clear_win(x1, y1, x2, y2, first_colour_copy + colour);
}

void fillbox2(int x, int y, int width, int height, std::uint32_t pixel) {
  fillbox3(x, y, width, height, pixel);
  mark_dirty(box(x, y, width, height));
}

void fillbox3(int x, int y, int width, int height, std::uint32_t pixel) {
  fill(box(x, y, width, height), pixel);
}

void drawcursor(int x, int y, int colour, int cells, int height) {
  fillbox2(x, y, 8 * cells, height, colour_pixel(colour));
}

}  // namespace torve
