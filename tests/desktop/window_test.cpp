// The picture comes back whatever other windows do to it.

#include "desktop/harness.hpp"

namespace torve::desktop {
namespace {

using Window = Desktop;

TEST_F(Window, shows_the_same_after_it_was_covered) {
  start();
  const Picture before = screenshot();
  for (const Area area : {Area{0, 0, 1024, 768}, Area{101, 33, 309, 477}}) {
    const WindowId other = server().cover(area);
    settle();
    ASSERT_NE(screenshot(), before);
    server().uncover(other);
    settle();
    EXPECT_EQ(screenshot(), before);
  }
}

TEST_F(Window, shows_the_same_after_it_was_moved) {
  start();
  const Picture before = screenshot();
  server().move_window(window(), -300, -200);
  settle();
  server().move_window(window(), 150, 90);
  settle();
  EXPECT_EQ(screenshot(), before);
  click(22, 575);
  EXPECT_EQ(exit_status(), 1) << "presses count from the window's corner";
}

}  // namespace
}  // namespace torve::desktop
