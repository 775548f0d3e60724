// Presses on and around the icons, and the ways to end the program.

#include "desktop/harness.hpp"

namespace torve::desktop {
namespace {

struct Point {
  int x, y;
};

using Icons = Desktop;

TEST_F(Icons, the_exit_icon_ends_the_program) {
  start();
  click(22, 575);
  EXPECT_EQ(exit_status(), 1);
  EXPECT_EQ(errors(), "");
}

TEST_F(Icons, the_border_of_an_icon_is_not_part_of_it) {
  start();
  const Picture before = screenshot();
  for (const Point p : {Point{1, 575}, {44, 575}, {22, 554}, {22, 597}}) {
    click(p.x, p.y);
    settle();
    ASSERT_TRUE(running()) << p.x << ' ' << p.y;
  }
  EXPECT_EQ(screenshot(), before);
  click(2, 555);
  EXPECT_EQ(exit_status(), 1) << "the first pixel inside";
}

TEST_F(Icons, the_wheel_does_nothing) {
  start();
  for (const int button : {4, 5, 6, 7}) {
    click(22, 575, button);
    settle();
    ASSERT_TRUE(running()) << button;
  }
  click(22, 575, 1);
  EXPECT_EQ(exit_status(), 1);
}

TEST_F(Icons, only_the_press_counts_not_the_pointer_dragged_onto_it) {
  start();
  press(400, 580);
  server().move_pointer(window(), 22, 575);
  settle();
  release();
  settle();
  EXPECT_TRUE(running());
}

TEST_F(Icons, a_missing_picture_leaves_a_gap_that_is_never_hit) {
  const std::filesystem::path share = use_copied_installation();
  std::filesystem::remove(share / "fn2" / "texit.fn2");
  start();
  click(22, 575);
  settle();
  ASSERT_TRUE(running());
  EXPECT_EQ(cut(screenshot(), icon_area(1)), read_icon("plicon")) << "the others keep their places";
  EXPECT_EQ(count(screenshot(), icon_area(0), white), 43 * 43);
  close_window();
  EXPECT_EQ(exit_status(), 1);
}

TEST_F(Icons, the_close_button_ends_the_program_like_the_exit_icon) {
  start();
  close_window();
  EXPECT_EQ(exit_status(), 1);
  EXPECT_EQ(errors(), "");
}

TEST_F(Icons, a_lost_server_ends_the_program) {
  start();
  server().crash();
  EXPECT_EQ(exit_status(), 1);
}

}  // namespace
}  // namespace torve::desktop
