// A user played from a list of events.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "base/progress.hpp"
#include "display/input.hpp"

namespace torve {

using Type = InputEvent::Type;
using Pixels = std::vector<std::uint32_t>;

inline std::deque<InputEvent> user_events;
inline std::function<void()> at_wait;  // runs before each wait of the program
inline std::uint32_t user_time = 0;

/// A place where the tests never put an object. When the list is at its end the user lets go,
/// presses and releases there and presses a key, which ends whatever the program was waiting for.
inline int bare_x = 795, bare_y = 5;

/// What the user does.
struct Hands {
  static void add(InputEvent event, std::uint32_t wait = 20) {
    event.time = user_time += wait;
    user_events.push_back(event);
  }
  static void press(int x, int y, int button = 1, std::uint32_t wait = 20) {
    add({.type = Type::press, .button = button, .x = x, .y = y}, wait);
  }
  static void move(int x, int y) { add({.type = Type::motion, .button = 1, .x = x, .y = y}); }
  static void release(int x, int y, int button = 1) {
    add({.type = Type::release, .button = button, .x = x, .y = y}, 0);
  }
  static void click(int x, int y, int button = 1, std::uint32_t wait = 20) {
    press(x, y, button, wait), release(x, y, button);
  }
  static void drag(int x1, int y1, int x2, int y2, int button = 1) {
    press(x1, y1, button), move((x1 + x2) / 2, (y1 + y2) / 2), move(x2, y2);
    release(x2, y2, button);
  }
  /// '<' and '>' are the arrow keys.
  static void type(const std::string& keys) {
    for (const char character : keys) {
      const bool left = character == '<', arrow = left || character == '>';
      InputEvent event = {.type = Type::key, .keysym = left ? 0xFF51UL : 0xFF53UL};
      if (!arrow) event.characters[event.character_count++] = character;
      add(event);
    }
  }
};

// The user waits for the program: nothing that he does later is dropped.
inline const DisplayBackend user = {
    .wait_event =
        [](InputEvent& event) {
          if (at_wait) at_wait();
          if (user_events.empty()) {
            Hands::release(bare_x, bare_y, 3), Hands::release(bare_x, bare_y);
            Hands::click(bare_x, bare_y), Hands::type(" ");
          }
          event = user_events.front();
          user_events.pop_front();
        },
    .event_pending = [] { return false; },
    .drop_events = [](Type) { return false; },
    .push = [](const Rect&) {},
};

// From now on every computation is cancelled where it first asks whether to go on.
inline void cancel_computations() {
  static constexpr Watcher refuser = {
      .begin = [](const std::string&) {}, .goes_on = [](double) { return false; }, .end = [] {}};
  set_watcher(&refuser);
}

}  // namespace torve
