#include "draw/plane_copy.hpp"

#include <algorithm>

namespace torve {

namespace {

void copy_plane_row(std::uint8_t* target, int x, int width, const std::uint8_t* source) {
  for (int column = 0; column < width; column += 8) {
    const int pixels = std::min(8, width - column);
    put_8_bits(target, x + column, reversed_8_bits(source[column / 8]), 0xFFU >> (8 - pixels));
  }
}

}  // namespace

void draw_buf2c(int x, int y, int width, int height, const PlaneLayout& layout,
                std::span<const std::uint8_t> buffer) {
  if (!have_screen_image() || width <= 0) return;
  const std::size_t row_bytes =
      static_cast<std::size_t>(layout.plane_stride) * static_cast<std::size_t>(layout.planes - 1) +
      static_cast<std::size_t>((width + 7) / 8);
  for (int row = 0; row < height; ++row) {
    const std::size_t start =
        static_cast<std::size_t>(row) * static_cast<std::size_t>(layout.row_stride);
    if (start + row_bytes > buffer.size()) break;
    if (y + row < 0 || y + row >= screen_height) continue;
    std::uint8_t* target = screen_block() + (y + row) * plane_line_bytes;
    for (int plane = 0; plane < layout.planes; ++plane) {
      copy_plane_row(target + static_cast<std::size_t>(plane) * plane_bytes, x, width,
                     buffer.data() + start + plane * layout.plane_stride);
    }
  }
  mark_dirty({x, y, x + width, y + height});
}

}  // namespace torve
