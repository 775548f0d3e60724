// Looking closer at panes, as a person does it: what the wheel, the keys and a drag show, what the
// strip says of the point under the pointer, and that nothing of it stays.

#include <charconv>
#include <cmath>
#include <random>

#include "app/inspect/reading.hpp"
#include "app/inspect/views.hpp"
#include "app/jump_table.hpp"
#include "app/main_loop.hpp"
#include "app/plot/curve.hpp"
#include "app/plot/dense_curve.hpp"
#include "app/plot/view_geometry.hpp"
#include "app/tools/pane_views.hpp"
#include "diagram/editor.hpp"
#include "dialogs/player.hpp"
#include "draw/lines.hpp"
#include "wm/stacking.hpp"

namespace torve {
namespace {

constexpr int long_file = 120'000, short_file = 2000;
constexpr unsigned long left_key = 0xFF51, up_key = 0xFF52, right_key = 0xFF53, down_key = 0xFF54,
                        home_key = 0xFF50, back_key = 0xFF08, return_key = 0xFF0D,
                        escape_key = 0xFF1B;

class Looking : public DialogTest {
 protected:
  Looking() {
    clearwin(0, 0, 800, 600, 15);
    std::mt19937 dice(1);
    for (const auto& [name, count] : {std::pair("long.res", long_file), {"short.res", short_file}})
      write_signal(name, count, dice);
    std::string spectrum = "size=5000\n";
    for (int i = 0; i < 2500; ++i)
      spectrum += std::to_string(i) + ' ' + std::to_string(i % 50 == 7 ? 40.0 / i : 1e-4) + '\n';
    write_file("s.spe", spectrum);
    for (int pane = 0; pane < 3; ++pane)
      set_pane_name(pane, pane == 0 ? "long.res" : pane == 1 ? "short.res" : "s.spe");
    reset_views();
    printed_by([] {
      EXPECT_TRUE(show_signal(0, {.xsc = 0.02}).is_done());
      EXPECT_TRUE(show_signal(1, {.start = -100, .step = 3, .xsc = 2, .ysc = 0.5}).is_done());
      EXPECT_TRUE(show_spectrum(2, {.xsc = 0.4}, "all").is_done());
    });
    set_press_handler(end_looking);
    vobjmode = mode_idle;
  }
  ~Looking() override { end_looking(), forget_mark(), set_press_handler(nullptr); }

  void write_signal(const char* name, int count, std::mt19937& dice) {
    std::string text;
    for (int i = 0; i < count; ++i) {
      values_[name].push_back(static_cast<double>(dice() % 2'000'000) / 1e6 - 1);
      text += std::to_string(i) + ' ' + std::to_string(values_[name].back()) + '\n';
    }
    write_file(name, text);
  }

  static void rounds() {
    while (!user_events.empty())
      EXPECT_FALSE(main_loop_round(c_table));
  }
  static void hover(int x, int y) { add({.type = Type::hover, .x = x, .y = y}), rounds(); }
  static void leave() { add({.type = Type::leave}), rounds(); }

  std::map<std::string, std::vector<double>> values_;
};

// Told apart in every number; +, - and letters are keys, the wheel's buttons have their numbers.
struct Gesturing {
  const char* what;
  int x, y;
  int wheel = 0;  // button 4 to 7
  Modifiers held = Modifiers::none;
  unsigned long key = 0;
  int drag_to = 0;
  double start, xsc, ysc;
};

TEST_F(Looking, GesturesChangeTheViewAsTheyAreMeant) {
  using enum Modifiers;
  const Gesturing gestures[] = {
      {"wheel", 432, 90, 4, none, 0, 0, 20000 - 400 / 0.03, 0.03, 1},
      {"wheel back", 432, 90, 5, none, 0, 0, 0, 0.02 / 1.5, 1},
      {"shifted", 432, 90, 5, shift, 0, 0, 763 / 0.02 / 8, 0.02, 1},
      {"not before the first", 432, 90, 4, shift, 0, 0, 0, 0.02, 1},
      {"tilted", 32, 20, 7, none, 0, 0, 763 / 0.02 / 8, 0.02, 1},
      {"higher", 432, 90, 4, control, 0, 0, 0, 0.02, 1.25},
      {"lower", 432, 90, 5, control, 0, 0, 0, 0.02, 0.8},
      {"key +", 232, 90, 0, none, '+', 0, 10000 - 200 / 0.03, 0.03, 1},
      {"key - with Shift", 232, 90, 0, shift, '-', 0, 0, 0.02 / 1.5, 1},
      {"key right", 232, 90, 0, none, right_key, 0, 763 / 0.02 / 8, 0.02, 1},
      {"key up", 232, 90, 0, none, up_key, 0, 0, 0.02, 1.25},
      {"key down", 232, 90, 0, none, down_key, 0, 0, 0.02, 0.8},
      {"home", 232, 90, 0, none, home_key, 0, 0, 763.0 / (long_file - 1), 1},
      {"drag", 132, 90, 0, none, 0, 332, 5000, 763 / 10000.0, 1},
      {"drag back, beyond the axis", 232, 90, 0, none, 0, 2, 0, 763 / 10000.0, 1},
      {"a click", 132, 90, 0, none, 0, 135, 0, 0.02, 1},
      {"Control and +", 232, 90, 0, control, '+', 0, 0, 0.02, 1},
      {"below the panes", 432, 540, 4, none, 0, 0, 0, 0.02, 1},
      {"the pane of steps", 432, 250, 4, none, 0, 0, 100 - 400.0 / 3, 3, 0.5},
  };
  for (const Gesturing& test : gestures) {
    const int pane = test.y > 176 && test.y < 500 ? 1 : 0;
    if (pane == 1) {
      printed_by([] { (void)show_signal(1, {.start = -100, .step = 3, .xsc = 2, .ysc = 0.5}); });
    } else {
      printed_by([] { (void)show_signal(0, {.xsc = 0.02}); });
    }
    hover(test.x, test.y);
    if (test.wheel != 0) {
      add({.type = Type::press,
           .button = test.wheel,
           .x = test.x,
           .y = test.y,
           .modifiers = test.held});
    } else if (test.key != 0) {
      add({.type = Type::key,
           .x = test.x,
           .y = test.y,
           .keysym = test.key,
           .modifiers = test.held});
    } else {
      drag(test.x, test.y, test.drag_to, test.y);
    }
    rounds();
    const PaneView& view = shown_view(pane);
    EXPECT_NEAR(view.start, test.start, 1e-6) << test.what;
    EXPECT_NEAR(view.xsc, test.xsc, 1e-12) << test.what;
    EXPECT_NEAR(view.ysc, test.ysc, 1e-12) << test.what;
    leave();
  }
}

TEST_F(Looking, ViewsAreHadBackAndGoTogether) {
  const Pixels told = all_pixels();
  const auto key = [](int y, unsigned long symbol) {
    add({.type = Type::key, .x = 400, .y = y, .keysym = symbol}, 1000), rounds();
  };
  key(90, '+'), key(90, '+'), key(90, up_key);
  const PaneView third = shown_view(0);
  key(90, left_key), key(90, back_key);
  EXPECT_EQ(shown_view(0), third);
  key(90, back_key), key(90, back_key);
  EXPECT_NEAR(shown_view(0).xsc, 0.03, 1e-12);
  printed_by([&] { key(90, return_key); });
  EXPECT_TRUE(all_pixels() == told) << "what the line drew";
  key(90, back_key);
  EXPECT_NEAR(shown_view(0).xsc, 0.03, 1e-12) << "back from there";
  // The second pane follows by as many samples, at the scale of the first.
  const double start = shown_view(0).start;
  key(90, 'l'), key(90, home_key), key(90, '+');
  const double moved = shown_view(0).start - start;
  EXPECT_NEAR(shown_view(1).xsc, shown_view(0).xsc, 1e-12);
  EXPECT_EQ(shown_view(1).start, std::clamp(-100 + moved, -100.0, 0.0));
  EXPECT_EQ(shown_view(2).xsc, 0.4) << "a spectrum does not";
  key(90, 'l');
  const PaneView alone = shown_view(1);
  key(90, '-');
  EXPECT_EQ(shown_view(1), alone);
}

TEST_F(Looking, TheStripNamesThePointAsItStandsInTheFile) {
  std::mt19937 dice(2);
  const Pixels before = all_pixels();
  for (int turn = 0; turn < 200; ++turn) {
    const int pane = turn % 2;
    if (turn % 10 < 2) printed_by([&] { end_looking(), show_told_view(pane); });
    const int x = 32 + static_cast<int>(dice() % 764),
              y = pane * 176 + 12 + static_cast<int>(dice() % 140);
    add({.type = Type::press, .button = 4 + static_cast<int>(dice() % 4), .x = x, .y = y});
    rounds();
    hover(x, y);
    char name[40] = "";
    int shown = 0, index = -1;
    double time = 0, value = 0;
    ASSERT_EQ(std::sscanf(strip_text().c_str(), "%d %39s sample %d %lf %*s %lf", &shown, name,
                          &index, &time, &value),
              5)
        << strip_text();
    const auto& values = values_.at(pane == 0 ? "long.res" : "short.res");
    ASSERT_LT(static_cast<std::size_t>(index), values.size());
    EXPECT_NEAR(value, values[static_cast<std::size_t>(index)], 1e-9) << strip_text();
    const bool seconds = strip_text().find(" ms ") == std::string::npos;
    EXPECT_NEAR(seconds ? time : time / 1000, index / 44100.0, 6e-7) << strip_text();
    const PaneView& view = shown_view(pane);
    const double column = 32 + (index - view.start) * view.xsc;
    const bool at_end = index == 0 || static_cast<std::size_t>(index) + 1 == values.size();
    if (!at_end) {
      EXPECT_LE(std::fabs(column - x), std::max(1.0, view.xsc / 2 + 1e-6)) << strip_text();
    }
  }
  leave();
  printed_by([] { show_told_view(0), show_told_view(1); });
  EXPECT_TRUE(all_pixels() == before) << "a trace";
}

TEST_F(Looking, ASpectrumIsReadInHertzAndDecibels) {
  hover(32 + 22, 400);  // bin 57 has a column of its own; 40 / 57 is not the largest
  EXPECT_EQ(strip_text(), "3 s.spe bin 57  502.74 Hz  0.701754  -9.11 dB");
  add({.type = Type::key, .x = 54, .y = 400, .keysym = 'm'}), rounds();
  hover(32 + 2, 400);
  EXPECT_EQ(strip_text(), "3 s.spe bin 7  61.74 Hz  5.714286  0.00 dB | -441.00 Hz 9.11 dB");
  const std::string read = strip_text();
  add({.type = Type::key, .x = 34, .y = 400, .keysym = 'd'}), rounds();
  EXPECT_EQ(strip_text(), read) << "the same in decibels";
  EXPECT_TRUE(shown_view(2).decibels);
  // 1e-6 lies 67.6 dB below 5.7: 70 dB are 134.3 rows, and the largest bin is at their top.
  EXPECT_EQ(getpixel2c(34, 352 + 170 - 16 - 134 + 20), 0U);
}

TEST_F(Looking, AStretchIsWrittenAndNeverOverAnother) {
  write_file("part1.res", "mine\n");
  add({.type = Type::key, .x = 300, .y = 250, .keysym = 'w'}), rounds();
  EXPECT_TRUE(strip_text().starts_with("Set a mark")) << strip_text();
  hover(432, 250);
  add({.type = Type::key, .x = 432, .y = 250, .keysym = 'm'}), rounds();
  hover(332, 250);
  add({.type = Type::key, .x = 332, .y = 250, .keysym = 'w'}), rounds();
  EXPECT_EQ(strip_text(), "part2.res: 51 samples of short.res from 50 on");
  std::string wanted;
  for (int i = 0; i < 51; ++i)
    wanted += std::to_string(i) + ' ' +
              std::to_string(values_.at("short.res")[static_cast<std::size_t>(50 + i)]) + '\n';
  EXPECT_EQ(read_file("part2.res"), wanted);
  leave();
  add({.type = Type::key, .keysym = escape_key}), rounds();
  hover(332, 250);
  EXPECT_EQ(strip_text().find('|'), std::string::npos) << "the mark is forgotten";
}

TEST_F(Looking, NothingIsReadWhereSomethingElseIsMeant) {
  hover(400, 90);
  EXPECT_FALSE(strip_text().empty());
  open_menu(20, pen_menu, 380, 60);
  hover(400, 90);
  EXPECT_TRUE(strip_text().empty()) << "a window";
  take_picture_off(20);
  node_ope();
  hover(500, 90);
  EXPECT_TRUE(strip_text().empty()) << "a diagram tool";
  const PaneView before = shown_view(0);
  add({.type = Type::press, .button = 4, .x = 600, .y = 90}), rounds();
  EXPECT_NE(shown_view(0), before) << "the wheel zooms all the same";
  exit_ope();
}

TEST_F(Looking, TheKeysAreListedOnTopOfEverything) {
  write_file("keys.txt", "? shows this list\n");
  const auto is_on_top = [] {
    return is_eligible(wd(help_window_id)) && over_is_zero(help_window_id - 1) != 0;
  };
  for (const bool is_again : {false, true}) {
    if (is_again) open_menu(20, pen_menu, 380, 60);
    EXPECT_FALSE(is_on_top());
    add({.type = Type::key, .x = 100, .y = 90, .keysym = '?'}), rounds();
    EXPECT_TRUE(is_on_top());
  }
}

TEST_F(Looking, ADenseCurveIsDrawnAsAnyOther) {
  std::mt19937 dice(3);
  std::vector<float> points(3000);
  for (float& point : points)
    point = static_cast<float>(dice() % 2001) / 1000 - 1;
  for (const double spacing : {1.0 / 64, 0.25, 0.5, 1.0, 2.0, 8.0}) {
    const CurvePlace place = {.left = 32,
                              .right = 795,
                              .top = 12,
                              .bottom = 154,
                              .shift = 5,
                              .spacing = spacing,
                              .zero = 75,
                              .scale = 60,
                              .magnification = 1,
                              .colour = 0,
                              .target = target_screen};
    const std::size_t fit = std::min(points.size(), static_cast<std::size_t>(750 / spacing));
    const std::span<const float> part(points.data(), fit);
    clearwin(0, 0, 800, 600, 15), draw_curve(part, place);
    const Pixels wanted = all_pixels();
    clearwin(0, 0, 800, 600, 15), draw_dense_curve(part, place);
    EXPECT_TRUE(all_pixels() == wanted) << spacing;
  }
  // From before the left edge, where it is half way up, to behind the right one, half way down.
  points.assign(40, 1);
  points[0] = points[8] = -1;
  clearwin(0, 0, 800, 600, 15);
  draw_dense_curve(points, {.left = 32,
                            .right = 732,
                            .top = 12,
                            .bottom = 154,
                            .shift = -50,
                            .spacing = 100,
                            .zero = 75,
                            .scale = 60,
                            .magnification = 1,
                            .colour = 0,
                            .target = target_screen});
  for (const int column : {32, 732}) {
    for (int row = 12; row < 154; ++row) {
      const bool is_ink = getpixel2c(column, row) == colour_pixel(0);
      EXPECT_TRUE(is_ink ? std::abs(row - 75) <= 1 : row != 75) << column << " " << row;
    }
  }
}

}  // namespace
}  // namespace torve
