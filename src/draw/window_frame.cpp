#include "draw/window_frame.hpp"

#include <cstdint>

#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "draw/pixels.hpp"
#include "draw/rectangles.hpp"
#include "draw/scroll_bar.hpp"

namespace torve {

namespace {

constexpr int bar_width = 10;  // from the outer frame line to the inner one
constexpr int block_size = 4;  // of a thumb and of a title box, pixels, without the highlight
constexpr int box_inset = 3;   // from the frame to a title box
constexpr int last_shaded_colour = 4;
constexpr int first_extra_shade = 16;
constexpr int thumb_erase_colour = 16;

std::uint32_t highlight() {
  return colour_pixel(white_colour);
}

// Dark colours have a softer shade for arrow heads and horizontal thumbs.
std::uint32_t shaded_pixel(int colour) {
  return colour_pixel(colour <= last_shaded_colour ? colour + first_extra_shade : colour);
}

void row(int x1, int x2, int y, std::uint32_t pixel) {
  fillbox3(x1, y, x2 - x1 + 1, 1, pixel);
}

void column(int x, int y1, int y2, std::uint32_t pixel) {
  fillbox3(x, y1, 1, y2 - y1 + 1, pixel);
}

// A box with a highlight on its upper and left edge; the right title box has a longer upper one.
void title_box(int x, int y, int highlight_length, std::uint32_t frame) {
  column(x, y, y + 3, highlight());
  row(x, x + highlight_length - 1, y, highlight());
  fillbox3(x + 1, y + 1, block_size, block_size, frame);
}

void draw_frame_lines(int x, int y, int height, int width, std::uint32_t frame) {
  const int right = x + width - 1;
  const int bottom = y + height - 1;
  const std::uint32_t light = highlight();
  row(x, right, y, frame);
  row(x, right, y + 1, light);
  row(x, right, y + bar_width, frame);
  row(x, right, y + bar_width + 1, light);
  row(x, right, bottom - 1, light);
  row(x, right, bottom, frame);
  column(x, y + 1, bottom - 1, frame);
  column(x + 1, y + 1, bottom - 1, light);
  column(x + bar_width, y + 1, bottom - 1, frame);
  column(x + bar_width + 1, y + 1, bottom - 1, light);
  column(right - 1, y + 1, bottom - 1, light);
  column(right, y + 1, bottom - 1, frame);
  row(x + bar_width + 1, right - 3, bottom - 3, frame);
  column(right - 3, y + bar_width + 1, bottom - 3, frame);
  column(right - bar_width, y + 1, y + 9, frame);
  column(right - bar_width - 1, y + 1, y + 9, light);
  title_box(x + box_inset, y + box_inset, 4, frame);
  title_box(right - 7, y + box_inset, 7, frame);
  mark_dirty({x, y, right + 1, bottom + 1});
}

int fraction(int position, int range) {
  if (range < 1) return 0;
  return static_cast<int>((std::int64_t{position} << scroll_full_scale_bits) / range);
}

void draw_thumb(int x, int y, std::uint32_t pixel) {
  fillbox2(x, y, 1, block_size, highlight());
  fillbox2(x, y, block_size, 1, highlight());
  fillbox2(x + 1, y + 1, block_size, block_size, pixel);
}

std::uint32_t pixel_or_black(int colour) {
  return colour < 0 ? 0 : colour_pixel(colour);
}

std::uint32_t shaded_or_black(int colour) {
  return colour < 0 ? 0 : shaded_pixel(colour);
}

}  // namespace

void putWinFrame(int x, int y, int height, int width, int xpos, int ypos, int xrange, int yrange,
                 int* x_fraction, int* y_fraction, int colour, FrameFlags flags, int noframe) {
  const bool framed = noframe == 0;
  if (framed) {
    draw_frame_lines(x, y, height, width, colour_pixel(colour < 0 ? white_colour : colour));
  }
  *y_fraction = fraction(ypos, yrange);
  *x_fraction = fraction(xpos, xrange);
  if (!has(flags, FrameFlags::no_vertical_bar)) {
    if (framed) putVertArrows(x + 1, y + 11, height - 13, colour);
    update_yscrollbar(y_fraction, *x_fraction, thumb_erase_colour, colour, x, y, y + height - 1);
  }
  if (!has(flags, FrameFlags::no_horizontal_bar)) {
    if (framed) putHorArrows(x + 11, y + 1, width - 23, colour);
    update_xscrollbar(x_fraction, *x_fraction, thumb_erase_colour, colour, x, x + width, y);
  }
}

void putVertArrows(int x, int y, int length, int colour) {
  const std::uint32_t pixel = shaded_pixel(colour);
  for (int i = 0; i < scroll_arrow_size; ++i) {
    const int inset = (i + 1) / 2;
    const int columns = scroll_arrow_size - 2 * inset;
    fillbox2(x + inset, y + 8 - i, columns, 1, pixel);
    fillbox2(x + inset, y + length + i - 8, columns, 1, pixel);
  }
}

void putHorArrows(int x, int y, int length, int colour) {
  const std::uint32_t pixel = shaded_pixel(colour);
  for (int i = 0; i < scroll_arrow_size; ++i) {
    const int rows = 2 * (i / 2) + 1;
    fillbox2(x + i, y + 4 - i / 2, 1, rows, pixel);
    fillbox2(x + length - i, y + 4 - i / 2, 1, rows, pixel);
  }
}

void update_yscrollbar(int* position, int new_position, int erase_colour, int colour, int x, int y1,
                       int y2) {
  const ScrollTrack track = vertical_track(y2 - y1 + 1);
  const int left = x + scroll_thumb_inset;
  fillbox2(left, y1 + track.thumb_at(*position), scroll_thumb_size, scroll_thumb_size,
           pixel_or_black(erase_colour));
  *position = new_position;
  draw_thumb(left, y1 + track.thumb_at(new_position), pixel_or_black(colour));
}

void update_xscrollbar(int* position, int new_position, int erase_colour, int colour, int x1,
                       int x2, int y) {
  const ScrollTrack track = horizontal_track(x2 - x1);
  const int top = y + scroll_thumb_inset;
  fillbox2(x1 + track.thumb_at(*position), top, scroll_thumb_size, scroll_thumb_size,
           shaded_or_black(erase_colour));
  *position = new_position;
  draw_thumb(x1 + track.thumb_at(new_position), top, shaded_or_black(colour));
}

}  // namespace torve
