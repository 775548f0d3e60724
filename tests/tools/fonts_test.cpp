#include <numeric>

#include <gtest/gtest.h>

#include "font_cells.hpp"
#include "national_letters.hpp"
#include "pair_advances.hpp"

namespace torve {
namespace {

constexpr const char* debian_fonts = "/usr/share/fonts/X11/misc/";

CellMap face(const char* name) {
  return read_pcf_font(debian_fonts + std::string(name) + ".pcf.gz");
}

const FontCells& labels() {
  static const FontCells cells = proportional_cells(face("6x10"), face("clR6x10"));
  return cells;
}

int advance(const PairAdvances& table, int first, int second) {
  return table[static_cast<std::size_t>(first * pair_classes + second)];
}

constexpr int upper(char letter) {
  return letter - 35;
}
constexpr int lower(char letter) {
  return letter - 'a';
}

TEST(fonts, a_glyph_is_read_upright_on_the_baseline) {
  const Cell expected = {0x00, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0xf8, 0x00, 0x00};
  EXPECT_EQ(labels()['L'], expected);
  const Cell& descender = labels()['p'];
  EXPECT_NE(descender[9], 0);
  EXPECT_EQ(labels()['a'][8], 0);
}

TEST(fonts, a_missing_font_is_an_error) {
  EXPECT_THROW((void)read_pcf_font("/nowhere/6x10.pcf.gz"), std::runtime_error);
}

TEST(fonts, every_code_shows_something_but_the_blanks) {
  const FontCells menu = fixed_cells(face("clB8x10"), face("6x10"));
  const FontCells greek = greek_cells(face("6x10"));
  for (const FontCells* cells : {&menu, &labels(), &greek}) {
    for (int code = 0; code < font_glyphs; ++code) {
      const int end = ink_end((*cells)[static_cast<std::size_t>(code)]);
      EXPECT_EQ(end == 0, code == ' ' || code == 160) << code;
    }
  }
}

TEST(fonts, national_letters_are_all_different_and_none_is_a_box) {
  const FontCells menu = fixed_cells(face("clB8x10"), face("6x10"));
  for (const FontCells* cells : {&menu, &labels()}) {
    for (std::size_t a = 1; a <= national_letter_count; ++a) {
      EXPECT_NE((*cells)[a], (*cells)[0]) << a;
      for (std::size_t b = 1; b < a; ++b)
        EXPECT_NE((*cells)[a], (*cells)[b]) << a << ' ' << b;
    }
  }
}

TEST(fonts, a_mark_above_takes_one_row_out_of_a_capital) {
  CellMap face = {{'Z', {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}}, {'z', {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}}};
  EXPECT_EQ(composed_letter(15, face), (Cell{0b00011000, 0, 1, 2, 3, 5, 6, 7, 8, 9}));
  EXPECT_EQ(composed_letter(7, face), (Cell{0b00011000, 0b00011001, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(fonts, greek_letters_lie_where_the_symbol_encoding_has_them) {
  const CellMap source = face("6x10");
  const FontCells greek = greek_cells(source);
  EXPECT_EQ(greek['a'], left_justified(source.at(0x3b1)));
  EXPECT_EQ(greek['W'], left_justified(source.at(0x3a9)));
}

TEST(fonts, numbers_share_one_advance_so_that_columns_line_up) {
  const PairAdvances table = pair_advances(labels());
  for (int second = 0; second < pair_classes; ++second) {
    EXPECT_EQ(advance(table, 0, second), 6) << second;
    EXPECT_EQ(advance(table, 27, second), 6) << second;
  }
  for (const char c : {'0', '8', '.', '-', '+', 'e', '/', ':', '='}) {
    EXPECT_LE(ink_end(labels()[static_cast<std::uint8_t>(c)]), shared_ink_width) << c;
  }
}

TEST(fonts, letters_close_up_only_where_their_shapes_allow) {
  const PairAdvances table = pair_advances(labels());
  EXPECT_EQ(advance(table, upper('T'), lower('o')), 5) << "the o goes under the arm of the T";
  EXPECT_EQ(advance(table, upper('H'), upper('H')), 6) << "stem beside stem";
  EXPECT_EQ(advance(table, lower('i'), lower('l')), 4);
  EXPECT_EQ(advance(table, lower('f'), lower('f')), 6) << "one clear column in a row is too tight";
  for (int first = 1; first < 26; ++first) {
    const int ink = ink_end(labels()[static_cast<std::size_t>('a' + first)]);
    for (int second = 0; second < pair_classes; ++second) {
      EXPECT_GE(advance(table, first, second), ink);
      EXPECT_LE(advance(table, first, second), ink + 1);
    }
  }
}

}  // namespace
}  // namespace torve
