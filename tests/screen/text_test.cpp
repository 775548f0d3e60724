// Text in tiny fonts made here, and the colour table behind it.

#include <map>

#include "eps/eps_stream.hpp"
#include "support/screen.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "text/transliteration.hpp"

namespace torve {
namespace {

constexpr int rows = 3;

// Every character is one pixel in its upper left corner; 'W' is all ink.
std::string tiny_font() {
  std::string bytes = {static_cast<char>(rows), 127};
  for (int code = 0; code < 127; ++code) {
    bytes += code == 'W' ? std::string(rows, '\xFF') : std::string{'\x80', 0, 0};
  }
  return bytes;
}

class TextTest : public ScreenTest {
 protected:
  TextTest() {
    write_file("font7.dat", tiny_font());
    write_file("font8.dat", tiny_font());
    std::string advances(3600, '\6');
    advances[('i' - 'a') * 60 + ('l' - 'a')] = '\4';
    write_file("font8.dis", advances);
    reset_text_state();
    defaultfont = 7;
    EXPECT_EQ(init_font(7), 0);
    EXPECT_EQ(init_font2(8), 0);
  }
  ~TextTest() override {
    free_font();
    free_font2();
  }

  // Positions of ink that starts a glyph, in reading order.
  std::string ink() {
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
  const auto drawn = [&](int limit, int cut, const std::function<void()>& draw) {
    clearwin(0, 0, 800, 600, 15);
    X1_min = 16, X1_max = limit, Y1_min = 4, Y1_max = 40;
    xkoord = 20, ykoord = 10;
    truncate1 = cut;
    draw();
    return ink();
  };
  EXPECT_EQ(drawn(100, 0, [] { textn("abc", 0, 15); }), "20,10 28,10 36,10 ") << "fixed cells";
  EXPECT_EQ(drawn(100, 0, [] { textf("ail.", 0, 15, 8); }), "20,10 26,10 30,10 36,10 ")
      << "pair advances; other characters share the class of 'a'";
  EXPECT_EQ(curfnt, 8);
  EXPECT_EQ(drawn(40, 0, [] { textn("abc", 0, 15); }), "20,10 28,10 16,14 ") << "wraps";
  EXPECT_EQ(drawn(40, 1, [] { textn("abc", 0, 15); }), "20,10 28,10 ") << "cut off";
  EXPECT_EQ(drawn(100, 0,
                  [] {
                    ykoord = 41;
                    textn("a", 0, 1);
                  }),
            "20,4 ")
      << "below the area: from its top";
  char line[] = "abcdef";
  EXPECT_EQ(drawn(58, 0, [&] { textnb(line, 0, 15); }), "20,10 28,10 36,10 44,10 ");
  EXPECT_STREQ(line, "abcd") << "the caller's string is cut";
  char none[] = "ab";
  EXPECT_EQ(drawn(17, 0, [&] { textnb(none, 0, 15); }), "") << "no room at all";
}

TEST_F(TextTest, BackgroundsAsEachRoutineTreatsThem) {
  const std::uint32_t paper = colour_pixel(9);
  const auto behind = [&](const std::function<void()>& draw) {
    clearwin(0, 0, 800, 600, 9);
    xkoord = 300, ykoord = 10;
    draw();
    return std::pair(getpixel2c(301, 11), getpixel2c(309, 11));
  };
  const std::uint32_t white = colour_pixel(15);
  EXPECT_EQ(behind([] { textn("ab", 0, 15); }), std::pair(paper, paper)) << "nocolor";
  EXPECT_EQ(behind([] { textn("ab", 0, 4); }), std::pair(colour_pixel(4), colour_pixel(4)));
  EXPECT_EQ(behind([] { textf("ab", 0, 15, 8); }), std::pair(white, paper)) << "all but the last";
  char text[] = "ab";
  EXPECT_EQ(behind([&] { textnb(text, 0, 15); }), std::pair(white, white));
  clearwin(0, 0, 800, 600, 15);
  displaychar(797, 598, rows, 2, 15, 0, glyph_rows('W'));
  displaychar(-5, -1, rows, 2, 15, 0, glyph_rows('W'));
  EXPECT_EQ(getpixel2c(799, 599), colour_pixel(2));
  EXPECT_EQ(getpixel2c(2, 1), colour_pixel(2));
  EXPECT_EQ(getpixel2c(0, 2), white);
}

TEST_F(TextTest, AFontThatCannotBeLoadedLeavesTheOldOne) {
  write_file("font40.dat", tiny_font().substr(0, 100));
  for (const int number : {9, 40}) {
    const std::string name = "font" + std::to_string(number) + ".dat";
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(init_font(number), 1); }),
              "can't open font file " + name + "\n");
    EXPECT_EQ(curfnt, 7);
    EXPECT_EQ(cr, rows + 1);
  }
  for (int code = 0; code < 256; ++code) {
    ASSERT_EQ(glyph_rows(static_cast<char>(code))[0], code == 'W'  ? 0xFF
                                                      : code < 127 ? 0x80
                                                                   : 0)
        << code;
  }
  EXPECT_EQ(fntlen2("il"), 4 + 8);
  EXPECT_EQ(fntlen2(""), 8);
}

TEST_F(TextTest, FixedPointNumbersAndTransliteration) {
  const auto number = [](int value, int decimals) {
    outstream = open_file("n", "w+");
    text1(1, value, decimals, 0, 15);
    std::rewind(outstream.get());
    char line[200] = {};
    EXPECT_NE(std::fgets(line, sizeof line, outstream.get()), nullptr);
    outstream.reset();
    const std::string text = line;
    return text.substr(text.find('(') + 1, text.find(')') - text.find('(') - 1);
  };
  EXPECT_EQ(number(1234, 2), "12.34");
  EXPECT_EQ(number(5, 2), "0.05");
  EXPECT_EQ(number(7, 3), "0.007");
  EXPECT_EQ(number(1234, 0), "1234");
  EXPECT_EQ(number(0, 0), "0");
  const std::map<std::string, std::pair<std::string, int>> words = {
      {"l/odz'", {"\1od\6", 1}}, {"ab", {"ab", 0}}, {"l/a'", {"\1a'", 0}}, {"N'", {"\x18", 1}}};
  for (const auto& [typed, meant] : words) {
    char text[20];
    std::snprintf(text, sizeof text, "%s", typed.c_str());
    EXPECT_EQ(insertPolishChars(text), meant.second) << typed;
    EXPECT_EQ(text, meant.first);
  }
  char character = static_cast<char>(153);
  insertScandiChars(&character);
  EXPECT_EQ(character, 22);
}

TEST_F(TextTest, ColourTableRepeatsAsStated) {
  EXPECT_EQ(colour_pixel(15), 0xFCFCFCU);
  EXPECT_EQ(colour_pixel(5), 0xBC8F8FU);
  EXPECT_EQ(colour_pixel(31), colour_pixel(10));
  EXPECT_EQ(colour_pixel(36), colour_pixel(4));
  EXPECT_EQ(colour_pixel(276), colour_pixel(276 % 16));
  EXPECT_EQ(
      printed_by([] {
        allocate_colours([](ColourRecord& r) { return r.green != 0 && allocate_true_colour(r); });
      }),
      "problems with color 0\nproblems with color 1\nproblems with color 4\n"
      "problems with color 6\n");
  EXPECT_EQ(colour_pixel(4), 0U);
}

TEST_F(TextTest, EpsLinesAndTemplate) {
  write_file("t.dat", "head\n%%End_Setup\nmore\ntail\n");
  FilePtr sample = open_eps("o.eps", "t.dat");
  ASSERT_TRUE(sample);
  write_eps_segment(10, 20, 30, 5, 300);
  write_eps_label(6, 8, 100, 158, 11, "a(b");
  EXPECT_EQ(close_eps(std::move(sample)), 0);
  std::ifstream written("o.eps");
  EXPECT_EQ(
      std::string(std::istreambuf_iterator<char>(written), {}),
      "head\n%%End_Setup\nmore\n"
      "Or moveto 10 CX 280 CX rmoveto 20 CX 15 CX rlineto stroke\n"
      "Or moveto 8 CX 53 CX rmoveto /Times-Roman findfont 12 CX scalefont setfont (a(b) show\n"
      "tail\n");
  write_file("endless.dat", "no end of set-up\n x %%End_Setup\n");
  sample = open_eps("p.eps", "endless.dat");
  ASSERT_TRUE(sample);
  EXPECT_EQ(close_eps(std::move(sample)), 0);
  EXPECT_EQ(std::filesystem::file_size("p.eps"), std::filesystem::file_size("endless.dat"));
  EXPECT_FALSE(open_eps("missing/p.eps", "t.dat"));
  EXPECT_EQ(strip_off_ending("a.b.res"), "a.b");
}

}  // namespace
}  // namespace torve
