// Menus as a user meets them: through the engine, press by press.

#include <cstring>

#include "dialogs/file_window.hpp"
#include "dialogs/label.hpp"
#include "dialogs/player.hpp"
#include "dialogs/sample_menus.hpp"

namespace torve {
namespace {

constexpr int id = 14;

class Menus : public DialogTest {
 protected:
  // A copy of a sample menu, moved to where the tests want it.
  static void open(const SampleMenu& sample, int x, int y, int slot = id) {
    SampleMenu menu = sample;
    menu.x = x, menu.y = y;
    ASSERT_EQ(make_sample_menu(slot, menu), 0);
    ASSERT_EQ(put_wd_objects(slot, slot), 0);
  }
  static std::string field(int index) { return wd(id).menu_items[index].text; }
  static int selected() {
    int found = -1;
    for (int line = 0; line < wd(id).line_count; ++line) {
      if ((wd(id).line_flags[line] & line_selected) != 0) found = found < 0 ? line : 99;
    }
    return found;
  }
};

// The analysis menu at (96, 200): text from (112, 216), line 0 with a field at columns 19 to 28.
constexpr int label_x = 120, field_x = 270, row0 = 220, row1 = 231, row3 = 253;

TEST_F(Menus, PressesSelectEditAndRun) {
  const struct {
    const char* what;
    std::function<void()> acts;
    int runs, selected;
    const char* first_field;
  } cases[] = {
      {"a press on a label", [] { click(label_x, row1); }, 0, 1, "bhld1.res"},
      {"two", [] { click(label_x, row0), click(label_x, row0); }, 1, 0, "bhld1.res"},
      {"two slow ones", [] { click(label_x, row0), click(label_x, row0, 1, 600); }, 0, 0,
       "bhld1.res"},
      {"three are one double press",
       [] { click(label_x, row0), click(label_x, row0), click(label_x, row0); }, 1, 0, "bhld1.res"},
      {"two on a field", [] { click(field_x, row0), click(field_x, row0); }, 1, 0, "bhld1.res"},
      {"two on a field with a key between",
       [] { click(field_x, row0), type("x"), click(field_x, row0); }, 0, 0, "xbhld1.res"},
      {"a key, Return, two on the label",
       [] { click(field_x, row0), type("x\r"), click(label_x, row0), click(label_x, row0); }, 1, 0,
       "xbhld1.res"},
      {"label then field in one row", [] { click(label_x, row0), click(field_x, row0); }, 0, 0,
       "bhld1.res"},
      {"tremble", [] { drag(label_x, row0, label_x + 3, row0); }, 0, 0, "bhld1.res"},
      {"drag", [] { drag(label_x, row0, label_x + 40, row0 + 1); }, 1, 0, "bhld1.res"},
      {"drag from a field", [] { drag(field_x, row0, field_x + 40, row0); }, 0, 0, "bhld1.res"},
      {"down the rows", [] { drag(label_x, row0, label_x + 1, row1); }, 0, 1, "bhld1.res"},
      {"down the rows, over a field, then right",
       [] { press(label_x, row0), move(label_x, row1), move(field_x, row1), release(1, 1); }, 0, 1,
       "bhld1.res"},
      {"down, back up and right at once",
       [] {
         press(label_x, row0), move(label_x, row1), move(label_x + 40, row0);
         release(1, 1);
       },
       0, 0, "bhld1.res"},
      {"still held after an edit",
       [] {
         press(field_x, row0), type("x\r"), move(label_x, row1);
         release(1, 1);
       },
       0, 0, "xbhld1.res"},
      {"selected, then the corner box", [] { click(label_x, row3), click(99, 203); }, 1, 3,
       "bhld1.res"},
      {"a drag along the bar", [] { click(label_x, row0), drag(130, 205, 200, 205); }, 0, 0,
       "bhld1.res"},
      {"emptied", [] { click(field_x, row0), type(std::string(12, '\b') + "\r"); }, 0, 0,
       "bhld1.res"},
      {"keys alone", [] { click(label_x, row1), type("abc\r"); }, 0, 1, "bhld1.res"},
      {"edited, a press on bare canvas", [] { click(field_x, row0), type("q"), click(790, 5); }, 0,
       0, "qbhld1.res"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    const std::vector<std::uint32_t> before = all_pixels();
    open(analysis_menu, 96, 200);
    actions_run = 0;
    test.acts();
    play();
    EXPECT_EQ(actions_run, test.runs);
    EXPECT_EQ(selected(), test.selected);
    EXPECT_EQ(field(0), test.first_field);
    free_pop_up_menu(id);
    EXPECT_EQ(all_pixels(), before);
  }
}

TEST_F(Menus, AnEditIsCommittedByAPressOnAnotherMenu) {
  open(analysis_menu, 96, 200);
  open(pen_menu, 96, 400, 20);
  click(field_x, row0), type("new"), click(120, 431);
  play();
  EXPECT_EQ(field(0), "newbhld1.res");
  EXPECT_EQ(wd(20).line_flags[1], line_selected) << "and acts there";
}

TEST_F(Menus, ChoicesRotateOncePerPress) {
  open(queue_menu, 96, 200);
  const int choice_x = 112 + 24 * 8;
  for (const char* choice : {"normal", "constant", "uniform"}) {
    press(choice_x, row0, 1, 700), move(choice_x + 2, row0), move(choice_x, row0);
    release(choice_x, row0);
    play();
    EXPECT_EQ(text_at(112 + 23 * 8, 216, 8).substr(0, std::strlen(choice)), choice);
  }
}

TEST_F(Menus, CheckCommandSaysWhatAPressDid) {
  open(queue_menu, 96, 200);
  const WdObject& menu = wd(id);
  X1_min = 112, Y1_min = 216, X1_max = 408, Y1_max = 249;
  truncate1 = 1;
  const struct {
    int x, y, expected;
    const char* keys;
  } cases[] = {
      {111, 220, check_nothing, ""},        {408, 220, check_nothing, ""},
      {120, 215, check_nothing, ""},        {120, 249, check_nothing, ""},
      {120, 220, check_selected, ""},       {300, 220, check_edited, ""},
      {280, 231, check_selected, ""},       {240, 231, check_edited, "\r"},
      {240, 231, check_undone, "\b\b\b\r"},
  };
  menu.line_flags[2] = line_double_clicked;
  for (const auto& test : cases) {
    type(test.keys);
    EXPECT_EQ(check_command(menu.menu_items, menu.menu_lines, menu.line_flags, 0, 0, 5, 9, 3, 16, 3,
                            9, test.x, test.y),
              test.expected)
        << test.x << "," << test.y;
    EXPECT_TRUE(user_events.empty());
  }
  EXPECT_EQ(menu.line_flags[2], 0) << "marks of double presses go";
  EXPECT_EQ(check_command(menu.menu_items, menu.menu_lines, menu.line_flags, 0, 7, 5, 9, 3, 16, 3,
                          9, 120, 240),
            check_nothing)
      << "below the last line";
}

TEST_F(Menus, BoxesCloseHideShrinkAndMove) {
  const auto none = WdFlags::none;
  const struct {
    WdFlags flags;
    int button;
    bool in_use, shown, icon;
  } cases[] = {
      {none, 1, false, false, false},
      {none, 3, true, true, true},
      {WdFlags::close_puts_down, 1, true, true, false},
      {WdFlags::right_close_puts_down, 3, true, true, false},
      {WdFlags::right_close_puts_down, 1, false, false, false},
      {WdFlags::close_hides, 1, true, false, false},
  };
  for (const auto& test : cases) {
    open(pen_menu, 96, 200);
    const WdFlags made = wd(id).flags;
    wd(id).flags = made | test.flags;
    click(228, 204, test.button);
    play();
    EXPECT_EQ(wd(id).kind != kind_free, test.in_use);
    EXPECT_EQ(is_eligible(wd(id)), test.shown);
    EXPECT_EQ(is_icon(wd(id)), test.icon);
    free_pop_up_menu(id);
  }
  open(pen_menu, 96, 200);
  drag(100, 204, 310, 307, 3);
  play();
  EXPECT_EQ(wd(id).x, 304);
  EXPECT_EQ(wd(id).y, 307);
}

// Drags of the lower right corner: outwards, inwards, along one edge, beyond every limit.
TEST_F(Menus, ResizedIsAsCreatedAtThatSize) {
  const auto window = [](int w, int h, int visible, bool is_menu) {
    if (!is_menu) {
      make_file_window(id, 96, 200, w, h, 15, 1, 0, 0, "text.txt", 40, -1);
      return;
    }
    SampleMenu menu = queue_menu;
    menu.x = 96, menu.y = 200, menu.width = w, menu.visible_lines = visible;
    make_sample_menu(id, menu);
    wd(id).height = h;
  };
  write_file("text.txt", "one\r\ntwo\nthree and some more\nfour\nfive\nsix\nseven\neight");
  const struct {
    int x1, y1, x2, y2;
  } drags[] = {
      {415, 256, 461, 300}, {415, 256, 300, 210}, {415, 230, 470, 230}, {412, 230, 350, 230},
      {200, 256, 200, 340}, {200, 252, 200, 235}, {415, 256, 799, 594}, {415, 256, 0, 0},
  };
  for (const bool is_menu : {true, false}) {
    for (const auto& d : drags) {
      SCOPED_TRACE(d.x2 * 1000 + d.y2);
      const std::vector<std::uint32_t> bare = all_pixels();
      window(320, 57, 3, is_menu);
      ASSERT_EQ(put_wd_objects(id, id), 0);
      drag(d.x1, d.y1, d.x2, d.y2);
      play();
      const WdObject resized = wd(id);
      EXPECT_NE(resized.width * 1000 + resized.height, 320 * 1000 + 57);
      const std::vector<std::uint32_t> pixels = all_pixels();
      free_one_wd_object(id);
      ASSERT_EQ(all_pixels(), bare);
      window(resized.width, resized.height, resized.visible_lines, is_menu);
      put_wd_objects(id, id);
      EXPECT_EQ(all_pixels(), pixels);
      free_one_wd_object(id);
    }
  }
}

TEST_F(Menus, APressOnAnEdgeIsOneStepHoweverItTrembles) {
  const struct {
    int x, y, width, height;
  } cases[] = {
      {415, 230, 328, 57}, {411, 230, 312, 57}, {200, 256, 320, 68},
      {200, 251, 320, 46}, {414, 252, 328, 46},
  };
  for (const auto& test : cases) {
    open(queue_menu, 96, 200);
    press(test.x, test.y), move(test.x + 1, test.y - 1), move(test.x, test.y);
    release(test.x, test.y);
    play();
    EXPECT_EQ(wd(id).width, test.width);
    EXPECT_EQ(wd(id).height, test.height);
  }
}

TEST_F(Menus, ScrollingShowsOtherLinesAndStaysInRange) {
  open(queue_menu, 96, 200);
  const auto first_row = [] { return text_at(112, 216, 10); };
  click(100, 249), click(100, 249);
  play();
  EXPECT_EQ(first_row(), "delay=5   ");
  drag(100, 230, 100, 400);
  play();
  EXPECT_EQ(wd(id).scroll_line, 6);
  EXPECT_EQ(first_row(), "arrival ra");
  const std::vector<std::uint32_t> scrolled = all_pixels();
  EXPECT_EQ(refresh_one_wd_object(id), 0);
  EXPECT_EQ(all_pixels(), scrolled);
  drag(200, 256, 200, 360);  // taller: fewer lines do not show
  play();
  EXPECT_EQ(wd(id).visible_lines, 9);
  EXPECT_EQ(wd(id).scroll_line, 0);
  click(396, 205);
  play();
  EXPECT_EQ(first_row(), "ork load d") << "one column";
  click(100, 222), type("z\r");
  play();
  EXPECT_EQ(selected(), -1) << "the bar is no text";
  std::strcpy(wd(id).menu_lines[1], "rewritten");
  refresh_one_wd_object(id);
  EXPECT_EQ(std::strlen(wd(id).menu_lines[1]), sample_line_size - 1U) << "blanks behind it";
}

TEST_F(Menus, OpeningAndClosingLeavesNothingBehind) {
  const std::vector<std::uint32_t> bare = all_pixels();
  int allocations = 0;
  for (int round = 0; round < 1000; ++round) {
    open(pen_menu, 96, 200);
    open(pen_menu, 150, 230, 15);
    free_pop_up_menu(round % 2 == 0 ? id : 15);
    free_pop_up_menu(round % 2 == 0 ? 15 : id);
    if (round == 0) allocations = mcounter;
  }
  EXPECT_EQ(b_counter, 0);
  EXPECT_EQ(mcounter, allocations);
  EXPECT_EQ(all_pixels(), bare);
}

TEST_F(Menus, StructuresAreRefusedWhenAPartIsMissing) {
  MenuItem* items = nullptr;
  char** lines = nullptr;
  int* flags = nullptr;
  ASSERT_EQ(create_menustructure(&items, &lines, &flags, 2, 3, 0), 0);
  EXPECT_EQ(lines[2], nullptr) << "the caller's to fill in";
  EXPECT_EQ(items[1].y, Y__max) << "on no line";
  EXPECT_EQ(free_menustructure(&items, &lines, &flags, 2, 3, 80), 1) << "a line is missing";
  EXPECT_NE(lines, nullptr);
  EXPECT_EQ(free_menustructure(&items, &lines, &flags, 2, 3, 0), 1) << "the fields are gone";
  EXPECT_EQ(free_menustructure(&items, &lines, &flags, 0, 3, 0), 1) << "so are the flags";
  EXPECT_EQ(free_menustructure(&items, &lines, &flags, 0, 0, 0), 0);
  flags = new int[1];
  EXPECT_EQ(free_menustructure(&items, &lines, &flags, 0, 3, 0), 0);
  EXPECT_EQ(lines, nullptr);
}

TEST_F(Menus, LabelsAreMovedByPressingThem) {
  const std::vector<std::uint32_t> bare = all_pixels();
  ASSERT_EQ(make_label(9, 203, 301, "note"), 0);
  ASSERT_EQ(put_wd_objects(9, 9), 0);
  EXPECT_EQ(text_at(203, 301, 4), "note");
  drag(210, 305, 400, 105);
  play();
  EXPECT_EQ(text_at(393, 101, 4), "note");
  EXPECT_EQ(free_label(9), 0);
  EXPECT_EQ(all_pixels(), bare);
  EXPECT_EQ(make_label(-1, 0, 0, ""), 1);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(draw_label(0, mode_put), 1); }), "illegal_pointer\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(free_pop_up_menu(0), 1); }), "illegal_pointer\n");
  EXPECT_EQ(printed_by([] { EXPECT_EQ(free_file_window(-4), 1); }), "illegal_pointer\n");
}

}  // namespace
}  // namespace torve
