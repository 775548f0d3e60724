// Procedures that programs may call and the workbench does not.

#include "dialogs/file_window.hpp"
#include "dialogs/input_window.hpp"
#include "dialogs/label.hpp"
#include "dialogs/menu_commands.hpp"
#include "dialogs/player.hpp"
#include "draw/window_frame.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_icon.hpp"

namespace torve {
namespace {

int told = 0;  // with the last bad id
int and_told(int result) {
  return 100 * result + told;
}

constexpr int menu = 3, text = 4, label = 5, note = 6;

class Given : public DialogTest {
 protected:
  Given() {
    write_file("text.txt", "one\ntwo\n");
    open_menu(menu, field_menu, 96, 200);
    make_file_window(text, 500, 200, 184, 68, 15, 1, 0, 0, "text.txt", -1, -1);
    make_label(label, 500, 400, "note");
    put(text), put(label);
  }
  static int from(int x, int y, int button = 1) {
    X = x, Y = y, buttons = button;
    return 0;
  }
};

TEST_F(Given, ModesAndNumbersOfTheKinds) {
  const struct {
    const char* what;
    int (*call)();
    int expected;
  } cases[] = {
      {"a menu drawn", [] { return pop_up_menu(menu, mode_refresh); }, -2},
      {"a menu, not asked", [] { return popUpMenu(menu, mode_refresh); }, -2},
      {"no menu", [] { return pop_up_menu(text, mode_refresh); }, 1},
      {"a menu's box", [] { return from(98, 202) + pop_up_menu(menu, mode_serve); }, 0},
      {"a menu held", [] { return from(98, 202, 2) + pop_up_menu(menu, mode_serve); }, -4},
      {"where it is held", [] { return cxoff * 10 + cyoff; }, 22},
      {"a menu's close box", [] { return from(412, 204) + serve_wd_objects(menu - 1); }, -1},
      {"beside a menu", [] { return from(600, 500) + popUpMenu(menu, mode_serve); }, -2},
      {"pulled down, pressed beside", [] { return from(600, 500) + pull_down(menu); }, 0},
      {"nothing to pull down", [] { return pull_down(text); }, 1},
      {"a text drawn", [] { return file_window(text, mode_refresh, 0); }, -2},
      {"a text's close box", [] { return from(676, 204) + file_window(text, mode_serve, 0); }, -1},
      {"no text", [] { return file_window(menu, mode_refresh, 0); }, 1},
      {"a label drawn", [] { return draw_label(label, mode_refresh); }, -2},
      {"a label held", [] { return from(503, 404) + draw_label(label, mode_serve); }, -4},
      {"where that is held", [] { return cxoff * 10 + cyoff; }, 34},
      {"no object", [] { return serve_wd_objects(70); }, 3},
      {"over both", [] { return get_any_card(90, 190, 700, 500); }, menu},
      {"over the label", [] { return get_top_card(490, 390, 700, 500); }, label},
      {"over nothing", [] { return get_top_card(700, 0, 800, 9) + get_any_card(0, 0, 9, 9); }, 0},
      {"under nobody", [] { return get_one_under(menu); }, 0},
      {"under a label",
       [] { return make_label(note, 300, 210, "note"), put(note), get_one_under(menu); }, note},
      {"under nobody itself", [] { return get_one_under(note); }, 0},
      {"put away", [] { return free_label(note); }, 0},
      {"an icon", [] { return draw_old_icon(menu); }, -2},
      {"freed", [] { return free_label(label) + free_file_window(text); }, 0},
      {"gone", [] { return get_any_card(490, 190, 700, 500); }, 0},
      {"bad", [] { return free_label(0); }, 1},
      {"no menu to free", [] { return and_told(free_pop_up_menu(0)); }, 107},
      {"no text to free", [] { return and_told(free_file_window(0)); }, 106},
      {"no label to draw", [] { return and_told(draw_label(0, mode_refresh)); }, 109}};
  ErrorReporters reporters = console_reporters;
  reporters.illegal_pointer = [](int code) { return told = code; };
  set_error_reporters(reporters);
  for (const auto& [what, call, expected] : cases) {
    int result = 0;
    printed_by([call = call, &result] { result = call(); });
    EXPECT_EQ(result, expected) << what;
  }
  set_error_reporters(console_reporters);
}

TEST_F(Given, TheRoundAsANumber) {
  const struct {
    const char* what;
    int x, y, button, expected;
  } cases[] = {{"the canvas", 20, 20, 1, -1},
               {"the menu's box", 98, 202, 1, 1},
               {"the menu's close box", 412, 204, 2, 0},  // it becomes an icon
               {"the text's box, held", 498, 202, 2, 0}};
  for (const auto& [what, x, y, button, expected] : cases) {
    press(x, y, button);
    EXPECT_EQ(do_operations(), expected) << what;
    release(x, y, button);
    EXPECT_EQ(do_operations(), 0) << what;
  }
  EXPECT_EQ(text_at(wd(menu).x + 4, wd(menu).y + 3, 12), "Autocorrelat") << "on the icon";
}

TEST_F(Given, PressesOnAMenuOneByOne) {
  const WdObject& object = wd(menu);
  const auto check = [&](int x, int y) {
    return check_command(object.menu_items, object.menu_lines, object.line_flags, 0, 0,
                         object.item_count, object.line_count, 3, 16, 3, 9, x, y);
  };
  set_drawing_area({112, 216, 408, 249});
  EXPECT_EQ(check(111, 220), 0);
  EXPECT_EQ(check(116, 220), 1);
  EXPECT_EQ(object.line_flags[0], 1);
  EXPECT_EQ(check(112 + 24 * 8, 230), 3) << "the next choice";
  type("x\r");
  EXPECT_EQ(check(112 + 7 * 8, 240), 3) << "typed";
  EXPECT_STREQ(object.menu_items[3].text, "x5");
  type("\b\b\b\r");
  EXPECT_EQ(check(112 + 7 * 8, 240), 2) << "left empty";
}

// 1: run what is selected.
TEST(DoublePresses, AsArgumentsSayThem) {
  const struct {
    const char* what;
    int x, y, button, press_x, first, counter, expected;
  } cases[] = {{"twice", 40, 7, 1, 40, 1, 50, 1},        {"too soon", 40, 7, 1, 40, 1, 49, 0},
               {"the first", 40, 7, 1, 40, 0, 50, 0},    {"dragged right", 41, 7, 1, 40, 0, 0, 1},
               {"dragged left", 39, 7, 1, 40, 1, 50, 0}, {"another row", 41, 8, 1, 40, 0, 0, 0},
               {"released", 41, 7, 0, 40, 0, 0, 0}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    int flags[] = {0, 1, 1}, none[] = {0, 2}, first = test.first, counter = test.counter;
    const auto runs = [&](int* of, int lines) {
      return doubleclick_and_submenu(of, lines, test.x, test.y, test.button, test.press_x, 7,
                                     &first, &counter, 50);
    };
    EXPECT_EQ(runs(flags, 3), test.expected);
    EXPECT_EQ(flags[1] * 10 + flags[2], test.expected == 1 ? 31 : 11);
    const bool cleared = test.expected == 1 && test.x == test.press_x;
    EXPECT_EQ(first + counter, cleared ? 0 : test.first + test.counter);
    EXPECT_EQ(runs(none, 2), 0);
  }
}

}  // namespace
}  // namespace torve
