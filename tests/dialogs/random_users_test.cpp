// Random users of real menus, text windows and messages.

#include <random>

#include "dialogs/file_window.hpp"
#include "dialogs/label.hpp"
#include "dialogs/player.hpp"
#include "dialogs/sample_menus.hpp"
#include "wm/stacking.hpp"

namespace torve {
namespace {

class RandomUsers : public DialogTest {
 protected:
  int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

  void open_something() {
    const int id = 2 + below(6);
    if (wd(id).kind != kind_free) return;
    const SampleMenu* menus[] = {&analysis_menu, &queue_menu, &pen_menu};
    SampleMenu menu = *menus[below(3)];
    menu.x = below(800), menu.y = below(600);
    const int kind = below(5);
    if (kind < 3) {
      make_sample_menu(id, menu);
    } else if (kind == 3) {
      make_file_window(id, menu.x, menu.y, 120 + below(200), 60 + below(90), 15, 1, 0, 0,
                       "text.txt", -1, -1);
    } else {
      make_label(id, menu.x, menu.y, "a label");
    }
    ASSERT_EQ(put_wd_objects(id, id), 0);
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
    const int button = below(4) == 0 ? 3 : 1;
    switch (below(8)) {
      case 0:
        drag(x, y, below(800), below(600), button);
        break;
      case 1:
        drag(x, y, x + below(7) - 3, y, button);
        break;
      case 2:
        click(x, y, button), click(x, y, button);
        break;
      case 3:
        press(x, y, button), type(below(2) == 0 ? "\b\bab\r" : "xyz"), release(x, y, button);
        break;
      case 4:
        press(x, y, button), user_events.push_back({.type = Type::expose});
        user_events.push_back({.type = Type::resize, .width = 800, .height = 600});
        release(x, y, button);
        break;
      case 5:
        press(x, y, button);  // the release gets lost
        break;
      default:
        click(x, y, button);
    }
  }

  std::mt19937 random_;
};

TEST_F(RandomUsers, LeaveNothingBehindAndEveryPictureIsTheFreshOne) {
  write_file("text.txt", "one\ntwo\nthree is longer than the others, by far\nfour\n\nsix\nseven\n");
  write_file("messages.txt", "Cannot find file\n\nCannot write file\n");
  ASSERT_EQ(init_engine(1), 0);
  const std::vector<std::uint32_t> bare = all_pixels();
  for (unsigned seed = 1; seed <= 12; ++seed) {
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
      const std::vector<std::uint32_t> pixels = all_pixels();
      for (int id = 1; id <= 7; ++id) {
        if (is_eligible(wd(id)) && over_is_zero(id - 1) != 0) refresh_one_wd_object(id);
      }
      ASSERT_EQ(all_pixels() == pixels, true) << "round " << round;
    }
    at_wait = nullptr;
    hide_errormsg();
    free_wd_objects_gt1();
    ASSERT_EQ(all_pixels() == bare, true);
    ASSERT_LE(b_counter, 1);
  }
}

}  // namespace
}  // namespace torve
