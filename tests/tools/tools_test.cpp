// XPM icons, and fonts made of the system's.

#include <stdexcept>

#include <gtest/gtest.h>

#include "font_cells.hpp"
#include "national_letters.hpp"
#include "pair_advances.hpp"
#include "xpm.hpp"

namespace torve {
namespace {

CellMap face(const char* name) {
  return read_pcf_font("/usr/share/fonts/X11/misc/" + std::string(name) + ".pcf.gz");
}

const FontCells& labels() {
  static const FontCells cells = proportional_cells(face("6x10"), face("clR6x10"));
  return cells;
}

TEST(fonts, every_code_shows_something_and_no_letter_looks_like_another) {
  const FontCells menu = fixed_cells(face("clB8x10"), face("6x10"));
  for (const FontCells& cells : {menu, labels(), greek_cells(face("6x10"))}) {
    for (std::size_t code = 0; code < font_glyphs; ++code)
      EXPECT_EQ(ink_end(cells[code]) == 0, code == ' ' || code == 160) << code;
  }
  for (const FontCells& cells : {menu, labels()}) {
    for (std::size_t a = 1; a <= national_letter_count; ++a) {
      for (std::size_t b = 0; b < a; ++b)
        EXPECT_NE(cells[a], cells[b]) << a << ' ' << b;
    }
  }
}

TEST(fonts, a_mark_above_takes_one_row_out_of_a_capital) {
  CellMap face = {{'Z', {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}}, {'z', {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}}};
  EXPECT_EQ(composed_letter(15, face), (Cell{0b00011000, 0, 1, 2, 3, 5, 6, 7, 8, 9}));
  EXPECT_EQ(composed_letter(7, face), (Cell{0b00011000, 0b00011001, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(fonts, letters_close_up_only_where_their_shapes_allow) {
  const PairAdvances table = pair_advances(labels());
  const auto advance = [&](char first, char second) {
    const auto class_of = [](char letter) { return letter - (letter < 'a' ? 35 : 'a'); };
    return table[static_cast<std::size_t>(class_of(first) * pair_classes + class_of(second))];
  };
  EXPECT_EQ(advance('T', 'o'), 5) << "the o goes under the arm of the T";
  EXPECT_EQ(advance('i', 'l'), 4) << "justified, stem beside stem";
  EXPECT_EQ(advance('f', 'f'), 6) << "one clear column in a row is too tight";
  for (char second = 'a'; second <= 'z'; ++second) {
    EXPECT_EQ(advance('a', second), 6) << "the class of numbers, so that columns line up";
    for (char first = 'b'; first <= 'z'; ++first) {
      const int room = advance(first, second) - ink_end(labels()[static_cast<std::size_t>(first)]);
      EXPECT_TRUE(room == 0 || room == 1) << first << second;
    }
  }
  for (const char c : {'0', '8', '.', '-', '+', 'e', '/', ':', '='})
    EXPECT_LE(ink_end(labels()[static_cast<std::uint8_t>(c)]), shared_ink_width) << c;
}

TEST(xpm, what_cannot_be_read_is_refused) {
  const std::pair<const char*, const char*> cases[] = {
      {"numbers missing", R"("2 1 1" "a c #000000" "aa")"},
      {"a row missing", R"("2 2 1 1" "a c #000000" "aa")"},
      {"a short row", R"("2 1 1 1" "a c #000000" "a")"},
      {"a character without a colour", R"("2 1 1 1" "a c #000000" "ab")"}};
  for (const auto& [fault, text] : cases)
    EXPECT_THROW((void)parse_xpm(text), std::runtime_error) << fault;
  Picture picture = {.width = 100, .height = 82, .pixels = std::vector<std::uint32_t>(8300)};
  EXPECT_NO_THROW((void)fn2_bytes(picture));  // 13 x 24 x 82 = 25,584 bytes
  picture.height = 83;
  EXPECT_THROW((void)fn2_bytes(picture), std::runtime_error);
}

}  // namespace
}  // namespace torve
