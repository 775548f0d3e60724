// Double presses and drags.

#include <vector>

#include <gtest/gtest.h>

#include "dialogs/click_gestures.hpp"

namespace torve {
namespace {

constexpr auto P = PointerAction::press;
constexpr auto M = PointerAction::motion;
constexpr auto R = PointerAction::release;

TEST(Gestures, AreWhatTheLastEventCompletes) {
  const struct {
    const char* what;
    std::vector<PointerEvent> events;
    Gesture expected;
  } cases[] = {
      {"a press", {{P, 5, 5, 0, 10}}, Gesture::none},
      {"two", {{P, 5, 5, 0, 10}, {R, 5, 5, 0, 60}, {P, 5, 5, 0, 200}}, Gesture::double_press},
      {"too short to be human",
       {{P, 5, 5, 0, 10}, {R, 5, 5, 0, 10}, {P, 5, 5, 0, 10}},
       Gesture::double_press},
      {"just in time",
       {{P, 5, 5, 0, 10}, {R, 5, 5, 0, 11}, {P, 5, 5, 0, 510}},
       Gesture::double_press},
      {"late", {{P, 5, 5, 0, 10}, {R, 5, 5, 0, 60}, {P, 5, 5, 0, 511}}, Gesture::none},
      {"an unsteady hand",
       {{P, 5, 5, 0, 10}, {R, 7, 3, 0, 60}, {P, 8, 2, 0, 200}},
       Gesture::double_press},
      {"4 pixels", {{P, 5, 5, 0, 10}, {R, 5, 5, 0, 60}, {P, 9, 5, 0, 200}}, Gesture::none},
      {"another row", {{P, 5, 5, 0, 10}, {R, 5, 5, 0, 60}, {P, 5, 6, 1, 200}}, Gesture::none},
      {"outside the rows",
       {{P, 5, 5, -1, 10}, {R, 5, 5, -1, 60}, {P, 5, 5, -1, 200}},
       Gesture::none},
      {"no release", {{P, 5, 5, 0, 10}, {P, 5, 5, 0, 200}}, Gesture::none},
      {"the second and third of three",
       {{P, 5, 5, 0, 0},
        {R, 5, 5, 0, 9},
        {P, 90, 5, 0, 99},
        {R, 90, 5, 0, 120},
        {P, 90, 5, 0, 400}},
       Gesture::double_press},
      {"a clock that wraps",
       {{P, 5, 5, 0, 0xFFFFFFF0}, {R, 5, 5, 0, 0xFFFFFFFF}, {P, 5, 5, 0, 100}},
       Gesture::double_press},
      {"tremble", {{P, 5, 5, 0, 10}, {M, 12, 5, 0, 30}}, Gesture::none},
      {"a drag", {{P, 5, 5, 0, 10}, {M, 13, 6, 0, 30}}, Gesture::drag},
      {"to the left", {{P, 50, 5, 0, 10}, {M, 13, 6, 0, 30}}, Gesture::none},
      {"off the row", {{P, 5, 5, 0, 10}, {M, 33, 16, 1, 30}}, Gesture::none},
      {"not held", {{P, 5, 5, 0, 10}, {R, 5, 5, 0, 20}, {M, 33, 5, 0, 30}}, Gesture::none},
  };
  for (const auto& test : cases) {
    ClickGestures gestures;
    Gesture found = Gesture::none;
    for (const PointerEvent& event : test.events)
      found = gestures.on_event(event);
    EXPECT_EQ(found, test.expected) << test.what;
  }
}

TEST(Gestures, ManyMotionsDoNotMakeTimeRun) {
  ClickGestures gestures;
  gestures.on_event({P, 5, 5, 0, 0});
  for (std::uint32_t t = 1; t < 300; ++t)
    gestures.on_event({M, 5, 5, 0, t});
  gestures.on_event({R, 5, 5, 0, 300});
  EXPECT_EQ(gestures.on_event({P, 5, 5, 0, 480}), Gesture::double_press);
}

TEST(Gestures, AnEditMayHideTheReleaseAndKeysForgetThePress) {
  ClickGestures gestures;
  gestures.on_event({P, 5, 5, 0, 100});
  gestures.on_event({M, 5, 5, 0, 150});
  gestures.missed_release();
  ClickGestures typed = gestures;
  typed.forget();
  EXPECT_EQ(gestures.on_event({P, 5, 5, 0, 300}), Gesture::double_press);
  EXPECT_EQ(typed.on_event({P, 5, 5, 0, 300}), Gesture::none);
}

}  // namespace
}  // namespace torve
