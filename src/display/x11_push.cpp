#include <bit>
#include <memory>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "display/screen_image.hpp"
#include "display/x11_state.hpp"

namespace torve {

XImage* screenbuf = nullptr;
XImage* staging = nullptr;

namespace {

constexpr std::size_t screen_pixels = std::size_t{screen_width} * screen_height;
std::unique_ptr<std::uint32_t[]> staging_pixels;

// The planes as they lie in memory, whatever byte and bit order the server would suggest.
XImage* describe_planes(Visual* visual, unsigned depth) {
  XImage* image =
      XCreateImage(display, visual, depth, XYPixmap, 0, reinterpret_cast<char*>(screen_block()),
                   screen_width, screen_height, 8, plane_line_bytes);
  image->byte_order = LSBFirst;
  image->bitmap_bit_order = LSBFirst;
  image->bitmap_unit = 8;
  XInitImage(image);
  return image;
}

// One 32-bit word a pixel; null when the server wants pixels of this depth packed otherwise.
XImage* create_staging(Visual* visual, unsigned depth) {
  XImage* image =
      XCreateImage(display, visual, depth, ZPixmap, 0, nullptr, screen_width, screen_height, 32, 0);
  if (image->bits_per_pixel != 32) {
    XDestroyImage(image);
    return nullptr;
  }
  staging_pixels = std::make_unique<std::uint32_t[]>(screen_pixels);
  image->data = reinterpret_cast<char*>(staging_pixels.get());
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

}  // namespace

void create_x11_images(void* visual, int depth) {
  screenbuf = describe_planes(static_cast<Visual*>(visual), static_cast<unsigned>(depth));
  staging = create_staging(static_cast<Visual*>(visual), static_cast<unsigned>(depth));
}

void destroy_x11_images() {
  destroy(screenbuf);
  destroy(staging);
  staging_pixels.reset();
}

// A converted image goes out about eight times as fast as planes do.
void push_to_x11(const Rect& rect) {
  XImage* image = screenbuf;
  if (staging != nullptr) {
    image = staging;
    const int first_column = rect.x1 / 8 * 8;
    read_pixels(rect, staging_pixels.get() + rect.y1 * screen_width + first_column, screen_width);
  }
  XPutImage(display, win, gc, image, rect.x1, rect.y1, rect.x1, rect.y1,
            static_cast<unsigned>(rect.width()), static_cast<unsigned>(rect.height()));
  XFlush(display);
}

}  // namespace torve
