// Text windows, and the message window over the program's own message file.

#include <cstdlib>

#include "base/files.hpp"
#include "dialogs/file_window.hpp"
#include "dialogs/player.hpp"
#include "dialogs/sample_menus.hpp"
#include "dialogs/text_lines.hpp"
#include "wm/stacking.hpp"

namespace torve {
namespace {

class TextWindows : public DialogTest {
 protected:
  static constexpr int id = 20;
  // Text area from (112, 216), 20 columns, 4 rows.
  static void open(const std::string& text) {
    write_file("text.txt", text);
    make_file_window(id, 99, 200, 184, 68, 15, 1, 0, 0, "text.txt", -1, -1);
    ASSERT_EQ(put_wd_objects(id, id), 0);
  }
};

TEST_F(TextWindows, LinesAreCleanAndFillTheWindow) {
  open(
      "one\r\ntwo\n\xC5\xBC\xC3\xB3"
      "3\n\nfive\n1234567890123456789 1234567890");
  EXPECT_EQ(text_at(112, 216, 5), "one  ");
  EXPECT_EQ(text_at(112, 227, 5), "two  ");
  EXPECT_EQ(text_at(112, 238, 4),
            "\7\b"
            "3 ");
  EXPECT_EQ(text_at(112, 249, 4), "    ");
  click(100, 259), click(100, 259), click(100, 259);  // the lower arrow: two lines do not show
  play();
  EXPECT_EQ(wd(id).scroll_line, 2);
  EXPECT_EQ(text_at(112, 238, 6), "five  ");
  EXPECT_EQ(text_at(112, 249, 20), "1234567890123456789 ");
  const std::vector<std::uint32_t> scrolled = all_pixels();
  refresh_one_wd_object(id);
  EXPECT_EQ(all_pixels(), scrolled);
  click(263, 204);
  play();
  EXPECT_EQ(text_at(112, 216, 3),
            "\b"
            "3 ")
      << "one column to the right";
  EXPECT_EQ(text_at(112, 249, 20), "234567890123456789 1");
}

TEST_F(TextWindows, ShowWhereTheyAreScrolledToWithoutARelease) {
  open("one\ntwo\nthree\nfour\nfive\n");
  press(100, 259), press(bare_x, bare_y);
  play();
  EXPECT_EQ(text_at(112, 216, 5), "two  ");
}

TEST_F(TextWindows, AFileMayGo) {
  EXPECT_EQ(make_file_window(0, 0, 0, 100, 100, 1, 2, 3, 4, "x", 0, 0), 1);
  make_file_window(id, 96, 200, 184, 68, 15, 1, 0, 0, "none.txt", -1, -1);
  EXPECT_EQ(put_wd_objects(id, id), 1);
  EXPECT_EQ(wd(id).kind, kind_free);
  open("one\n");
  std::filesystem::remove("text.txt");
  click(150, 230);
  EXPECT_EQ(printed_by([this] { play(); }), "cannot_find_file\n");
  click(275, 204);
  play();
  EXPECT_EQ(wd(id).kind, kind_free) << "it can still be closed";
}

TEST_F(TextWindows, UnknownCharactersAreReportedAndDropped) {
  char line[] =
      "a\xE2\x82"
      "b\xC3";
  EXPECT_EQ(printed_by([&] { replace_strange_characters(line); }).substr(0, 71),
            "missing escape      226 130\nstrangesize=24 strangelist=1\na\xE2\x82"
            "b\xC3\nmissing ");
  EXPECT_STREQ(line, "ab");
}

class Messages : public DialogTest {
 protected:
  Messages() {
    std::string text;
    for (int line = 0; line < 22; ++line)
      text += "message " + std::to_string(line) + "\n";
    write_file("messages.txt", text);
    EXPECT_EQ(init_engine(1), 0);
    bare_ = all_pixels();
  }
  static bool shown() { return is_eligible(wd(1)); }
  // Detail: drawn in white.
  static std::string detail() {
    ink = colour_pixel(15);
    const std::string text = text_at(wd(1).x + 16, wd(1).y + 27, 17);
    ink = 0;
    return text;
  }
  static std::string first_line() {
    ink = 15;  // the text writer takes the colour number as the pixel value
    const std::string text = text_at(wd(1).x + 16, wd(1).y + 16, 10);
    ink = 0;
    return text;
  }

  std::vector<std::uint32_t> bare_;
};

TEST_F(Messages, ShowTheirLinesAndDetails) {
  const struct {
    std::function<int()> report;
    const char* line;
    const char* detail;
  } cases[] = {
      {[] { return cannot_find_file("abc"); }, "message 0 ", "             abc "},
      {[] { return cannot_find_file("measurement7"); }, "message 0 ", "     measurement7"},
      {[] { return cannot_find_file("a name that is longer than all"); }, "message 0 ",
       "a name that is lo"},
      {[] { return cannot_create_file("out.res"); }, "message 2 ", "out.res          "},
      {[] { return no_memory(); }, "message 4 ", nullptr},
      {[] { return illegal_pointer(8); }, "message 8 ", "8                "},
      {[] { return file_error(3); }, "message 10", "3                "},
      {[] { return change_palette_info(); }, "message 16", nullptr},
      {[] { return unknown_parameter("width"); }, "message 20", "width            "},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(test.report(), 0);
    EXPECT_TRUE(shown());
    EXPECT_EQ(first_line(), test.line);
    if (test.detail != nullptr) {
      EXPECT_EQ(detail(), test.detail);
    }
    const std::vector<std::uint32_t> pixels = all_pixels();
    refresh_one_wd_object(1);
    EXPECT_EQ(all_pixels(), pixels) << "the detail belongs to the picture";
    EXPECT_EQ(no_memory(), 1) << "not before the first has gone";
    hide_errormsg();
    EXPECT_EQ(all_pixels(), bare_);
  }
  EXPECT_EQ(b_counter, 1) << "the window keeps its buffer";
}

TEST_F(Messages, GoByTheirCloseBoxOrWhenSomethingElseIsTouched) {
  for (const int button : {1, 3}) {
    cannot_find_file("abc");
    click(315, 204, button);
    play();
    EXPECT_FALSE(shown());
    EXPECT_EQ(all_pixels(), bare_);
  }
  ASSERT_EQ(make_sample_menu(14, pen_menu), 0);
  ASSERT_EQ(put_wd_objects(14, 14), 0);
  cannot_find_file("abc");
  drag(164, 204, 350, 480, 3);  // onto the menu
  play();
  EXPECT_TRUE(shown());
  click(480, 532);
  play();
  EXPECT_FALSE(shown());
  EXPECT_EQ(wd(14).line_flags[2], line_selected);
  free_one_wd_object(14);
  EXPECT_EQ(all_pixels(), bare_);
}

TEST_F(Messages, WaitUntilTheServedObjectIsPutDown) {
  ASSERT_EQ(make_sample_menu(14, pen_menu), 0);
  ASSERT_EQ(put_wd_objects(14, 14), 0);
  static bool was_shown;
  was_shown = false;
  int waits = 0;
  at_wait = [&waits] {
    if (++waits != 2) return;
    EXPECT_EQ(cannot_create_file("first"), 0);
    EXPECT_EQ(cannot_create_file("second"), 1) << "only one waits";
    was_shown = is_eligible(wd(1));
  };
  click(400, 510);
  play();
  EXPECT_FALSE(was_shown);
  EXPECT_TRUE(shown());
  EXPECT_EQ(detail(), "first            ");
  EXPECT_EQ(over_is_zero(0), 1);
}

TEST_F(Messages, QuestionsWaitForAKey) {
  const struct {
    char key;
    int answer;
  } cases[] = {{'n', 0}, {'N', 0}, {'y', 1}, {'\r', 1}};
  const Rect home = rect_of(wd(1));
  for (const auto& test : cases) {
    cannot_find_file("an older one");
    user_events = {key_event(test.key)};
    std::string asked;
    at_wait = [&asked] { asked = first_line() + detail().substr(0, 4); };
    EXPECT_EQ(copy_on_existing_file(), test.answer);
    EXPECT_EQ(asked, "message 6 yes ");
    EXPECT_TRUE(user_events.empty());
    EXPECT_EQ(all_pixels(), bare_);
    EXPECT_EQ(rect_of(wd(1)), home);
  }
  at_wait = nullptr;
  for (int (*wait)() : {use_bgeditor, use_aeeditor, no_cutbuffer}) {
    user_events = {key_event('k')};
    EXPECT_EQ(wait(), 0);
    EXPECT_EQ(all_pixels(), bare_);
  }
}

TEST_F(Messages, ErrorsOfTheirOwnAreSwallowed) {
  set_pool_allocator([](std::size_t) -> void* { return nullptr; });
  EXPECT_EQ(no_memory(), 1);
  set_pool_allocator(std::malloc);
  EXPECT_EQ(all_pixels(), bare_);
  EXPECT_EQ(no_memory(), 0) << "and the window is still there";
  std::filesystem::remove("messages.txt");
  hide_errormsg();
  if (!std::filesystem::exists(data_directory(DataKind::include) + "messages.txt")) {
    EXPECT_EQ(no_memory(), 1);
  }
  EXPECT_NE(wd(1).kind, kind_free);
  term = 1;
  EXPECT_EQ(printed_by([] { EXPECT_EQ(cannot_find_file("x"), 0); }), "cannot_find_file\n");
}

}  // namespace
}  // namespace torve
