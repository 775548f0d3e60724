// The screen image: everything the program shows, as 24 bit planes in one block of memory.
//
// 800 x 600 pixels. Plane p (0 .. 23) holds bit 23 - p of the pixel value, so plane 0 carries the
// most significant bit. In a plane, pixel (x, y) is bit x & 7 of byte y * 100 + x / 8: the least
// significant bit is the leftmost pixel. This geometry never changes, whatever the window's size.
//
// The image lives without a window too: tests and programs without a display draw into it.
// Whoever writes planes marks the rectangle dirty; present() brings dirty pixels to the window.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/rect.hpp"

namespace torve {

inline constexpr int screen_width = 800;      // pixels
inline constexpr int screen_height = 600;     // pixels
inline constexpr int screen_planes = 24;      // bits of a pixel value
inline constexpr int plane_line_bytes = 100;  // bytes from a row to the next within a plane
inline constexpr std::size_t plane_bytes = std::size_t{plane_line_bytes} * screen_height;
inline constexpr std::size_t screen_block_bytes = std::size_t{screen_width} * screen_height * 16;
inline constexpr Rect whole_screen = {0, 0, screen_width, screen_height};

/// Creates the image, every byte 0x0F (stripes, four pixels white and four black, until something
/// is drawn). False when there is no memory; an existing image is kept as it is.
[[nodiscard]] bool create_screen_image();

/// Releases the image; drawing does nothing from then on. May be called twice.
void release_screen_image();

[[nodiscard]] bool have_screen_image();

/// The block's first byte (plane 0, row 0); plane p starts p * plane_bytes further. Null when
/// there is no image. Owned by this room.
[[nodiscard]] std::uint8_t* screen_block();

/// Adds a rectangle to what present() has to show; it is cut at the edges of the screen.
void mark_dirty(const Rect& rect);

/// What has been drawn since it was last shown: one rectangle around everything.
[[nodiscard]] Rect dirty_rect();

/// Brings the dirty rectangle to the window, if there is one. Runs before every wait for input,
/// before handlers, pauses and progress lines, so what the user sees at a wait is the image.
void present();

/// Writes the pixel values 0xRRGGBB of `rect` (inside the screen) to `out`, row by row with
/// `row_pixels` pixels from one row to the next. The columns are extended to whole groups of
/// eight: the first value written is that of column x1 rounded down to a multiple of 8.
void read_pixels(const Rect& rect, std::uint32_t* out, std::size_t row_pixels);

}  // namespace torve
