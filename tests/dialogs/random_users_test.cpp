// Random users of real menus, text windows, input windows and messages, while plots are painted
// beneath them.

#include <random>

#include "dialogs/file_window.hpp"
#include "dialogs/input_window.hpp"
#include "dialogs/label.hpp"
#include "dialogs/player.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/stacking.hpp"

namespace torve {
namespace {

// Presses change what is drawn; some ask to close the window.
void draw_value(int id, int mode) {
  if (mode == mode_serve) wd(id).kind_word += X % 3;
  if (mode == mode_serve && X % 16 == 0) return void(free_input_window(id));
  clearwin(X1_min, Y1_min, X1_max, Y1_max, static_cast<int>(wd(id).kind_word % 5));
  textn("some text that is cut off in the end", 9, wd(id).scroll_line % 15);
}

void draw_stripes(const Rect& rect) {
  for (int x = (rect.x1 + 9) / 10 * 10; x < rect.x2; x += 10)
    clearwin(x, rect.y1, x + 1, rect.y2, 2);
}

class RandomUsers : public DialogTest {
 protected:
  RandomUsers() { set_figure_hooks({.refresh = draw_stripes}); }
  ~RandomUsers() override { set_figure_hooks({}); }

  int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

  void open_something() {
    const int id = 2 + below(6), x = below(800), y = below(600), kind = below(6);
    if (wd(id).kind != kind_free) return;
    if (kind < 2) make_sample_menu(id, kind == 0 ? field_menu : pen_menu, x, y);
    if (kind == 2) make_file_window(id, x, y, 200, 99, 15, 1, 0, 0, "text.txt", -1, -1);
    if (kind == 3) make_label(id, x, y, "a label");
    if (kind > 3) {
      make_input_window(id, x, y, 96 + below(300), 40 + below(200), 15, 1, 0, 0, "in", 0, below(9),
                        below(9), draw_value);
    }
    put(id);
  }

  void paint_beneath() {
    const int x = below(700), y = below(489);  // above the strip, which ends up white
    const Rect rect = {x, y, x + below(200) + 1, y + below(100) + 1};
    {
      const CanvasPaint scope(rect);
      clearwin(rect.x1, rect.y1, rect.x2, rect.y2, x % 15);
    }
    for (int row = rect.y1; row < std::min(rect.y2, screen_height); ++row) {
      const auto first = bare_.begin() + row * screen_width;
      std::fill(first + rect.x1, first + std::min(rect.x2, screen_width), colour_pixel(x % 15));
    }
  }

  // Somewhere on an object: often its boxes, bars and edges.
  std::pair<int, int> place() {
    const WdObject& object = wd(1 + below(7));
    if (!is_eligible(object) || below(6) == 0) return {below(800), below(600)};
    const int dx[] = {4, object.width - 4, 5, object.width - 1, 60, below(object.width)};
    const int dy[] = {4, 4, 20, object.height - 3, 22, below(object.height)};
    const int which = below(6);
    return {object.x + dx[which], object.y + dy[which]};
  }

  void act() {
    const auto [x, y] = place();
    const int button = below(4) == 0 ? 3 : 1, what = below(9);
    if (what == 0) return drag(x, y, below(800), below(600), button);
    if (what == 1) return drag(x, y, x + below(7) - 3, y, button);
    if (what == 8) return click(x, y, 4 + below(2));  // the wheel
    if (what == 2) click(x, y, button);
    press(x, y, button);
    if (what == 3) type(below(2) == 0 ? "\b\bab\r" : "xyz");
    if (what == 4) add({.type = Type::resize, .width = 800, .height = 600});
    if (what != 5) release(x, y, button);  // or it gets lost
  }

  std::mt19937 random_;
  Pixels bare_;
};

TEST_F(RandomUsers, LeaveNothingBehindAndEveryPictureIsTheFreshOne) {
  write_file("text.txt", "one\ntwo\nthree is longer than the others, by far\nfour\n\nsix\nseven\n");
  write_file("messages.txt", "Cannot find file\n\nCannot write file\n");
  ASSERT_EQ(init_engine(1), 0);
  bare_ = all_pixels();
  for (unsigned seed = 1; seed <= asked("TORVE_SEEDS", 12); ++seed) {
    SCOPED_TRACE(seed);
    random_.seed(seed);
    at_wait = [this] {
      if (below(60) == 0) cannot_find_file("wherever");
    };
    for (int round = 0; round < 25; ++round) {
      open_something();
      for (int i = below(5); i >= 0; --i)
        act();
      play();
      if (below(4) == 0) paint_beneath();
      if (below(4) == 0) move_input1(1 + below(7), below(800), below(600));
      const Pixels pixels = all_pixels();
      for (int id = 1; id <= 7; ++id) {
        if (is_eligible(wd(id)) && over_is_zero(id - 1) != 0) refresh_one_wd_object(id);
      }
      ASSERT_EQ(all_pixels() == pixels, true) << "round " << round;
    }
    at_wait = nullptr;
    hide_errormsg();
    free_wd_objects_gt1();
    ASSERT_EQ(all_pixels() == bare_, true);
    ASSERT_LE(b_counter, 1);
  }
}

}  // namespace
}  // namespace torve
