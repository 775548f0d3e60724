// Keys typed into a field, and what becomes of its line.

#include "text/field_editing.hpp"

#include "dialogs/player.hpp"

namespace torve {
namespace {

class FieldEditing : public DialogTest {
 protected:
  FieldEditing() {
    X1_min = 100, Y1_min = 50, X1_max = 420, Y1_max = 72;
    fgcol = 0, truncate1 = 1;
    start("abc");
    at_wait = [this] { cursor = find_mark(); };
  }

  void start(const char* text) {
    items[0] = {"", 40, 0, 30, 5, 2}, items[1] = {"xy", 112, 0, 3, 3};
    std::snprintf(items[0].text, field_room, "%s", text);
    std::snprintf(line, sizeof line, "%s", "From       to    .                     ");
  }

  // The cell of the mark from the field's first; -2: there is none.
  [[nodiscard]] int find_mark() const {
    return static_cast<int>(text_at(field_x - 8, 58, 30, colour_pixel(14)).find('\xFF')) - 1;
  }

  int edit(int field, int limit, const std::string& keys, int coloff = 0) {
    type(keys);
    field_x = 100 + items[field].x - coloff * 8;
    return got_parstring(items, lines, field, coloff, field_x, 50, limit, 3, 9);
  }

  MenuItem items[2];
  char line[40];
  char* lines[1] = {line};
  int field_x = 0, cursor = -2;  // as the last wait showed it
};

TEST_F(FieldEditing, KeysChangeTextCursorWidthAndLine) {
  const struct {
    const char *keys, *start, *text;
    int width, cursor, limit;
    const char* row;
    int letters = 0;  // of a nation
  } cases[] = {{"100\r", "0", "1000", 5, 3, 30, "From 1000  to xy .       "},
               {"\b25\r", "abc", "25bc", 5, 2, 30, "From 25bc  to xy .       "},
               {">>>>Z<<<<<<\r", "abc", "abcZ", 5, 0, 30, "From abcZ  to xy .       "},
               {"123456\b\b\r", "", "1234", 7, 4, 30, "From 1234    to xy .     "},
               {"1234", "", "1234", 5, 3, 4, "From 1234  to xy .       "},
               {"12\r", "abcd", "12ab", 5, 2, 4, ""},
               {"l/z\r", "abc", "\1zabc", 5, 2, 30, "", 4},
               {"\x84\r", "bc", "\022bc", 5, 1, 30, "", 1},
               {"\033\t\r", "", "\033\t", 5, 2, 30, ""}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.keys);
    start(test.start);
    plg = test.letters;
    EXPECT_EQ(edit(0, test.limit, test.keys), 1);
    EXPECT_STREQ(items[0].text, test.text);
    EXPECT_EQ(items[0].width, test.width);
    EXPECT_EQ(items[1].x, (9 + test.width) * 8) << "the next field moves along";
    EXPECT_EQ(find_mark(), -2) << "gone";
    EXPECT_EQ(cursor, test.cursor);
    EXPECT_EQ(text_at(100, 50, 25).substr(0, std::strlen(test.row)), test.row);
  }
}

TEST_F(FieldEditing, LaterFieldsWidenNarrowAndEndEmptyOrFull) {
  EXPECT_EQ(edit(1, 30, "1234567\r"), 1);
  EXPECT_EQ(items[1].width, 8);
  EXPECT_EQ(text_at(100, 50, 25), "From abc   to 1234567x.  ") << "cut before the label";
  EXPECT_EQ(edit(1, 30, ">>>>>>>\b\b\b\b\b\b\r"), 1);
  EXPECT_EQ(items[1].width, 5) << "down to the first cursor place not beyond maxlen";
  EXPECT_EQ(text_at(100, 50, 25), "From abc   to 1xy  .     ");
  EXPECT_EQ(edit(1, 30, "\b\b\b\b\r"), 0);
  EXPECT_EQ(edit(1, 99, std::string(31, 'x')), 1);
  EXPECT_EQ(std::string(items[1].text), std::string(30, 'x'));
  EXPECT_EQ(user_events.size(), 1U) << "the key beyond is not taken";
}

TEST_F(FieldEditing, APressEndsItAndIsKept) {
  type("q");
  press(300, 300);
  EXPECT_EQ(edit(0, 30, ""), 1);
  EXPECT_STREQ(items[0].text, "qabc");
  readmouse(&buttons, &X, &Y);
  EXPECT_EQ(buttons * 1000 + X, 1300);
  term = text_console;
  EXPECT_EQ(edit(0, 30, ""), 0) << "terminal mode";
}

// One field scrolled half out on the left, one that reaches beyond the right edge.
TEST_F(FieldEditing, NothingIsDrawnBesideTheTextArea) {
  clearwin(100, 50, 420, 72, 3);
  const Pixels before = all_pixels();
  items[1].x = 38 * 8;
  edit(0, 30, "\b\b1234567890\r", 7);
  EXPECT_EQ(text_at(100, 50, 12), "34567890c to");
  edit(1, 30, "1234567890\r");
  clearwin(100, 50, 420, 72, 3);
  EXPECT_EQ(all_pixels(), before);
}

}  // namespace
}  // namespace torve
