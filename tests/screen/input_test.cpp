// Mouse and keyboard rules, played from a list of events.

#include <deque>

#include "support/screen.hpp"

namespace torve {
namespace {

using Type = InputEvent::Type;

std::deque<InputEvent> queue;

const DisplayBackend player = {
    .wait_event =
        [](InputEvent& event) {
          ASSERT_FALSE(queue.empty()) << "waits for an event that never comes";
          event = queue.front();
          queue.pop_front();
        },
    .event_pending = [] { return !queue.empty(); },
    .drop_events =
        [](Type type) {
          return std::erase_if(queue, [type](const InputEvent& e) { return e.type == type; }) > 0;
        },
    .push = [](const Rect&) {},
};

InputEvent mouse(Type type, int button, int x, int y) {
  return {.type = type, .button = button, .x = x, .y = y};
}

InputEvent key(char character, bool modifier = false) {
  InputEvent event = {.type = Type::key, .is_modifier = modifier};
  event.characters[0] = character;
  event.character_count = character != 0 ? 1 : 0;
  return event;
}

class InputTest : public ScreenTest {
 protected:
  InputTest() {
    queue.clear();
    set_display_backend(&player);
  }
  ~InputTest() override { set_display_backend(nullptr); }

  struct Reading {
    int button, x, y;
    bool operator==(const Reading&) const = default;
  };
  Reading read() {
    readmouse(&buttons, &X, &Y);
    return {buttons, X, Y};
  }
};

TEST_F(InputTest, OneReadingForEachEvent) {
  const struct {
    InputEvent event;
    Reading expected;
    const char* what;
  } steps[] = {
      {mouse(Type::motion, 0, 5, 6), {0, 5, 6}, "motion without a button"},
      {mouse(Type::press, 3, 10, 20), {2, 10, 20}, "right counts as 2"},
      {mouse(Type::motion, 0, 900, 597), {2, 799, 594}, "clamped"},
      {key('x'), {2, 799, 594}, "a key is no release"},
      {{.type = Type::expose}, {2, 799, 594}, "nor is an expose event"},
      {{.type = Type::resize, .width = 900, .height = 700}, {2, 799, 594}, "nor a new size"},
      {mouse(Type::release, 5, 1, 1), {2, 799, 594}, "nor the wheel"},
      {mouse(Type::release, 3, -4, -4), {0, 0, 0}, "release, clamped"},
      {mouse(Type::press, 4, 30, 30), {0, 0, 0}, "the wheel presses nothing"},
      {mouse(Type::press, 1, 7, 8), {1, 7, 8}, "left"},
  };
  for (const auto& step : steps) {
    queue.push_back(step.event);
    EXPECT_EQ(read(), step.expected) << step.what;
  }
  EXPECT_EQ(window_width, 900);
  EXPECT_EQ(keybuffer[0], 'x');
  EXPECT_EQ(oldX, 7);
}

TEST_F(InputTest, APressDropsWaitingPressesOnly) {
  queue = {mouse(Type::press, 1, 1, 1), mouse(Type::press, 1, 2, 2), mouse(Type::release, 1, 3, 3),
           key('k')};
  EXPECT_EQ(read(), (Reading{1, 1, 1}));
  EXPECT_EQ(queue.size(), 2U);
  EXPECT_EQ(report.type, Type::none);
  EXPECT_EQ(read(), (Reading{0, 3, 3}));
}

TEST_F(InputTest, KeysComeOneAtATimeAndNothingElseIsForgotten) {
  present();
  cur_button = 1;
  queue = {mouse(Type::motion, 0, 50, 50),
           {.type = Type::expose},
           {.type = Type::resize, .width = 850, .height = 610},
           mouse(Type::release, 1, 50, 50),
           key(0, true),
           key('A'),
           key('b')};
  EXPECT_EQ(getch(), 'A') << "Shift alone is no key";
  EXPECT_TRUE(queue.empty()) << "typed ahead";
  EXPECT_EQ(cur_button, 0) << "the release counts";
  EXPECT_EQ(window_width, 850);
  EXPECT_EQ(dirty_rect(), whole_screen) << "the expose event is answered at the next wait";
  queue = {key(0)};
  EXPECT_EQ(getch(), 0);
  EXPECT_EQ(kbhit(), 0);
}

TEST_F(InputTest, AWishToCloseIsHeardByEveryReader) {
  static int closed;
  closed = 0;
  set_close_handler([] { ++closed; });
  queue = {{.type = Type::close}, {.type = Type::close}, key('q')};
  read();
  EXPECT_EQ(getch(), 'q');
  EXPECT_EQ(closed, 2);
}

}  // namespace
}  // namespace torve
