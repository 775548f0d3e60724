// Copies between plane buffers and the screen image.
//
// A plane buffer holds a picture row by row; a row is P plane rows one after another, plane 0 (the
// most significant bit of the pixel values) first. A plane row is w / 8 + 1 bytes with the
// leftmost pixel in the most significant bit: the opposite of the screen image's bit order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "display/screen_image.hpp"

namespace torve {

/// Bytes of a plane row of `width` pixels.
[[nodiscard]] constexpr int plane_row_bytes(int width) {
  return width / 8 + 1;
}

/// Puts eight pixels of one plane at column x of a plane row of the screen: bit i of `bits` goes to
/// column x + i where bit i of `cover` is set. Columns outside the screen are left out.
inline void put_8_bits(std::uint8_t* plane_row, int x, unsigned bits, unsigned cover) {
  const int byte = x >> 3;
  const int phase = x & 7;
  for (int i = 0; i < 2; ++i) {
    const unsigned part = i == 0 ? cover << phase & 0xFFU : cover << phase >> 8;
    const unsigned value = i == 0 ? bits << phase : bits << phase >> 8;
    if (part == 0 || byte + i < 0 || byte + i >= plane_line_bytes) continue;
    std::uint8_t& target = plane_row[byte + i];
    target = static_cast<std::uint8_t>((target & ~part) | (value & part));
  }
}

/// A byte's bits in reverse order.
[[nodiscard]] constexpr unsigned reversed_8_bits(unsigned bits) {
  bits = (bits & 0xF0U) >> 4 | (bits & 0x0FU) << 4;
  bits = (bits & 0xCCU) >> 2 | (bits & 0x33U) << 2;
  return (bits & 0xAAU) >> 1 | (bits & 0x55U) << 1;
}

/// Where the rows and planes of a buffer lie.
struct PlaneLayout {
  int planes = screen_planes;  // 1 .. 24
  int plane_stride = 0;        // bytes from a plane row to the next of the same row
  int row_stride = 0;          // bytes from a row to the next
};

/// Copies width x height pixels to (x, y): buffer plane k to screen plane k. Pixels outside the
/// screen and rows outside the buffer are left out.
void draw_buf2c(int x, int y, int width, int height, const PlaneLayout& layout,
                std::span<const std::uint8_t> buffer);

/// The opposite: copies width x height pixels from (x, y) of the screen into the buffer. Pixels
/// outside the screen become 0; bits behind the width are undefined.
void save_buf2c(int x, int y, int width, int height, const PlaneLayout& layout,
                std::span<std::uint8_t> buffer);

/// Copies `count` bits; bit 0 is the most significant one of the first byte. The source and the
/// target must not overlap.
void bitcpy(std::uint8_t* target, const std::uint8_t* source, int target_bit, int source_bit,
            int count);

}  // namespace torve
