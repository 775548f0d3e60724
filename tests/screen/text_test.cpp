// Text in tiny fonts made here, and in EPS files.

#include "eps/eps_stream.hpp"
#include "support/screen.hpp"
#include "text/fonts.hpp"
#include "text/menu_lines.hpp"
#include "text/text_output.hpp"
#include "text/transliteration.hpp"

namespace torve {
namespace {

constexpr int rows = 3;

// Every character is one pixel in its upper left corner; 'W' is all ink.
std::string tiny_font() {
  std::string bytes = {static_cast<char>(rows), 127};
  for (int code = 0; code < 127; ++code)
    bytes += code == 'W' ? std::string(rows, '\xFF') : std::string{'\x80', 0, 0};
  return bytes;
}

class TextTest : public ScreenTest {
 protected:
  TextTest() {
    write_file("font7.dat", tiny_font());
    write_file("font8.dat", tiny_font());
    std::string advances(3600, '\6');
    advances[('i' - 'a') * 60 + ('l' - 'a')] = '\4', advances[('l' - 'a') * 60] = '\5';
    write_file("font8.dis", advances);
    reset_text_state();
    defaultfont = 7;
    EXPECT_EQ(init_font(7) + init_font2(8), 0);
  }
  ~TextTest() override { free_font(), free_font2(); }

  // The positions of the ink, in reading order.
  static std::string ink() {
    std::string found;
    const std::vector<std::uint32_t> pixels = all_pixels();
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      if (pixels[i] == 0) found += std::to_string(i % 800) + "," + std::to_string(i / 800) + " ";
    }
    return found;
  }

  TemporaryDirectory directory_;
};

TEST_F(TextTest, CharactersStandWhereTheRulesPutThem) {
  static char line[7];
  const struct {
    int limit, row, cut;
    const char* text;
    void (*draw)(const char* text);
    const char *ink, *what;
  } cases[] = {
      {100, 10, 0, "abc", [](const char* t) { textn(t, 0, 15); }, "20,10 28,10 36,10 ", "cells"},
      {100, 10, 0, "ail.", [](const char* t) { textf(t, 0, 15, 8); }, "20,10 26,10 30,10 35,10 ",
       "pair advances; other characters share the class of 'a'"},
      {40, 10, 0, "abc", [](const char* t) { textn(t, 0, 15); }, "20,10 28,10 16,14 ", "wraps"},
      {40, 10, 1, "abc", [](const char* t) { textn1(8, 0, "", 0, 0), textn2(t, 0, 15); },
       "20,10 28,10 ", "in cells of the default font, too"},
      {40, 10, 1, "abc", [](const char* t) { textn(t, 0, 15); }, "20,10 28,10 ", "cut off"},
      {100, 41, 0, "a", [](const char* t) { textn(t, 0, 1); }, "20,4 ", "from the area's top"},
      {58, 10, 0, "abcdef", [](const char*) { textnb(line, 0, 15); }, "20,10 28,10 36,10 44,10 ",
       "the caller's string is cut"},
      {17, 10, 0, "ab", [](const char*) { textnb(line, 0, 15); }, "", "no room at all"},
      {100, 10, 0, "l/o\x99", [](const char* t) { plg = 7, otext(t, 0, 15), plg = 0; },
       "20,10 28,10 36,10 ", "letters of two nations"},
      {100, 10, 0, "a", [](const char* t) { osprints(t, 0, 30), osprints(t, 0, 32); },
       "20,10 20,30 ", "and down to the row"}};
  for (const auto& c : cases) {
    clearwin(0, 0, 800, 600, 15);
    X1_min = 16, X1_max = c.limit, Y1_min = 4, Y1_max = 40;
    xkoord = 20, ykoord = c.row;
    truncate1 = c.cut;
    fgcol = 0, bgcol = 15;
    std::snprintf(line, sizeof line, "%s", c.text);
    c.draw(c.text);
    EXPECT_EQ(ink(), c.ink) << c.what;
  }
}

TEST_F(TextTest, BackgroundsAsEachRoutineTreatsThem) {
  static char line[] = "ab";
  const struct {
    void (*draw)();
    int first, last;                                  // colours behind the two letters
  } cases[] = {{[] { textn("ab", 0, 15); }, 9, 9},    // nocolor
               {[] { textn2("ab", 0, 15); }, 15, 9},  // all but the last
               {[] { textf("ab", 0, 15, 8); }, 15, 9},
               {[] { textnb(line, 0, 15); }, 15, 15}};
  for (const auto& c : cases) {
    clearwin(0, 0, 800, 600, 9);
    xkoord = 300, ykoord = 10;
    c.draw();
    EXPECT_EQ(getpixel2c(301, 11), colour_pixel(c.first));
    EXPECT_EQ(getpixel2c(309, 11), colour_pixel(c.last));
  }
  displaychar(797, 598, rows, 2, 15, 0, glyph_rows('W'));
  displaychar(-5, -1, rows, 2, 15, 0, glyph_rows('W'));
  EXPECT_EQ(getpixel2c(799, 599), colour_pixel(2));
  EXPECT_EQ(getpixel2c(2, 1), colour_pixel(2));
  EXPECT_EQ(getpixel2c(0, 2), colour_pixel(9));
}

TEST_F(TextTest, AFontThatCannotBeLoadedLeavesTheOldOne) {
  write_file("font40.dat", tiny_font().substr(0, 100));
  write_file("font41.dat", std::string("\0\xFF", 2));
  for (const int number : {9, 40, 41}) {
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(init_font(number), 1); }),
              "can't open font file font" + std::to_string(number) + ".dat\n");
    EXPECT_EQ(std::pair(curfnt, cr), std::pair(7, rows + 1));
  }
  for (const auto& [code, row] : {std::pair('W', 0xFF), {'a', 0x80}, {'\x7F', 0}, {'\xFF', 0}})
    EXPECT_EQ(glyph_rows(code)[0], row) << code;
  EXPECT_EQ(fntlen2("il"), 4 + 8);
}

TEST_F(TextTest, Transliteration) {
  for (const auto& [typed, meant] :
       {std::pair("l/odz'", "\1od\6"), {"ab", "ab"}, {"l/a'", "\1a'"}}) {
    char text[20];
    std::snprintf(text, sizeof text, "%s", typed);
    EXPECT_EQ(insertPolishChars(text), meant[1] == 'o' ? 1 : 0) << typed;
    EXPECT_STREQ(text, meant);
  }
  char character = static_cast<char>(153);
  insertScandiChars(&character);
  EXPECT_EQ(character, 22);
}

TEST_F(TextTest, EpsLinesNumbersAndTemplate) {
  write_file("t.dat", "head\n%%End_Setup\nmore\ntail\n");
  FilePtr sample = open_eps("o.eps", "t.dat");
  ASSERT_TRUE(sample);
  write_eps_segment(10, 20, 30, 5, 300);
  write_eps_label(6, 8, 100, 158, 11, "a(b");
  for (const auto& [value, decimals] : {std::pair(1234, 2), {5, 2}, {1234, 0}})
    text1(1, value, decimals, 0, 15);
  EXPECT_EQ(close_eps(std::move(sample)), 0);
  const std::string text = read_file("o.eps");
  EXPECT_TRUE(text.starts_with(
      "head\n%%End_Setup\nmore\n"
      "Or moveto 10 CX 280 CX rmoveto 20 CX 15 CX rlineto stroke\n"
      "Or moveto 8 CX 53 CX rmoveto /Times-Roman findfont 12 CX scalefont setfont (a(b) show\n"));
  for (const char* part : {"(12.34) show", "(0.05) show", "(1234) show", "show\ntail\n"})
    EXPECT_NE(text.find(part), std::string::npos) << part;
}

TEST_F(TextTest, AFieldPushesThoseBehindIt) {
  MenuItem items[] = {{"a", 0, 0, 30, 2, 2}, {"b", 32, 0, 30, 2}};
  X1_min = 16, X1_max = 100, Y1_min = 4, Y1_max = 40;
  fgcol = 0;
  for (const auto& [delta, shown] : {std::pair(1, "16,10 56,10 "), {-2, "16,10 40,10 "}}) {
    clearwin(0, 0, 800, 600, 9);
    modboxes(items, 0, 0, 10, 15, delta);
    EXPECT_EQ(ink(), shown);
  }
  EXPECT_EQ(items[0].width, 1);
}

}  // namespace
}  // namespace torve
