// fn2 pictures: what is read, and what is refused.

#include "picture/fn2.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

std::string header(int stride, int planes, int height, int width) {
  std::string bytes;
  for (const int value : {stride, stride >> 8, planes, 0, height, height >> 8, width, width >> 8}) {
    bytes += static_cast<char>(value & 0xFF);
  }
  return bytes;
}

class PictureTest : public ScreenTest {
 protected:
  TemporaryDirectory directory_;
};

TEST_F(PictureTest, ColourNumbersBecomeColours) {
  // Two rows of nine pixels, four planes: number 4 (red) first, the others 15 and 1.
  write_file("p.fn2", header(8, 0, 2, 9) + std::string("\x7F\x80\xFF\x80\x7F\x80\x7F\x80", 8) +
                          std::string("\0\0\0\0\0\0\xFF\x80", 8));
  int width = 0;
  int height = 0;
  ASSERT_EQ(getpicture("p.fn2", 101, 50, &width, &height), 0);
  EXPECT_EQ(std::pair(width, height), std::pair(9, 2));
  EXPECT_EQ(getpixel2c(101, 50), colour_pixel(4));
  EXPECT_EQ(getpixel2c(109, 50), colour_pixel(15));
  EXPECT_EQ(getpixel2c(109, 51), colour_pixel(1));
  EXPECT_EQ(getpixel2c(110, 50), colour_pixel(15)) << "nothing beside the picture";
  EXPECT_EQ(gplanes, 24);
}

TEST_F(PictureTest, HeadersThatCannotBeTrueAreRefused) {
  const std::vector<std::uint32_t> before = all_pixels();
  const std::pair<std::string, const char*> cases[] = {
      {"", "empty"},
      {header(144, 24, 43, 43).substr(0, 7), "cut in the header"},
      {header(143, 24, 43, 43), "stride below a row"},
      {header(144, 25, 43, 43), "more planes than the screen"},
      {header(144, 255, 43, 43), "far more planes"},
      {header(144, 24, 0, 43), "no rows"},
      {header(144, 24, 43, 0), "no columns"},
      {header(144, 24, 178, 43), "larger than the buffer"},
      {header(65535, 24, 1000, 43), "a stride beyond the buffer"},
      {header(65535, 24, 65535, 65535), "everything at its end"},
  };
  for (const auto& [bytes, what] : cases) {
    write_file("bad.fn2", bytes);
    int width = 5;
    int height = 5;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(getpicture("bad.fn2", 9, 9, &width, &height), 1); }),
              "file_error\n")
        << what;
    EXPECT_EQ(width + height, 0) << what;
  }
  int width = 0;
  int height = 0;
  EXPECT_EQ(printed_by([&] { EXPECT_EQ(getpicture("none.fn2", 9, 9, &width, &height), 1); }),
            "cannot_find_file\n");
  EXPECT_EQ(all_pixels(), before);
}

TEST_F(PictureTest, SavedBuffersAreReadBackWholeAndCut) {
  constexpr int width = 16, height = 3, stride = 24 * 3;
  std::vector<std::uint8_t> buffer(stride * (height + 1));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      point_to_fn2b(x, y, static_cast<std::uint32_t>(x * 1000 + y), 3, stride, buffer);
    }
  }
  ASSERT_EQ(savebuf_tofile("s.fn2", width, height, stride, buffer), 0);
  EXPECT_EQ(std::filesystem::file_size("s.fn2"), 8U + height * 24 * 3);
  for (const int wanted : {100, 5}) {
    std::vector<std::uint8_t> read(25600);
    int w = wanted, h = 100, s = 32767;
    ASSERT_EQ(loadbuf_fromfile("s.fn2", &w, &h, &s, read), 0);
    EXPECT_EQ(std::tuple(w, h, s), std::tuple(std::min(wanted, width), height, stride));
    draw_buf1b(200, 100, w, h, w / 8 + 1, s, read);
    EXPECT_EQ(getpixel2c(200 + w - 1, 102), static_cast<std::uint32_t>((w - 1) * 1000 + 2));
  }
}

}  // namespace
}  // namespace torve
