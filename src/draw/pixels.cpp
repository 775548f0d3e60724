#include "draw/pixels.hpp"

#include "display/colours.hpp"
#include "display/screen_image.hpp"

namespace torve {

namespace {

bool on_screen(int x, int y) {
  return whole_screen.contains(x, y) && have_screen_image();
}

std::uint8_t* byte_of(int x, int y) {
  return screen_block() + y * plane_line_bytes + x / 8;
}

}  // namespace

void drawpixel2c(int x, int y, std::uint32_t pixel) {
  if (!on_screen(x, y)) return;
  const unsigned mask = 1U << (x & 7);
  std::uint8_t* byte = byte_of(x, y);
  for (int bit = screen_planes - 1; bit >= 0; --bit, byte += plane_bytes) {
    const unsigned set = (pixel >> bit & 1U) != 0 ? mask : 0;
    *byte = static_cast<std::uint8_t>((*byte & ~mask) | set);
  }
}

std::uint32_t getpixel2c(int x, int y) {
  if (!on_screen(x, y)) return 0;
  const std::uint8_t* byte = byte_of(x, y);
  std::uint32_t pixel = 0;
  for (int plane = 0; plane < screen_planes; ++plane, byte += plane_bytes) {
    pixel = pixel << 1 | (*byte >> (x & 7) & 1U);
  }
  return pixel;
}

void drawpixel2b(int x, int y, std::uint32_t pixel) {
  if (!on_screen(x, y)) return;
  drawpixel2c(x, y, pixel);
  mark_dirty({x, y, x + 1, y + 1});
}

void drawpixel(int x, int y, int colour) {
  drawpixel2b(x, y, colour_pixel(colour));
}

std::uint32_t plot_point2(int x, int y, std::uint32_t pixel) {
  const std::uint32_t old = getpixel2c(x, y);
  drawpixel2b(x, y, pixel);
  return old;
}

}  // namespace torve
