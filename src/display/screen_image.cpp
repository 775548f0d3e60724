#include "display/screen_image.hpp"

#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "display/backend.hpp"

namespace torve {

namespace {

constexpr std::uint8_t start_pattern = 0x0F;

std::unique_ptr<std::uint8_t[]> block;
Rect dirty;

// Exchanges rows and columns of 8 x 8 bits: bit i of byte x becomes bit x of byte i.
// (Hacker's Delight, section 7-3.)
constexpr std::uint64_t transpose_8x8(std::uint64_t bits) {
  std::uint64_t t = (bits ^ (bits >> 7)) & 0x00AA00AA00AA00AAULL;
  bits = bits ^ t ^ (t << 7);
  t = (bits ^ (bits >> 14)) & 0x0000CCCC0000CCCCULL;
  bits = bits ^ t ^ (t << 14);
  t = (bits ^ (bits >> 28)) & 0x00000000F0F0F0F0ULL;
  return bits ^ t ^ (t << 28);
}

// One colour component of eight neighbouring pixels: byte i of the result belongs to pixel i.
// `first` is the byte in the plane of the component's most significant bit.
std::uint64_t component_of_8_pixels(const std::uint8_t* first) {
  std::uint64_t rows = 0;
  for (std::size_t plane = 0; plane < 8; ++plane) {
    rows = (rows << 8) | first[plane * plane_bytes];
  }
  return transpose_8x8(rows);
}

}  // namespace

bool create_screen_image() {
  if (block) return true;
  block.reset(new (std::nothrow) std::uint8_t[screen_block_bytes]);
  if (!block) return false;
  std::memset(block.get(), start_pattern, screen_block_bytes);
  mark_dirty(whole_screen);
  return true;
}

void release_screen_image() {
  block.reset();
  dirty = {};
}

bool have_screen_image() {
  return block != nullptr;
}

std::uint8_t* screen_block() {
  return block.get();
}

void mark_dirty(const Rect& rect) {
  dirty = bounding_box(dirty, intersection(rect, whole_screen));
}

Rect dirty_rect() {
  return dirty;
}

void present() {
  const DisplayBackend* display = display_backend();
  if (dirty.empty() || display == nullptr || !block) return;
  const Rect shown = dirty;
  dirty = {};
  display->push(shown);
}

void read_pixels(const Rect& rect, std::uint32_t* out, std::size_t row_pixels) {
  const int first_group = rect.x1 / 8;
  const int groups = (rect.x2 + 7) / 8 - first_group;
  for (int y = rect.y1; y < rect.y2; ++y, out += row_pixels) {
    const std::uint8_t* source = block.get() + y * plane_line_bytes + first_group;
    for (int group = 0; group < groups; ++group) {
      std::uint64_t red = component_of_8_pixels(source + group);
      std::uint64_t green = component_of_8_pixels(source + group + 8 * plane_bytes);
      std::uint64_t blue = component_of_8_pixels(source + group + 16 * plane_bytes);
      for (int i = 0; i < 8; ++i, red >>= 8, green >>= 8, blue >>= 8) {
        out[8 * group + i] =
            static_cast<std::uint32_t>((red & 0xFF) << 16 | (green & 0xFF) << 8 | (blue & 0xFF));
      }
    }
  }
}

}  // namespace torve
