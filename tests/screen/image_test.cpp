// The screen image and what draws into it, against trivial references; fn2 pictures.

#include <algorithm>
#include <random>

#include "draw/lines.hpp"
#include "draw/window_frame.hpp"
#include "picture/fn2.hpp"
#include "support/screen.hpp"
#include "support/strokes.hpp"

namespace torve {
namespace {

constexpr int highest = 0x7FFFFFFF;

class ImageTest : public ScreenTest {
 protected:
  void expect(int x, int y, std::uint32_t value) {
    if (whole_screen.contains(x, y))
      expected_[static_cast<std::size_t>(y * screen_width + x)] = value;
  }
  int any(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  TemporaryDirectory directory_;
  std::mt19937 random_{20240611};
  std::vector<std::uint32_t> expected_ = all_pixels();
};

TEST_F(ImageTest, PlanesHoldPixelsAsStated) {
  EXPECT_EQ(plot_point2(13, 7, 0x800001), colour_pixel(white_colour));
  const std::uint8_t* byte = screen_block() + 7 * 100 + 13 / 8;
  EXPECT_EQ(byte[0] & 0x20, 0x20) << "plane 0 carries the most significant bit";
  EXPECT_EQ(byte[23 * 60000] & 0x20, 0x20);
  EXPECT_EQ(getpixel2c(13, 7), 0x800001U);
}

TEST_F(ImageTest, RectanglesEqualPixelByPixelOnes) {
  for (int i = 0; i < 400; ++i) {
    const int x = any(-20, 810), y = any(-20, 610), height = any(-2, 30);
    const int width = i % 4 == 0 ? any(-2, 900) : any(-2, 20);
    const auto pixel = static_cast<std::uint32_t>(any(0, 0xFFFFFF));
    if (i % 2 == 0) {
      clear_win1(x, y, x + width, y + height, pixel);
    } else {
      fillbox2(x, y, width, height, pixel);
    }
    for (int row = y; row < y + height; ++row) {
      for (int column = x; column < x + width; ++column)
        expect(column, row, pixel);
    }
  }
  EXPECT_EQ(all_pixels(), expected_);
  fillbox2(790, 590, highest, highest, 5);
  EXPECT_EQ(getpixel2c(799, 599), 5U);
  const auto before = all_pixels();
  for (const auto& [x, y] : {std::pair(800, 5), {-1, 5}, {5, -1}, {5, 600}}) {
    drawpixel2c(x, y, 7);
    EXPECT_EQ(getpixel2c(x, y), 0U);
  }
  EXPECT_EQ(all_pixels(), before);
}

TEST_F(ImageTest, OnlyWhatChangedIsDirty) {
  static Rect pushed;
  static const DisplayBackend recorder = {.push = [](const Rect& rect) { pushed = rect; }};
  set_display_backend(&recorder);
  const struct {
    void (*draw)();
    Rect dirty;
  } cases[] = {{[] {}, whole_screen},
               {[] { clearwin(30, 10, 30, 20, 1); }, {}},
               {[] { clearwin(30, 10, 41, 20, 1); }, {30, 10, 41, 20}},
               {[] { draw_line1(10, 10, 10, 5, 0); }, {10, 5, 11, 11}},
               {[] { drawpixel2c(1, 1, 0); }, {}},  // left to the caller
               {[] { drawpixel(3, 4, 1), fillbox2(795, 590, 50, 50, 1); }, {3, 4, 800, 600}}};
  for (const auto& c : cases) {
    pushed = {};
    c.draw();
    present();
    EXPECT_EQ(pushed, c.dirty);
  }
  set_display_backend(nullptr);
}

TEST_F(ImageTest, LinesEqualTheStepByStepRule) {
  for (int i = 0; i < 600; ++i) {
    const int x1 = any(-60, 860), y1 = any(-60, 660), colour = any(0, 20);
    const int x2 = i % 5 == 0 ? x1 : any(-60, 860);
    const int y2 = i % 7 == 0 ? y1 : i % 6 == 0 ? y1 + x2 - x1 : any(-60, 660);
    draw_line(x1, y1, x2, y2, colour, target_screen);
    for_each_point_of_line(x1, y1, x2, y2,
                           [&](int x, int y) { expect(x, y, colour_pixel(colour)); });
  }
  EXPECT_EQ(all_pixels(), expected_);
  draw_line1(-highest - 1, -highest - 1, highest, highest, 4);
  EXPECT_EQ(getpixel2c(300, 300), colour_pixel(4));
}

// What frames look like is tested in tests/desktop.
TEST_F(ImageTest, FramesLeaveBothThumbsAtTheHorizontalPosition) {
  int x_fraction = -1, y_fraction = -1;
  putWinFrame(100, 100, 80, 160, 64, 0, 128, 128, &x_fraction, &y_fraction, 4, FrameFlags::none, 0);
  EXPECT_EQ(std::pair(x_fraction, y_fraction), std::pair(64, 64));
  EXPECT_EQ(getpixel2c(104, 143), colour_pixel(4)) << "100 + 22 + (64 * 40 >> 7)";
  putWinFrame(100, 100, 80, 160, 5, 5, 0, 0, &x_fraction, &y_fraction, 4, FrameFlags::none, 1);
  EXPECT_EQ(std::pair(x_fraction, y_fraction), std::pair(0, 0));
}

TEST_F(ImageTest, ColoursAreFoundByTheirPixels) {
  const struct {
    std::uint32_t pixel;
    int own, copy;
  } cases[] = {{0, 0, 0}, {0xBC8F8F, 5, 5}, {0xFCFCFC, 15, 26}, {0xB4FAC8, 16, -1}, {9, -1, -1}};
  for (const auto& c : cases) {
    EXPECT_EQ(color_by_pixel1(c.pixel, 0), c.own) << c.pixel;
    EXPECT_EQ(color_by_pixel1(c.pixel, 2), c.copy) << c.pixel;
  }
  for (const auto& [colour, shown] : {std::pair(10, 10), {14, 3}}) {
    clearwin_c(797, 3, 801, 4, colour);
    EXPECT_EQ(getpixel2c(799, 3), colour_pixel(shown)) << colour;
  }
}

// Bytes of a row, planes, rows, columns.
std::string header(std::array<std::uint16_t, 4> fields) {
  return {reinterpret_cast<const char*>(fields.data()), sizeof fields};
}

TEST_F(ImageTest, ColourNumbersBecomeColours) {
  // Two rows of nine pixels, four planes: number 4 (red) first, the others 15 and 1.
  write_file("p.fn2", header({8, 0, 2, 9}) + std::string("\x7F\x80\xFF\x80\x7F\x80\x7F\x80", 8) +
                          std::string("\0\0\0\0\0\0\xFF\x80", 8));
  int width = 0, height = 0;
  ASSERT_EQ(getpicture("p.fn2", 101, 50, &width, &height), 0);
  EXPECT_EQ(std::pair(width, height), std::pair(9, 2));
  EXPECT_EQ(getpixel2c(101, 50), colour_pixel(4));
  EXPECT_EQ(getpixel2c(109, 50), colour_pixel(15));
  EXPECT_EQ(getpixel2c(109, 51), colour_pixel(1));
  EXPECT_EQ(gplanes, 24);
}

TEST_F(ImageTest, HeadersThatCannotBeTrueAreRefused) {
  const std::pair<std::string, const char*> cases[] = {
      {header({144, 24, 43, 43}).substr(0, 7), "cut in the header"},
      {header({143, 24, 43, 43}), "stride below a row"},
      {header({150, 25, 43, 43}), "more planes than the screen"},
      {header({144, 24, 0, 43}), "no rows"},
      {header({144, 24, 178, 43}), "larger than the buffer"}};
  for (const auto& [bytes, what] : cases) {
    write_file("bad.fn2", bytes);
    int width = 5, height = 5;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(getpicture("bad.fn2", 9, 9, &width, &height), 1); }),
              "file_error\n")
        << what;
    EXPECT_EQ(width + height, 0) << what;
  }
  int size = 0;
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(getpicture("no", 9, 9, &size, &size), 1); }),
            "cannot_find_file\n");
  EXPECT_EQ(all_pixels(), expected_);
}

TEST_F(ImageTest, PointsHoldAsManyBitsAsThereArePlanes) {
  std::vector<std::uint8_t> buffer(2 * 24);
  for (const auto& [planes, colour, read] : {std::tuple(24, 20, 20), {16, 5, 5}, {16, 4, 0}}) {
    gplanes = planes;
    point_to_fn2_b(9, 0, colour_pixel(colour), 2, 48, buffer);
    if (planes == 16) point_to_fn2(9, 0, colour, 2, 48, buffer);
    EXPECT_EQ(point_from_fn2(9, 0, 2, 48, buffer), read) << planes << ' ' << colour;
  }
  point_to_fn2_b(9, 0, 0x1234, 2, 48, buffer);
  EXPECT_EQ(point_from_fn2(9, 0, 2, 48, buffer), -1) << "of no colour";
  gplanes = 24;
}

TEST_F(ImageTest, SavedPicturesArriveAtEveryBitPhaseWholeAndCut) {
  constexpr int width = 21, height = 3, stride = 24 * 3;
  std::vector<std::uint32_t> pixels(width * height);
  std::vector<std::uint8_t> buffer(stride * (height + 1)), read(25600);
  for (int i = 0; i < width * height; ++i) {
    const auto pixel = pixels[static_cast<std::size_t>(i)] =
        static_cast<std::uint32_t>(any(0, 0xFFFFFF));
    point_to_fn2b(i % width, i / width, pixel, 3, stride, buffer);
    ASSERT_EQ(point_from_fn2b(i % width, i / width, 3, stride, buffer), pixel);
  }
  ASSERT_EQ(savebuf_tofile("s.fn2", width, height, stride, buffer), 0);
  EXPECT_EQ(printed_by([&] { ASSERT_EQ(savebuf_tofile("no/s", 9, 9, stride, buffer), 1); }),
            "cannot_create_file\n");
  for (const int wanted : {100, 5}) {
    int w = wanted, h = 100, s = 32767;
    ASSERT_EQ(loadbuf_fromfile("s.fn2", &w, &h, &s, read), 0);
    EXPECT_EQ(std::tuple(w, h, s), std::tuple(std::min(wanted, width), height, stride));
    for (const int x : {-30, -9, 0, 1, 6, 7, 8, 399, 780, 795, 900}) {
      for (const int y : {-2, 40, 598}) {
        draw_buf1b(x, y, w, h, w / 8 + 1, s, read);
        for (int i = 0; i < w * h; ++i)
          expect(x + i % w, y + i / w, pixels[static_cast<std::size_t>(i / w * width + i % w)]);
        ASSERT_EQ(all_pixels(), expected_) << x << ' ' << y;
      }
    }
  }
}

}  // namespace
}  // namespace torve
