#include <algorithm>
#include <bit>
#include <memory>
#include <new>
#include <utility>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "display/screen_image.hpp"
#include "display/x11_state.hpp"

namespace torve {

XImage* screenbuf = nullptr;
XImage* staging = nullptr;

namespace {

// Enlarged pictures go out in bands of so many rows of the image: what is converted and enlarged is
// still in the processor's cache when it is sent, and no picture of the whole window is needed.
constexpr int band_rows = 16;
constexpr int screen_pixels = screen_width * screen_height;
constexpr int band_pixels = screen_width * band_rows;

using Pixels = std::unique_ptr<std::uint32_t[]>;

Visual* shown_with = nullptr;
Pixels staging_pixels;
Pixels band;  // as it is converted; null while nothing is enlarged

// The planes as they lie in memory, whatever byte and bit order the server would suggest.
XImage* describe_planes() {
  XImage* image = XCreateImage(display, shown_with, screen_planes, XYPixmap, 0,
                               reinterpret_cast<char*>(screen_block()), screen_width, screen_height,
                               8, plane_line_bytes);
  image->byte_order = LSBFirst;
  image->bitmap_bit_order = LSBFirst;
  image->bitmap_unit = 8;
  XInitImage(image);
  return image;
}

Pixels make_pixels(int count) {
  return Pixels(new (std::nothrow) std::uint32_t[static_cast<std::size_t>(count)]());
}

// One 32-bit word a pixel; null when the server wants pixels of this depth packed otherwise.
XImage* describe_staging(std::uint32_t* pixels, int width, int height) {
  XImage* image = XCreateImage(display, shown_with, screen_planes, ZPixmap, 0, nullptr,
                               static_cast<unsigned>(width), static_cast<unsigned>(height), 32, 0);
  if (image == nullptr) return nullptr;
  if (image->bits_per_pixel != 32) {
    XDestroyImage(image);
    return nullptr;
  }
  image->data = reinterpret_cast<char*>(pixels);
  image->byte_order = std::endian::native == std::endian::little ? LSBFirst : MSBFirst;
  XInitImage(image);
  return image;
}

// XDestroyImage would free the data, which is not its own.
void destroy(XImage*& image) {
  if (image == nullptr) return;
  image->data = nullptr;
  XDestroyImage(image);
  image = nullptr;
}

void put(XImage* image, int from_x, int from_y, const Rect& to) {
  XPutImage(display, win, gc, image, from_x, from_y, to.x1, to.y1,
            static_cast<unsigned>(to.width()), static_cast<unsigned>(to.height()));
}

// A row of pixels, `scale` times as wide and as high, at `out`; returns where the next one goes.
std::uint32_t* enlarge_row(const std::uint32_t* row, int width, std::uint32_t* out) {
  std::uint32_t* end = out;
  for (int x = 0; x < width; ++x)
    end = std::fill_n(end, scale, row[x]);
  const std::ptrdiff_t wide = end - out;
  for (int copy = 1; copy < scale; ++copy)
    end = std::copy_n(out, wide, end);
  return end;
}

// The image is made as narrow as the rectangle: then it is sent as it lies in memory.
void push_enlarged_band(const Rect& rect) {
  read_pixels(rect, band.get(), screen_width);
  std::uint32_t* out = staging_pixels.get();
  for (int y = 0; y < rect.height(); ++y)
    out = enlarge_row(band.get() + y * screen_width, rect.width(), out);
  staging->width = rect.width() * scale;
  staging->bytes_per_line = staging->width * static_cast<int>(sizeof *out);
  put(staging, 0, 0, {rect.x1 * scale, rect.y1 * scale, rect.x2 * scale, rect.y2 * scale});
}

// Converted pixels begin at whole groups of eight.
void push_enlarged(const Rect& rect) {
  for (int y = rect.y1; y < rect.y2; y += band_rows)
    push_enlarged_band({rect.x1 / 8 * 8, y, rect.x2, std::min(y + band_rows, rect.y2)});
}

// A converted image goes out about eight times as fast as planes do.
void push_at_size(const Rect& rect) {
  const int first_column = rect.x1 / 8 * 8;
  read_pixels(rect, staging_pixels.get() + rect.y1 * screen_width + first_column, screen_width);
  put(staging, rect.x1, rect.y1, rect);
}

}  // namespace

void create_x11_images(void* visual) {
  shown_with = static_cast<Visual*>(visual);
  screenbuf = describe_planes();
  if (!create_staging(scale)) {
    scale = 1;
    static_cast<void>(create_staging(scale));
  }
}

bool create_staging(int wanted) {
  const bool enlarges = wanted > 1;
  Pixels pixels = make_pixels(enlarges ? band_pixels * wanted * wanted : screen_pixels);
  Pixels converted = enlarges ? make_pixels(band_pixels) : nullptr;
  if (!pixels || (enlarges && !converted)) return false;
  XImage* image = describe_staging(pixels.get(), screen_width * wanted,
                                   enlarges ? band_rows * wanted : screen_height);
  if (image == nullptr) return false;
  destroy(staging);
  staging = image;
  staging_pixels = std::move(pixels);
  band = std::move(converted);
  return true;
}

void destroy_x11_images() {
  destroy(screenbuf);
  destroy(staging);
  staging_pixels.reset();
  band.reset();
}

void push_to_x11(const Rect& rect) {
  if (staging == nullptr) {
    put(screenbuf, rect.x1, rect.y1, rect);
  } else if (scale == 1) {
    push_at_size(rect);
  } else {
    push_enlarged(rect);
  }
  XFlush(display);
}

}  // namespace torve
