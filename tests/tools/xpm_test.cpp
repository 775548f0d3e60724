#include "xpm.hpp"

#include <stdexcept>

#include <gtest/gtest.h>

namespace torve {
namespace {

std::string xpm(const std::string& size, const std::string& colours, const std::string& rows) {
  return "/* XPM */\nstatic char *x[] = {\n" + size + colours + rows + "};\n";
}

constexpr const char* two_colours = "\". c #804020\",\n\"  c #0000ff\",\n";

TEST(xpm, pixels_come_out_row_by_row_in_their_colours) {
  const Picture picture = parse_xpm(xpm("\"3 2 2 1\",\n", two_colours, "\". .\",\n\"  .\"\n"));
  EXPECT_EQ(picture.width, 3);
  EXPECT_EQ(picture.height, 2);
  constexpr std::uint32_t brown = 0x804020;
  constexpr std::uint32_t blue = 0x0000ff;
  EXPECT_EQ(picture.pixels, (std::vector<std::uint32_t>{brown, blue, brown, blue, blue, brown}));
}

TEST(xpm, broken_pictures_are_refused) {
  struct Case {
    const char* fault;
    const char* size;
    const char* colours;
    const char* rows;
  };
  const Case cases[] = {
      {"no strings", "", "", ""},
      {"string without an end", "\"3 2 2 1", "", ""},
      {"numbers missing", "\"3 2 2\",\n", two_colours, "\". .\",\n\"  .\"\n"},
      {"two characters a pixel", "\"3 2 2 2\",\n", two_colours, "\". .\",\n\"  .\"\n"},
      {"no rows at all", "\"3 0 2 1\",\n", two_colours, ""},
      {"a row missing", "\"3 2 2 1\",\n", two_colours, "\". .\"\n"},
      {"a short row", "\"3 2 2 1\",\n", two_colours, "\". .\",\n\" .\"\n"},
      {"a character without a colour", "\"3 2 2 1\",\n", two_colours, "\". .\",\n\" x.\"\n"},
      {"a colour by name", "\"1 1 1 1\",\n", "\". c red\",\n", "\".\"\n"},
      {"a colour with a bad digit", "\"1 1 1 1\",\n", "\". c #12345g\",\n", "\".\"\n"},
  };
  for (const Case& c : cases) {
    EXPECT_THROW((void)parse_xpm(xpm(c.size, c.colours, c.rows)), std::runtime_error) << c.fault;
  }
}

TEST(xpm, fn2_holds_the_planes_most_significant_first) {
  // 9 pixels need two bytes a plane row; the last pixel is the top bit of the second byte.
  Picture picture = {.width = 9, .height = 2, .pixels = std::vector<std::uint32_t>(18)};
  picture.pixels[0] = 0x800001;
  picture.pixels[9 + 8] = 0x000100;
  const std::string bytes = fn2_bytes(picture);
  ASSERT_EQ(bytes.size(), 8U + 2U * 48U);
  EXPECT_EQ(bytes.substr(0, 8), std::string("\x30\0\x18\0\x02\0\x09\0", 8));
  std::string expected(96, '\0');
  expected[0] = '\x80';                // plane 0, row 0
  expected[23 * 2] = '\x80';           // plane 23, row 0
  expected[48 + 15 * 2 + 1] = '\x80';  // plane 15 is bit 8, row 1
  EXPECT_EQ(bytes.substr(8), expected);
}

TEST(xpm, fn2_refuses_what_the_reader_cannot_hold) {
  Picture picture = {.width = 100, .height = 82, .pixels = std::vector<std::uint32_t>(8200)};
  EXPECT_NO_THROW((void)fn2_bytes(picture));  // 13 x 24 x 82 = 25,584 bytes
  picture.height = 83;
  picture.pixels.resize(8300);
  EXPECT_THROW((void)fn2_bytes(picture), std::runtime_error);
}

}  // namespace
}  // namespace torve
