// Mouse and keyboard rules, played from a list of events.

#include "support/hands.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

// Several events may wait, and those of a type may be dropped.
const DisplayBackend player = {
    .wait_event = user.wait_event,
    .event_pending = [] { return !user_events.empty(); },
    .drop_events =
        [](Type type) {
          const auto is_dropped = [type](const InputEvent& event) { return event.type == type; };
          return std::erase_if(user_events, is_dropped) > 0;
        },
    .push = [](const Rect&) {},
};

class InputTest : public ScreenTest {
 protected:
  InputTest() { set_display_backend(&player); }
  ~InputTest() override { set_display_backend(nullptr); }

  using Reading = std::tuple<int, int, int>;  // button, x, y
  Reading read() {
    readmouse(&buttons, &X, &Y);
    return {buttons, X, Y};
  }
};

TEST_F(InputTest, OneReadingForEachEvent) {
  const struct {
    Type type;
    int button, x, y;
    Reading expected;
    const char* what;
  } steps[] = {{Type::motion, 0, 5, 6, {0, 5, 6}, "motion without a button"},
               {Type::press, 3, 10, 20, {2, 10, 20}, "right counts as 2"},
               {Type::motion, 0, 900, 597, {2, 799, 594}, "clamped"},
               {Type::key, 0, 1, 1, {2, 799, 594}, "a key is no release"},
               {Type::release, 5, 1, 1, {2, 799, 594}, "nor the wheel"},
               {Type::release, 3, -4, -4, {0, 0, 0}, "release, clamped"},
               {Type::press, 4, 30, 30, {0, 0, 0}, "the wheel presses nothing"},
               {Type::press, 1, 7, 8, {1, 7, 8}, "left"}};
  for (const auto& step : steps) {
    user_events = {{.type = step.type, .button = step.button, .x = step.x, .y = step.y}};
    EXPECT_EQ(read(), step.expected) << step.what;
  }
}

TEST_F(InputTest, APressDropsWaitingPressesOnly) {
  user_events.clear();
  Hands::press(1, 1), Hands::press(2, 2), Hands::release(3, 3), Hands::type("k");
  EXPECT_EQ(read(), (Reading{1, 1, 1}));
  EXPECT_EQ(read(), (Reading{0, 3, 3}));
  EXPECT_EQ(user_events.size(), 1U);
}

TEST_F(InputTest, AnEventSaysWhichKeysAreHeld) {
  using enum Modifiers;
  for (const auto& [type, held] :
       {std::pair(Type::press, control), {Type::motion, shift | alt}, {Type::release, none}}) {
    user_events = {{.type = type, .button = 1, .modifiers = held}};
    EXPECT_EQ(next_pointer_event().modifiers, held);
    EXPECT_EQ(present_pointer().modifiers, held);
  }
}

TEST_F(InputTest, KeysComeOneAtATimeAndNothingElseIsForgotten) {
  static int closed;
  set_close_handler([] { ++closed; });
  present();
  cur_button = 1;
  user_events = {{.type = Type::expose},
                 {.type = Type::resize, .width = 850, .height = 610},
                 {.type = Type::close},
                 {.type = Type::release, .button = 1},
                 {.type = Type::key, .is_modifier = true}};
  Hands::type("Ab");
  EXPECT_EQ(getch(), 'A') << "Shift alone is no key";
  EXPECT_TRUE(user_events.empty()) << "typed ahead";
  EXPECT_EQ(std::tuple(cur_button, window_width, window_height, closed),
            std::tuple(0, 850, 610, 1));
  EXPECT_EQ(dirty_rect(), whole_screen) << "the expose event is answered at the next wait";
}

}  // namespace
}  // namespace torve
