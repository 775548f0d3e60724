// Keys typed into a field, and what becomes of its line.

#include "text/field_editing.hpp"

#include <cstring>

#include "dialogs/player.hpp"
#include "text/menu_lines.hpp"

namespace torve {
namespace {

constexpr int line_paper = 3, field_paper = 9, mark_colour = 14;
constexpr int no_mark = -99;

class FieldEditing : public DialogTest {
 protected:
  FieldEditing() {
    X1_min = 100, Y1_min = 50, X1_max = 420, Y1_max = 72;
    fgcol = 0;
    truncate1 = 1;
    for (MenuItem& item : items)
      item.y = 0;
    items[0].x = 5 * cs, items[0].width = 5, items[0].nfields = 2;
    items[1].x = 14 * cs, items[1].width = 3;
    std::snprintf(items[0].text, field_room, "abc");
    std::snprintf(items[1].text, field_room, "xy");
    at_wait = [this] { cursor = find_mark(); };
  }

  // The column of the mark from the field's first, in cells.
  [[nodiscard]] int find_mark() const {
    for (int x = 0; x < 800; ++x) {
      if (getpixel2c(x, 58) == colour_pixel(mark_colour)) return (x - field_x) / cs;
    }
    return no_mark;
  }

  int edit(int field, int limit, const std::string& keys, int coloff = 0) {
    type(keys);
    field_x = 100 + items[field].x - coloff * cs;
    return got_parstring(items, lines, field, coloff, field_x, 50, limit, line_paper, field_paper);
  }

  MenuItem items[2];
  char line[40] = "From       to     .                    ";
  char* lines[1] = {line};
  int field_x = 0, cursor = no_mark;
};

TEST_F(FieldEditing, KeysChangeTextCursorWidthAndLine) {
  const struct {
    const char* keys;
    const char* start;
    int limit;
    const char* text;
    int width, cursor;  // the cursor as the last wait showed it
    const char* row;
  } cases[] = {
      {"\r", "abc", 30, "abc", 5, 0, "From abc   to xy  .      "},
      {"100\r", "0", 30, "1000", 5, 3, "From 1000  to xy  .      "},
      {"\b\r", "abc", 30, "bc", 5, -1, "From bc    to xy  .      "},
      {"\b\b\r", "abc", 30, "c", 5, -1, "From c     to xy  .      "},
      {"\b25\r", "abc", 30, "25bc", 5, 2, "From 25bc  to xy  .      "},
      {"\b\b\b\b\b9\r", "abc", 30, "9", 5, 1, "From 9     to xy  .      "},
      {">>>>Z<<<<<<\r", "abc", 30, "abcZ", 5, 0, "From abcZ  to xy  .      "},
      {">\bQ\r", "abc", 30, "Qbc", 5, 1, "From Qbc   to xy  .      "},
      {"12345\r", "", 30, "12345", 6, 5, "From 12345  to xy  .     "},
      {"123456\r", "", 30, "123456", 7, 6, "From 123456  to xy  .    "},
      {"123456\b\b\r", "", 30, "1234", 7, 4, "From 1234    to xy  .    "},
      {"1234", "", 4, "1234", 5, 3, "From 1234  to xy  .      "},
      {"12", "abcd", 4, "12ab", 5, no_mark, ""},
      {"\033\t\r", "", 30, "\033\t", 5, 2, ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.keys);
    items[0].width = 5, items[1].x = 14 * cs;
    std::snprintf(items[0].text, field_room, "%s", test.start);
    std::snprintf(line, sizeof line, "%s", "From       to     .                    ");
    const std::string keys = test.keys;
    const bool by_itself = keys.back() != '\r';
    EXPECT_EQ(edit(0, test.limit, keys), 1);
    EXPECT_STREQ(items[0].text, test.text);
    EXPECT_EQ(items[0].width, test.width);
    EXPECT_EQ(items[1].x, (9 + test.width) * cs) << "the next field moves along";
    EXPECT_EQ(std::strlen(line), 39U);
    EXPECT_EQ(find_mark(), no_mark) << "gone";
    if (test.cursor != no_mark) {
      EXPECT_EQ(cursor, test.cursor);
    }
    if (*test.row != 0) {
      EXPECT_EQ(text_at(100, 50, 25), test.row);
    }
    EXPECT_TRUE(user_events.empty() || by_itself);
    user_events.clear();
  }
}

TEST_F(FieldEditing, ThirtyCharactersEndTheEdit) {
  EXPECT_EQ(edit(0, 99, std::string(31, 'x')), 1);
  EXPECT_EQ(std::string(items[0].text), std::string(30, 'x'));
  EXPECT_EQ(user_events.size(), 1U) << "the key beyond is not taken";
}

TEST_F(FieldEditing, LaterFieldsWidenNarrowAndEndEmpty) {
  items[1].maxlen = 3;
  EXPECT_EQ(edit(1, 30, "1234567\r"), 1);
  EXPECT_STREQ(items[1].text, "1234567xy");
  EXPECT_EQ(items[1].width, 8);
  EXPECT_EQ(text_at(100, 50, 25), "From abc   to 1234567x . ") << "cut before the label";
  EXPECT_EQ(edit(1, 30, ">>>>>>>\b\b\b\b\b\b\r"), 1);
  EXPECT_EQ(items[1].width, 5) << "down to the first cursor place not beyond maxlen";
  EXPECT_EQ(text_at(100, 50, 25), "From abc   to 1xy   .    ");
  EXPECT_EQ(edit(1, 30, "\b\b\b\b\r"), 0);
}

TEST_F(FieldEditing, ALineKeepsItsLengthAndItsFieldsTheirLabels) {
  MenuItem three[3];
  const int columns[] = {2, 8, 14};
  for (int i = 0; i < 3; ++i) {
    three[i].x = columns[i] * cs, three[i].y = 0, three[i].width = 3;
    std::snprintf(three[i].text, field_room, "%d", i);
  }
  three[0].nfields = 3;
  std::snprintf(line, sizeof line, "a    b:    c:    end");
  const struct {
    int field, direction;
    const char* text;
    int x1, x2;
  } steps[] = {
      {1, 1, "a    b:     c:    en", 8, 15},
      {0, 1, "a     b:     c:    e", 9, 16},
      {1, -1, "a     b:    c:    e ", 9, 15},
      {0, -1, "a    b:    c:    e  ", 8, 14},
  };
  for (const auto& step : steps) {
    modify_line(three, lines, step.field, 0, 50, 0, line_paper, field_paper, step.direction);
    EXPECT_STREQ(line, step.text);
    EXPECT_EQ(three[1].x, step.x1 * cs);
    EXPECT_EQ(three[2].x, step.x2 * cs);
  }
}

TEST_F(FieldEditing, NationalLettersBecomeOneGlyph) {
  plg = 4;
  edit(0, 30, "l/z\r");
  EXPECT_STREQ(items[0].text, "\1zabc");
  EXPECT_EQ(cursor, 2);
  plg = 1;
  edit(0, 30, "\x84\r");
  EXPECT_STREQ(items[0].text, "\x12\1zabc");
}

TEST_F(FieldEditing, APressEndsItAndIsKept) {
  type("q");
  press(300, 300);
  EXPECT_EQ(edit(0, 30, ""), 1);
  EXPECT_STREQ(items[0].text, "qabc");
  EXPECT_TRUE(last_edit_had_a_key());
  readmouse(&buttons, &X, &Y);
  EXPECT_EQ(buttons, 1);
  EXPECT_EQ(X, 300);
  press(300, 300);
  edit(0, 30, "");
  EXPECT_FALSE(last_edit_had_a_key());
  term = 1;
  EXPECT_EQ(edit(0, 30, ""), 0) << "terminal mode";
}

TEST_F(FieldEditing, NothingIsDrawnBesideTheTextArea) {
  // One field scrolled half out on the left, one that reaches beyond the right edge.
  std::vector<std::uint32_t> before = all_pixels();
  items[1].x = 38 * cs;
  edit(0, 30, "\b\b1234567890\r", 7);
  EXPECT_EQ(text_at(100, 50, 12), "34567890c to");
  edit(1, 30, "1234567890\r");
  std::vector<std::uint32_t> after = all_pixels();
  for (std::size_t i = 0; i < before.size(); ++i) {
    const int x = static_cast<int>(i % 800), y = static_cast<int>(i / 800);
    if (Rect{100, 50, 420, 72}.contains(x, y)) continue;
    ASSERT_EQ(after[i], before[i]) << x << "," << y;
  }
  EXPECT_EQ(text_at(100, 50, 6), "From 1");
}

TEST_F(FieldEditing, ChoicesRotate) {
  char text[field_room] = "\1one\2two\3three";
  const char* shown[] = {"two", "three", "one"};
  items[0].itemflags = ItemFlags::selection;
  for (const char* choice : shown) {
    next_selection(text);
    std::memcpy(items[0].text, text, sizeof text);
    display_line(items, lines, 2, 0, 0, 0, line_paper, field_paper);
    EXPECT_EQ(text_at(140, 50, 5).substr(0, std::strlen(choice)), choice);
  }
  EXPECT_STREQ(text, "\1one\2two\3three");
  char lone[field_room] = "\1only";
  next_selection(lone);
  EXPECT_STREQ(lone, "\1only");
}

}  // namespace
}  // namespace torve
