// What fields of property menus hold: words and numbers.

#include <cmath>
#include <random>
#include <tuple>

#include "diagram/properties/number_fields.hpp"
#include "diagram/properties/vocabulary.hpp"
#include "dialogs/player.hpp"

namespace torve {
namespace {

class PropertyFields : public DialogTest {};

TEST_F(PropertyFields, WordsGoRoundAndBack) {
  for (const Vocabulary table :
       {Vocabulary(ps_modes), Vocabulary(exit_filters), Vocabulary(distributions),
        Vocabulary(selection_rules), Vocabulary(measures), Vocabulary(yes_no)}) {
    char field[field_room] = {}, turning[field_room] = {};
    int code = -1;
    EXPECT_EQ(cnvtbl_set(table, 0, turning, &code), 0);
    std::strcat(turning, " -12  ");
    for (const VocabularyEntry& entry : table) {
      EXPECT_EQ(cnvtbl_i_to_s(table, entry.code, field), 0);
      EXPECT_STREQ(field, entry.word);
      EXPECT_EQ(cnvtbl_s_to_i_noerror(table, turning, &code), 0);
      EXPECT_EQ(code, entry.code);
      EXPECT_EQ(circulate(table, turning), 0);
    }
    EXPECT_EQ(turning, table[0].word + std::string(" -12"));
    EXPECT_EQ(cnvtbl_l_to_s(table, 99, field) + cnvtbl_setl(table, 9, field, &code), 2);
    EXPECT_STREQ(field, table.back().word) << "untouched";
  }
}

TEST_F(PropertyFields, TheLongestWordCounts) {
  constexpr VocabularyEntry nested[] = {{"a", 1}, {"a b", 2}, {"a b c", 3}};
  constexpr int none = 0;
  const std::tuple<Vocabulary, const char*, int, const char*> cases[] = {
      {distributions, "trace1-driven 1234567890123456", 7, "user1 1234567890123456"},
      {ps_modes, "FIFO 1234567890123456789012345", 1, "PS-RR 123456789012345678901234"},
      {ps_modes, "  Channel", 7, "FIFO"},
      {exit_filters, "ACG 3", 3, "none"},
      {nested, "a b", 2, "a b c"},
      {nested, "a c", 1, "a b c"},
      {distributions, "user", none, "user"},
      {exit_filters, "ACG", none, "ACG"},
      {ps_modes, "FIFOs", none, "FIFOs"},
      {ps_modes, "", none, ""},
  };
  for (const auto& [table, text, code, next] : cases) {
    char field[field_room];
    std::strcpy(field, text);
    int found = none;
    EXPECT_EQ(cnvtbl_s_to_l_noerror(table, field, &found), code == none ? 1 : 0) << text;
    if (code != none) {
      EXPECT_EQ(cnvtbl_s_to_l(table, field, &found), 0) << text;
    }
    EXPECT_EQ(found, code) << text;
    EXPECT_EQ(circulate(table, field), code == none ? 1 : 0) << text;
    EXPECT_STREQ(field, next);
  }
}

TEST_F(PropertyFields, RealsAreReadAsTyped) {
  constexpr double most = std::numeric_limits<double>::max();
  const std::tuple<const char*, double, int> cases[] = {
      {"2,5 s", 2.5, 3},      {" \t-1e+06\n", -1e6, 8},
      {".5", 0.5, 2},         {"-,5", -0.5, 3},
      {"1.05", 1.05, 4},      {".00012345678", 0.000123456, 12},
      {"+7x9 1", 7, 4},       {"3000000000", 3e9, 10},
      {"1.5.7", 1.5, 5},      {"1e999", most, 5},
      {"-1e99999", -most, 8}, {"1e-999", 0, 6},
      {"5e", 5, 2},           {"", 0, 0},
      {"  -", 0, 2},          {"inf", 0, 0},
      {"e5", 0, 0},           {".", 0, 0},
      {"--1", 0, 0},
  };
  for (const auto& [text, expected, length] : cases) {
    double value = 77;
    EXPECT_EQ(get_float(text, &value) - text, length) << text;
    EXPECT_DOUBLE_EQ(value, expected) << text;
  }
}

TEST_F(PropertyFields, RealsComeBackFromTheirTexts) {
  std::mt19937 random(26);
  std::uniform_real_distribution<double> mantissa(-10, 10), far(-290, 290), near(-8, 8);
  for (int i = 0; i < 200'000; ++i) {
    const double value = mantissa(random) * std::pow(10, i % 2 == 0 ? near(random) : far(random));
    char text[40], again[40];
    const int length = std::snprintf(text, sizeof text, "%g", value);
    double back = 0;
    ASSERT_EQ(get_float(text, &back), text + length);
    ASSERT_EQ(std::signbit(back), std::signbit(value)) << text;
    ASSERT_LE(std::abs(back - value), 5.001e-6 * std::abs(value)) << text;
    std::snprintf(again, sizeof again, "%g", back);
    ASSERT_STREQ(again, text);
  }
}

TEST_F(PropertyFields, IntegersStayInTheirRange) {
  const std::tuple<const char*, int, int, int> cases[] = {
      {"\t+7,5", 7, 7, 3},
      {"32768", 32767, 32768, 5},
      {"-40000", -32768, -40000, 6},
      {"2147483648", 32767, 2147483647, 10},
      {"-99999999999999999999", -32768, -2147483647 - 1, 21},
      {"  x", 0, 0, 2},
      {" -", 0, 0, 1},
  };
  for (const auto& [text, as_short, as_long, length] : cases) {
    std::int16_t small = 77;
    std::int32_t large = 77;
    EXPECT_EQ(get_short(text, &small) - text, length) << text;
    EXPECT_EQ(get_long(text, &large) - text, length) << text;
    EXPECT_EQ(small, as_short) << text;
    EXPECT_EQ(large, as_long) << text;
  }
}

}  // namespace
}  // namespace torve
