// The screen image and what draws into it, against trivial references.

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <random>

#include "draw/lines.hpp"
#include "draw/plane_copy.hpp"
#include "draw/window_frame.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Pixels = std::vector<std::uint32_t>;

class ImageTest : public ScreenTest {
 protected:
  void set(Pixels& pixels, int x, int y, std::uint32_t value) {
    if (whole_screen.contains(x, y)) pixels[static_cast<std::size_t>(y * screen_width + x)] = value;
  }
  int any(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  std::uint32_t any_pixel() { return static_cast<std::uint32_t>(any(0, 0xFFFFFF)); }

  std::mt19937 random_{20240611};
};

TEST_F(ImageTest, PlanesHoldPixelsAsStated) {
  drawpixel2c(13, 7, 0x800001);
  const std::uint8_t* byte = screen_block() + 7 * 100 + 13 / 8;
  EXPECT_EQ(byte[0] & 0x20, 0x20) << "plane 0 carries the most significant bit";
  EXPECT_EQ(byte[60000] & 0x20, 0);
  EXPECT_EQ(byte[23 * 60000] & 0x20, 0x20);
  EXPECT_EQ(getpixel2c(13, 7), 0x800001U);
  EXPECT_EQ(plot_point2(13, 7, 0x123456), 0x800001U);
  for (const auto& [x, y] : {std::pair{-1, 5}, {800, 5}, {5, -1}, {5, 600}}) {
    drawpixel2b(x, y, 0);
    EXPECT_EQ(getpixel2c(x, y), 0U);
  }
}

TEST_F(ImageTest, RectanglesEqualPixelByPixelOnes) {
  Pixels expected = all_pixels();
  for (int i = 0; i < 400; ++i) {
    const int x = any(-20, 810);
    const int y = any(-20, 610);
    const int width = i % 4 == 0 ? any(-2, 900) : any(-2, 20);
    const int height = any(-2, 30);
    const std::uint32_t pixel = any_pixel();
    if (i % 2 == 0) {
      clear_win1(x, y, x + width, y + height, pixel);
    } else {
      fillbox2(x, y, width, height, pixel);
    }
    for (int row = y; row < y + height; ++row) {
      for (int column = x; column < x + width; ++column)
        set(expected, column, row, pixel);
    }
  }
  EXPECT_EQ(all_pixels(), expected);
  fillbox2(790, 590, 0x7FFFFFFF, 0x7FFFFFFF, 5);
  EXPECT_EQ(getpixel2c(799, 599), 5U);
}

TEST_F(ImageTest, OnlyWhatChangedIsDirty) {
  static Rect pushed;
  static const DisplayBackend recorder = {.push = [](const Rect& rect) { pushed = rect; }};
  set_display_backend(&recorder);
  present();
  const auto pushed_by = [](auto draw) {
    pushed = {};
    draw();
    present();
    return pushed;
  };
  EXPECT_EQ(pushed_by([] { clearwin(30, 10, 30, 20, 1); }), Rect()) << "empty";
  EXPECT_EQ(pushed_by([] { clearwin(30, 10, 41, 20, 1); }), (Rect{30, 10, 41, 20}));
  EXPECT_EQ(pushed_by([] { draw_line1(10, 10, 10, 5, 0); }), (Rect{10, 5, 11, 11}));
  EXPECT_EQ(pushed_by([] { drawpixel2c(1, 1, 0); }), Rect()) << "left to the caller";
  EXPECT_EQ(pushed_by([] {
              drawpixel(3, 4, 1);
              fillbox2(795, 590, 50, 50, 1);
            }),
            (Rect{3, 4, 800, 600}));
  set_display_backend(nullptr);
}

// The rule of the lines, step by step, without a thought for speed or edges.
void reference_line(Pixels& pixels, int x1, int y1, int x2, int y2,
                    const std::function<void(Pixels&, int, int)>& set_pixel) {
  const int left = std::min(x1, x2), right = std::max(x1, x2);
  const int top = std::min(y1, y2), bottom = std::max(y1, y2);
  if (bottom - top > right - left) {
    for (int y = top; y <= bottom; ++y)
      set_pixel(pixels, (y - y1) * (x2 - x1) / (y2 - y1) + x1, y);
  } else {
    for (int x = left; x <= right; ++x) {
      set_pixel(pixels, x, x1 == x2 ? y1 : (x - x1) * (y2 - y1) / (x2 - x1) + y1);
    }
  }
}

TEST_F(ImageTest, LinesEqualTheStepByStepRule) {
  Pixels expected = all_pixels();
  for (int i = 0; i < 600; ++i) {
    const int x1 = any(-60, 860);
    const int y1 = any(-60, 660);
    const int x2 = i % 5 == 0 ? x1 : any(-60, 860);
    const int y2 = i % 7 == 0 ? y1 : any(-60, 660);
    const int colour = any(0, 20);
    draw_line(x1, y1, x2, y2, colour, target_screen);
    reference_line(expected, x1, y1, x2, y2,
                   [&](Pixels& pixels, int x, int y) { set(pixels, x, y, colour_pixel(colour)); });
  }
  EXPECT_EQ(all_pixels(), expected);
  draw_line1(-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647, 4);
  EXPECT_EQ(getpixel2c(300, 300), colour_pixel(4));
}

TEST_F(ImageTest, PlaneBuffersArriveAtEveryBitPhase) {
  constexpr int width = 21, height = 3, stride = 24 * 3 + 5;
  std::vector<std::uint8_t> buffer(stride * height);
  for (std::uint8_t& byte : buffer)
    byte = static_cast<std::uint8_t>(any(0, 255));
  for (const int x : {-30, -9, 0, 1, 6, 7, 8, 399, 780, 795, 900}) {
    for (const int y : {-2, 40, 598}) {
      Pixels expected = all_pixels();
      draw_buf2c(x, y, width, height, {.plane_stride = 3, .row_stride = stride}, buffer);
      for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
          std::uint32_t pixel = 0;
          for (int plane = 0; plane < 24; ++plane) {
            const auto at = static_cast<std::size_t>(row * stride + plane * 3 + column / 8);
            pixel = pixel << 1 | (buffer[at] >> (7 - column % 8) & 1U);
          }
          set(expected, x + column, y + row, pixel);
        }
      }
      ASSERT_EQ(all_pixels(), expected) << x << ' ' << y;
    }
  }
}

TEST_F(ImageTest, FrameLinesBoxesArrowsAndThumbs) {
  clearwin(100, 100, 300, 200, 16);
  int x_fraction = -1;
  int y_fraction = -1;
  putWinFrame(100, 100, 80, 160, 64, 0, 128, 128, &x_fraction, &y_fraction, 4, FrameFlags::none, 0);
  EXPECT_EQ(x_fraction, 64);
  EXPECT_EQ(y_fraction, 64) << "the vertical thumb stands at the x fraction";
  const std::uint32_t frame = colour_pixel(4), light = colour_pixel(15);
  const std::uint32_t shade = colour_pixel(20), inside = colour_pixel(16);
  const struct {
    int x, y;
    std::uint32_t pixel;
    const char* what;
  } cases[] = {
      {100, 100, frame, "corner"},
      {259, 179, frame, "far corner"},
      {150, 101, light, "upper light"},
      {150, 110, frame, "title bar"},
      {150, 111, light, "title bar light"},
      {110, 150, frame, "left bar"},
      {111, 150, light, "left bar light"},
      {256, 140, frame, "inner right"},
      {249, 105, frame, "separator"},
      {248, 107, light, "separator light"},
      {103, 103, light, "left box light"},
      {104, 104, frame, "left box"},
      {252, 104, light, "right box light"},
      {253, 104, frame, "right box"},
      {260, 140, inside, "right of the frame"},
      {105, 111, shade, "upper head tip"},
      {103, 178, light, "frame light"},
      {111, 105, shade, "left head tip"},
      {104, 143, frame, "vertical thumb: 100+22+(64*40>>7)"},
      {178, 104, shade, "horizontal thumb: 100+22+(64*111>>7)"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(getpixel2c(c.x, c.y), c.pixel) << c.what;
  putWinFrame(100, 100, 80, 160, 5, 5, 0, 0, &x_fraction, &y_fraction, 4, FrameFlags::none, 1);
  EXPECT_EQ(x_fraction, 0);
  EXPECT_EQ(y_fraction, 0);
}

}  // namespace
}  // namespace torve
