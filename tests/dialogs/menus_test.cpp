// Menus as a user meets them: through the engine, press by press; double presses and drags.

#include <tuple>

#include "dialogs/click_gestures.hpp"
#include "dialogs/label.hpp"
#include "dialogs/player.hpp"

namespace torve {
namespace {

constexpr int id = 14;

// The menus stand at (96, 200): text from (112, 216); line 0 has a field at columns 19 to 28.
constexpr int text_x = 112, label = 120, field = 270, row0 = 220, row1 = 231, row2 = 242;

class Menus : public DialogTest {
 protected:
  static void open(const SampleMenu& menu) { open_menu(id, menu, 96, 200); }
  static std::string first_row(int cells) { return text_at(text_x, 216, cells); }
  static int selected_lines() {  // bit by bit
    int lines = 0;
    for (int line = 0; line < wd(id).line_count; ++line)
      lines |= (wd(id).line_flags[line] & line_selected) << line;
    return lines;
  }
  const Pixels bare = all_pixels();
};

// A double press or a drag on a selected line runs it; on a field, a press edits.
TEST_F(Menus, PressesSelectEditAndRun) {
  const struct {
    const char* what;
    void (*acts)();
    int runs, selected;
    std::string typed = {};
  } cases[] = {
      {"keys without a field", [] { click(label, row1), type("abc\r"); }, 0, 1},
      {"two presses, too late", [] { click(label, row0), click(label, row0, 1, 600); }, 0, 0},
      {"the third counts anew", [] { click(label, row0), click(label, row0), click(label, row0); },
       1, 0},
      {"twice on a field", [] { click(field, row0), click(field, row0); }, 1, 0},
      {"a key between", [] { click(field, row0), type("x"), click(field, row0); }, 0, 0, "x"},
      {"first on the text", [] { click(label, row0), click(field, row0); }, 0, 0},
      {"left of the field", [] { click(263, row0), type("x"); }, 0, 0},
      {"its first column", [] { click(264, row0), type("x"); }, 0, 0, "x"},
      {"its last column", [] { click(343, row0), type("x"); }, 0, 0, "x"},
      {"right of it", [] { click(344, row0), type("x"); }, 0, 0},
      {"below the lines", [] { click(label, 249); }, 0, -1},
      {"a drag", [] { drag(label, row0, label + 40, row0 + 1); }, 1, 0},
      {"a drag on a field", [] { drag(field, row0, field + 40, row0); }, 0, 0},
      {"a drag from another line",
       [] { press(label, row1), move(label, row0), move(field, row0), release(1, 1); }, 0, 0},
      {"a drag by way of another",
       [] { press(label, row0), move(label, row1), move(160, row0), release(1, 1); }, 0, 0},
      {"a drag after editing",
       [] { press(field, row0), type("x\r"), move(label, row1), release(1, 1); }, 0, 0, "x"},
      {"the box", [] { click(label, row2), click(99, 203); }, 1, 2},
      {"all deleted", [] { click(field, row0), type(std::string(12, '\b') + "\r"); }, 0, 0}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    open(field_menu);
    actions_run = 0;
    test.acts();
    play();
    EXPECT_EQ(actions_run, test.runs);
    EXPECT_EQ(selected_lines(), test.selected < 0 ? 0 : 1 << test.selected);
    EXPECT_EQ(wd(id).menu_items[0].text, test.typed + "bhld1.res");
    free_pop_up_menu(id);
    EXPECT_EQ(all_pixels(), bare);
  }
}

TEST_F(Menus, ChoicesRotateOncePerPress) {
  open(field_menu);
  const int x = text_x + 24 * 8;
  for (const char* choice : {"normal  ", "constant", "uniform "}) {
    press(x, row1, 1, 700), move(x + 2, row1), move(x, row1), release(x, row1);
    play();
    EXPECT_EQ(text_at(x - 8, 227, 8), choice);
  }
}

TEST_F(Menus, CloseBoxesCloseHideAndShrink) {
  enum { gone, hidden, shown, icon };
  using enum WdFlags;
  const std::tuple<WdFlags, int, int> cases[] = {{none, 1, gone},
                                                 {none, 3, icon},
                                                 {close_puts_down, 1, shown},
                                                 {right_close_puts_down, 3, shown},
                                                 {right_close_puts_down, 1, gone},
                                                 {close_hides, 1, hidden}};
  for (const auto& [flags, button, then] : cases) {
    open(pen_menu);
    wd(id).flags = wd(id).flags | flags;
    const Pixels whole = all_pixels();
    click(228, 204, button);
    play();
    const int found = is_icon(wd(id)) ? icon : is_eligible(wd(id)) ? shown : hidden;
    EXPECT_EQ(wd(id).kind == kind_free ? gone : found, then);
    if (then == gone) continue;
    EXPECT_EQ(put_wd_objects(id, id), 0);
    EXPECT_EQ(all_pixels(), whole) << "asked for again";
    free_pop_up_menu(id);
  }
}

// Drags of the lower right corner: outwards, inwards, along one edge, beyond every limit; and
// presses that tremble: each is one step.
TEST_F(Menus, ResizedIsAsCreatedAtThatSize) {
  const auto open_sized = [](int width, int height, int visible) {
    make_sample_menu(id, {width, visible, 9, 5}, 96, 200);
    wd(id).height = height;
    put(id);
  };
  const int drags[][7] = {{415, 256, 461, 300, 368, 101, 7}, {415, 256, 300, 210, 216, 35, 1},
                          {415, 230, 470, 230, 376, 57, 3},  {412, 230, 350, 230, 256, 57, 3},
                          {200, 256, 200, 340, 320, 145, 9}, {200, 252, 200, 235, 320, 35, 1},
                          {415, 256, 799, 594, 704, 398, 9}, {415, 256, 0, 0, 96, 35, 1},
                          {415, 230, 416, 229, 328, 57, 3},  {411, 230, 412, 229, 312, 57, 3},
                          {200, 256, 201, 255, 320, 68, 4},  {200, 251, 201, 250, 320, 46, 2},
                          {414, 252, 415, 251, 328, 46, 2}};
  for (const auto& [x1, y1, x2, y2, width, height, lines] : drags) {
    open_sized(320, 57, 3);
    drag(x1, y1, x2, y2);
    play();
    const WdObject resized = wd(id);
    EXPECT_EQ(resized.width * 1000 + resized.height, width * 1000 + height) << x2 << "," << y2;
    const Pixels pixels = all_pixels();
    free_one_wd_object(id);
    open_sized(width, height, lines);
    EXPECT_EQ(all_pixels(), pixels) << x2 << "," << y2;
    free_one_wd_object(id);
  }
}

TEST_F(Menus, WithoutMemoryTheyStayAsTheyWere) {
  open({320, 3, 9, 5});
  const Pixels whole = all_pixels();
  const WdObject before = wd(id);
  set_pool_allocator([](std::size_t) -> void* { return nullptr; });
  drag(415, 256, 461, 300), play();
  set_pool_allocator(std::malloc);
  hide_errormsg();
  EXPECT_EQ(std::tuple(wd(id).width, wd(id).height), std::tuple(before.width, before.height));
  EXPECT_TRUE(all_pixels() == whole);
  drag(415, 256, 461, 300), play();
  EXPECT_GT(wd(id).width, before.width);
}

// Rows for which there are no lines come last and go first; one line always stays.
TEST_F(Menus, LinesComeBackAsTheMenuDoes) {
  const auto open_tall = [] {
    make_sample_menu(id, pen_menu, 96, 200);
    wd(id).height += 11;
    put(id);
  };
  open_tall();
  const Pixels whole = all_pixels();
  const auto step = [this](int times, bool taller) {
    for (; times > 0; --times) {
      const int bottom = 200 + wd(id).height - 1;
      click(200, taller ? bottom : bottom - 4, 1, 900), play();
    }
  };
  step(1, false);
  EXPECT_EQ(std::tuple(wd(id).height, wd(id).visible_lines), std::tuple(57, 3)) << "there is room";
  step(5, true), step(4, false);
  EXPECT_TRUE(all_pixels() == whole) << "down and back";
  step(6, false);
  EXPECT_EQ(std::tuple(wd(id).height, wd(id).visible_lines), std::tuple(35, 1));
  step(3, true);
  EXPECT_TRUE(all_pixels() == whole) << "up and back";
}

TEST_F(Menus, OneThatIsMadeNarrowCanBeMadeWider) {
  make_sample_menu(id, pen_menu, 96, 200);
  wd(id).width = 72;
  put(id);
  click(163, 230), play();
  EXPECT_EQ(wd(id).width, 72);
  click(167, 230, 1, 900), play();
  EXPECT_EQ(wd(id).width, 80);
}

TEST_F(Menus, TheWheelScrollsWhatLiesAtThePointer) {
  const auto turn = [](int button, int x) { click(x, 230, button); };
  open(field_menu);
  const Pixels first = all_pixels();
  open_menu(20, pen_menu, 300, 200);
  turn(5, 120), turn(5, 120), turn(4, 50), turn(4, 120), play();
  EXPECT_EQ(wd(id).scroll_line, 1);
  EXPECT_EQ(first_row(10), "work load ");
  click(label, row0), turn(5, 120), turn(5, 425), play();
  EXPECT_EQ(wd(id).scroll_line, 2) << "while it is served";
  for (int i = 0; i < 20; ++i)
    turn(4, 120);
  play();
  free_one_wd_object(20);
  wd(id).line_flags[1] = 0;
  refresh_one_wd_object(id);
  EXPECT_TRUE(all_pixels() == first) << "no further than the first line";
}

TEST_F(Menus, LinesMoveSoThatTheCursorIsSeen) {
  open(field_menu);
  click(field, row0);
  type("0123456789abcdefghij");
  std::string seen;
  at_wait = [&seen] {
    if (user_events.size() == 1 && seen.empty()) seen = first_row(8);
  };
  add({.type = Type::key, .characters = {'\r'}, .character_count = 1});
  play();
  at_wait = nullptr;
  EXPECT_EQ(seen, "ocorrela") << "as far as it takes";
  EXPECT_EQ(first_row(8) + text_at(text_x, 227, 8), "Autocorrwork loa") << "and back";
}

// A pointer that has left the track leads the thumb to its end.
TEST_F(Menus, ScrollingShowsOtherLinesAndStaysInRange) {
  open(field_menu);
  const struct {
    const char* what;
    int x1, y1, x2, y2;
    const char* row;
    int thumb_x, thumb_y;
  } cases[] = {{"a line", 100, 249, 100, 249, "work load ", 99, 224},
               {"another", 100, 249, 100, 249, "delay=5   ", 99, 227},
               {"to the end", 100, 230, 101, 400, "arrival rate 100", 99, 239},
               {"a line back", 100, 215, 100, 215, "arrival rate    ", 99, 236},
               {"to the start", 100, 238, 300, 0, "Autocorrel", 99, 222},
               {"a column", 396, 205, 396, 205, "utocorrela", 124, 203},
               {"to the last", 150, 205, 799, 400, " 1 ", 389, 203},
               {"to the first", 391, 205, 1, 1, "Autocorrel", 118, 203}};
  for (const auto& [what, x1, y1, x2, y2, row, x, y] : cases) {
    SCOPED_TRACE(what);
    press(x1, y1, 1, 700);
    if (x1 != x2) move(x2, y2);
    release(x2, y2);
    play();
    EXPECT_EQ(first_row(static_cast<int>(std::strlen(row))), row);
    const bool is_vertical = x == 99;
    EXPECT_EQ(getpixel2c(x, y), colour_pixel(15)) << "its highlight";
    EXPECT_EQ(getpixel2c(x + 1, y + 1), colour_pixel(is_vertical ? 1 : 17));
    EXPECT_EQ(getpixel2c(x + 4, y + 4), colour_pixel(is_vertical ? 1 : 17));
  }
  click(100, 249), click(100, 249), click(100, 249);
  drag(200, 256, 200, 360);  // taller: fewer lines do not show
  play();
  EXPECT_EQ(first_row(10), "Autocorrel");
}

// An outline follows the pointer with its corner.
TEST_F(Menus, LabelsAreMovedByPressingThem) {
  using enum WdFlags;
  const struct {
    const char* what;
    WdFlags flags;
    int to_x, to_y, x, y;
  } cases[] = {{"whole", none, 400, 105, 393, 101},
               {"snapping from 200 on", snap, 407, 105, 392, 101},
               {"an outline", outline_move, 407, 105, 407, 105},
               {"an outline, snapping", snap | outline_move, 407, 105, 400, 105},
               {"beyond the corner", none, 900, 900, 760, 584},
               {"an outline beyond it", outline_move, 900, 900, 767, 588}};
  for (const auto& [what, flags, to_x, to_y, x, y] : cases) {
    SCOPED_TRACE(what);
    EXPECT_EQ(make_label(9, 203, 301, "note"), 0);
    wd(9).flags = wd(9).flags | flags;
    put(9);
    drag(210, 305, to_x, to_y);
    play();
    EXPECT_EQ(std::pair(wd(9).x, wd(9).y), std::pair(x, y));
    EXPECT_EQ(text_at(x, y, 4), "note");
    free_one_wd_object(9);
    EXPECT_EQ(all_pixels(), bare);
  }
}

constexpr auto P = PointerAction::press;
constexpr auto M = PointerAction::motion;

// After a press at (50, 5): a release some milliseconds later, or none (-1), and another event.
TEST(Gestures, AreWhatTheLastEventCompletes) {
  const auto both = Gesture::double_press, none = Gesture::none;
  const struct {
    int first_row, release_time, last_row;
    PointerEvent last;
    Gesture expected;
  } cases[] = {{0, 0, 0, {P, 1, 50, 5, 0}, both},  // too short to be human
               {0, 1, 0, {P, 1, 50, 5, 500}, both},
               {0, 50, 0, {P, 1, 50, 5, 501}, none},
               {0, 50, 0, {P, 1, 53, 2, 190}, both},
               {0, 50, 0, {P, 1, 54, 5, 190}, none},
               {0, 50, 1, {P, 1, 50, 6, 190}, none},
               {-1, 50, -1, {P, 1, 50, 5, 190}, none},
               {0, -1, 0, {P, 1, 50, 5, 190}, none},
               {0, -1, 0, {M, 1, 57, 5, 20}, none},
               {0, -1, 0, {M, 1, 58, 6, 20}, Gesture::drag},
               {0, -1, 1, {M, 1, 58, 6, 20}, none},
               {0, 300, 0, {P, 1, 50, 5, 480}, both},
               {0, 10, 0, {M, 1, 78, 5, 20}, none}};
  for (const std::uint32_t start : {10U, 0xFFFFFFF0U}) {  // the second clock wraps
    for (auto [first_row, release_time, last_row, last, expected] : cases) {
      ClickGestures gestures;
      gestures.on_event({P, 1, 50, 5, start}, first_row);
      const auto released = start + static_cast<std::uint32_t>(release_time);
      if (release_time >= 0)
        gestures.on_event({PointerAction::release, 0, 50, 5, released}, first_row);
      last.time += start;
      EXPECT_EQ(gestures.on_event(last, last_row), expected)
          << last.x << " after " << last.time - start;
    }
  }
}

}  // namespace
}  // namespace torve
