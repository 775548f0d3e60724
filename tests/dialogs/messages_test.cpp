// Text windows, and the message window over the program's own message file.

#include <cstdlib>

#include "dialogs/file_window.hpp"
#include "dialogs/player.hpp"

namespace torve {
namespace {

constexpr int id = 20;

class TextWindows : public DialogTest {
 protected:
  // Text area from (112, 216), 20 columns, 4 rows.
  static void open(const std::string& text) {
    write_file("text.txt", text);
    make_file_window(id, 99, 200, 184, 68, 15, 1, 0, 0, "text.txt", -1, -1);
    put(id);
  }
  static std::string row(int number, int cells) { return text_at(112, 216 + 11 * number, cells); }
};

TEST_F(TextWindows, LinesAreCleanAndFillTheWindow) {
  const auto printed = printed_by(
      [] { open("one\r\ntwo\xE2\n\xC5\xBC\xC3\xB3-\n\nfive\n1234567890123456789 1234567890"); });
  EXPECT_TRUE(printed.starts_with("missing escape      226 0\nstrangesize=24 strangelist=1\ntwo"));
  EXPECT_EQ(row(0, 5) + row(1, 5) + row(2, 4) + row(3, 4), "one  two  \7\b-     ");
  press(100, 259), press(bare_x, bare_y);  // the lower arrow, and the release gets lost
  play();
  EXPECT_EQ(row(0, 5), "two  ");
  click(100, 259), click(100, 259);  // only two lines do not show
  click(263, 204);                   // one column to the right
  play();
  EXPECT_EQ(row(0, 3) + row(2, 4), "\b- ive ");
  EXPECT_EQ(row(3, 20), "234567890123456789 1");
}

TEST_F(TextWindows, AFileMayGo) {
  open("one\n");
  std::filesystem::remove("text.txt");
  click(150, 230);
  EXPECT_EQ(printed_by([this] { play(); }), "cannot_find_file\n");
  click(275, 204);
  play();
  EXPECT_EQ(wd(id).kind, kind_free) << "it can still be closed";
}

class Messages : public DialogTest {
 protected:
  Messages() {
    std::string text;
    for (int line = 0; line < 22; ++line)
      text += "message " + std::to_string(line) + "\n";
    write_file("messages.txt", text);
    EXPECT_EQ(init_engine(1), 0);
    bare = all_pixels();
  }
  static bool shown() { return is_eligible(wd(1)); }
  // The detail is drawn in white; the text writer takes the colour number as the pixel value.
  static std::string detail() { return row(1, 17, colour_pixel(15)); }
  static std::string first_line() { return row(0, 10, 15); }
  static std::string row(int number, int cells, std::uint32_t ink) {
    return text_at(wd(1).x + 16, wd(1).y + 16 + 11 * number, cells, ink);
  }

  Pixels bare;
};

TEST_F(Messages, ShowTheirLinesAndDetails) {
  const std::tuple<int (*)(), std::string, std::string> cases[] = {
      {[] { return cannot_find_file("abc"); }, "message 0 ", "             abc "},
      {[] { return cannot_find_file("longer than fits in"); }, "message 0 ", "nger than fits in"},
      {[] { return cannot_create_file("out.res"); }, "message 2 ", "out.res          "},
      {no_memory, "message 4 ", ""},
      {[] { return illegal_pointer(8); }, "message 8 ", "8                "},
      {change_palette_info, "message 16", ""},
      {[] { return unknown_parameter("width"); }, "message 20", "width            "},
      {[] { return too_few_samples("a.res"); }, "Too few sa", "a.res            "},
      {spectrum_wanted_first, "Spectrum w", ""}};
  for (const auto& [report, line, detail_text] : cases) {
    EXPECT_EQ(report(), 0);
    EXPECT_EQ(first_line() + detail().substr(0, detail_text.size()), line + detail_text);
    const Pixels pixels = all_pixels();
    refresh_one_wd_object(1);
    EXPECT_EQ(all_pixels(), pixels) << "the detail belongs to the picture";
    EXPECT_EQ(no_memory(), 1) << "not before the first has gone";
    hide_errormsg();
    EXPECT_EQ(remove_current_errormsg(), 1);
    EXPECT_EQ(all_pixels(), bare);
  }
}

TEST_F(Messages, GoByTheirCloseBoxOrWhenSomethingElseIsTouched) {
  for (const int button : {1, 3}) {
    cannot_find_file("abc");
    click(315, 204, button);
    play();
    EXPECT_EQ(all_pixels(), bare);
  }
  open_menu(14, pen_menu, 360, 490);
  cannot_find_file("abc");
  drag(164, 204, 350, 480, 3);  // onto the menu
  play();
  EXPECT_TRUE(shown());
  click(480, 532);
  play();
  EXPECT_FALSE(shown());
  EXPECT_EQ(wd(14).line_flags[2], line_selected);
}

TEST_F(Messages, WaitUntilTheServedObjectIsPutDown) {
  open_menu(14, pen_menu, 360, 490);
  at_wait = [waits = 0]() mutable {
    if (++waits != 2) return;
    EXPECT_EQ(cannot_create_file("first"), 0);
    EXPECT_EQ(cannot_create_file("second"), 1) << "only one waits";
    EXPECT_FALSE(shown());
  };
  click(400, 510);
  play();
  EXPECT_TRUE(shown() && detail() == "first            ");
}

TEST_F(Messages, QuestionsWaitForAKey) {
  const Rect home = rect_of(wd(1));
  for (const char key : {'n', 'N', 'y', '\r'}) {
    cannot_find_file("an older one");
    type({key});
    std::string asked;
    at_wait = [&asked] { asked = first_line() + detail().substr(0, 4); };
    EXPECT_EQ(copy_on_existing_file(), key == 'n' || key == 'N' ? 0 : 1);
    EXPECT_EQ(asked, "message 6 yes ");
    EXPECT_TRUE(user_events.empty() && all_pixels() == bare);
    EXPECT_EQ(rect_of(wd(1)), home);
  }
  at_wait = nullptr;
  for (int (*wait)() : {use_bgeditor, use_aeeditor, no_cutbuffer}) {
    type("k");
    EXPECT_EQ(wait(), 0);
    EXPECT_TRUE(user_events.empty() && all_pixels() == bare);
  }
}

TEST_F(Messages, ErrorsOfTheirOwnAreSwallowed) {
  const Rect home = rect_of(wd(1));
  set_pool_allocator([](std::size_t) -> void* { return nullptr; });
  static_cast<void>(unknown_parameter("width"));
  EXPECT_EQ(rect_of(wd(1)), home) << "no room for a wider one";
  hide_errormsg();
  EXPECT_EQ(all_pixels(), bare);
  EXPECT_EQ(no_memory(), 1);
  set_pool_allocator(std::malloc);
  EXPECT_EQ(no_memory(), 0) << "the window is still there";
  term = text_console;
  EXPECT_EQ(printed_by([] { EXPECT_EQ(cannot_find_file("x"), 0); }), "cannot_find_file\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(change_background(1), 0); }), "change_background\n");
}

}  // namespace
}  // namespace torve
