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

// Eight pixels of a plane row from column x on, the first one in the lowest bit.
unsigned get_8_bits(const std::uint8_t* plane_row, int x) {
  const int byte = x >> 3;
  const auto at = [&](int i) { return i >= 0 && i < plane_line_bytes ? plane_row[i] : 0U; };
  return (at(byte) | at(byte + 1) << 8) >> (x & 7) & 0xFFU;
}

// Up to eight bits from bit `at` on, the first one in bit 7 of the result. No byte is touched that
// holds none of them.
unsigned get_bits(const std::uint8_t* bytes, int at, int count) {
  const int phase = at % 8;
  unsigned bits = unsigned{bytes[at / 8]} << 8U;
  if (phase + count > 8) bits |= bytes[at / 8 + 1];
  return bits << phase >> 8 & 0xFFU;
}

void put_bits(std::uint8_t* bytes, int at, unsigned bits, int count) {
  const int phase = at % 8;
  const unsigned mask = (0xFF00U >> count & 0xFFU) << 8 >> phase;
  const unsigned value = bits << 8 >> phase & mask;
  std::uint8_t& first = bytes[at / 8];
  first = static_cast<std::uint8_t>((first & ~(mask >> 8)) | value >> 8);
  if ((mask & 0xFFU) == 0) return;
  std::uint8_t& second = bytes[at / 8 + 1];
  second = static_cast<std::uint8_t>((second & ~mask) | (value & 0xFFU));
}

}  // namespace

void save_buf2c(int x, int y, int width, int height, const PlaneLayout& layout,
                std::span<std::uint8_t> buffer) {
  if (!have_screen_image() || width <= 0) return;
  const int bytes = (width + 7) / 8;
  const std::size_t row_end =
      static_cast<std::size_t>(layout.plane_stride * (layout.planes - 1) + bytes);
  for (int row = 0; row < height; ++row) {
    const std::size_t start =
        static_cast<std::size_t>(row) * static_cast<std::size_t>(layout.row_stride);
    if (start + row_end > buffer.size()) break;
    const bool visible = y + row >= 0 && y + row < screen_height;
    for (int plane = 0; plane < layout.planes; ++plane) {
      std::uint8_t* target = buffer.data() + start + plane * layout.plane_stride;
      const std::uint8_t* source = screen_block() + static_cast<std::size_t>(plane) * plane_bytes +
                                   (visible ? (y + row) * plane_line_bytes : 0);
      for (int i = 0; i < bytes; ++i) {
        target[i] = static_cast<std::uint8_t>(
            visible ? reversed_8_bits(get_8_bits(source, x + 8 * i)) : 0U);
      }
    }
  }
}

void bitcpy(std::uint8_t* target, const std::uint8_t* source, int target_bit, int source_bit,
            int count) {
  for (int done = 0; done < count; done += 8) {
    const int bits = std::min(8, count - done);
    put_bits(target, target_bit + done, get_bits(source, source_bit + done, bits), bits);
  }
}

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
