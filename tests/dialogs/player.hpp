// A user played from a list of events, and a font whose text can be read off the screen.
#pragma once

#include <deque>

#include "base/errors.hpp"
#include "dialogs/install.hpp"
#include "dialogs/messages.hpp"
#include "pool/pool.hpp"
#include "support/screen.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"
#include "wm/wd_object.hpp"

namespace torve {

using Type = InputEvent::Type;

inline std::deque<InputEvent> user_events;
inline std::function<void()> at_wait;  // runs before each wait of the program
inline std::uint32_t user_time = 0;

/// A place where the tests never put an object. When the list is at its end the user lets go,
/// presses and releases there, which ends whatever the program was serving.
inline constexpr int bare_x = 795, bare_y = 5;

inline InputEvent mouse(Type type, int x, int y, int button = 1, std::uint32_t wait = 20) {
  return {.type = type, .button = button, .x = x, .y = y, .time = user_time += wait};
}

inline InputEvent key_event(char character, unsigned long name = 0) {
  InputEvent event = {.type = Type::key, .time = user_time += 20, .keysym = name};
  event.characters[0] = character;
  event.character_count = character != 0 ? 1 : 0;
  return event;
}

// The user waits for the program: nothing that he does later is dropped.
inline const DisplayBackend user = {
    .wait_event =
        [](InputEvent& event) {
          if (at_wait) at_wait();
          if (user_events.empty()) {
            user_events = {mouse(Type::release, bare_x, bare_y, 3),
                           mouse(Type::release, bare_x, bare_y), mouse(Type::press, bare_x, bare_y),
                           mouse(Type::release, bare_x, bare_y)};
          }
          event = user_events.front();
          user_events.pop_front();
        },
    .event_pending = [] { return false; },
    .drop_events = [](Type) { return false; },
    .push = [](const Rect&) {},
};

inline void press(int x, int y, int button = 1, std::uint32_t wait = 20) {
  user_events.push_back(mouse(Type::press, x, y, button, wait));
}
inline void move(int x, int y) {
  user_events.push_back(mouse(Type::motion, x, y));
}
inline void release(int x, int y, int button = 1) {
  user_events.push_back(mouse(Type::release, x, y, button, 0));
}
inline void click(int x, int y, int button = 1, std::uint32_t wait = 20) {
  press(x, y, button, wait);
  release(x, y, button);
}
inline void drag(int x1, int y1, int x2, int y2, int button = 1) {
  press(x1, y1, button);
  move((x1 + x2) / 2, (y1 + y2) / 2);
  move(x2, y2);
  release(x2, y2, button);
}
/// '<' and '>' are the arrow keys.
inline void type(const std::string& keys) {
  for (const char character : keys) {
    const bool left = character == '<';
    const bool arrow = left || character == '>';
    user_events.push_back(arrow ? key_event(0, left ? 0xFF51 : 0xFF53) : key_event(character));
  }
}

/// A screen, a font whose glyphs show their own codes in the first row, and the dialogs.
class DialogTest : public ScreenTest {
 protected:
  DialogTest() {
    std::string font = {10, 127};
    for (int code = 0; code < 127; ++code)
      font += static_cast<char>(code) + std::string(9, '\0');
    write_file("font7.dat", font);
    reset_text_state();
    defaultfont = 7;
    EXPECT_EQ(init_font(7), 0);
    user_events.clear();
    at_wait = nullptr;
    user_time = 1000;
    set_display_backend(&user);
    actions_run = 0;
    EXPECT_EQ(initPool(0, 0, 0, 0), 0);
    EXPECT_TRUE(allocate_staging());
    init_win(0, 0);
    reset_messages();
    fill_jmptable_b(default_action_slot, [](int, int*, MenuItem*, char**) { return 0; });
    install_dialogs();
    for (int y = 0; y < 600; y += 7)
      clearwin(y, y, 800, y + 3, y % 15 + 1);  // something to be covered
  }
  ~DialogTest() override {
    free_wd_objects();
    EXPECT_EQ(b_counter, 0);
    set_error_reporters(console_reporters);
    set_display_backend(nullptr);
    free_font();
    release_pool();
    release_staging();
  }

  /// The main loop until the user has nothing left to do.
  void play() {
    while (!user_events.empty()) {
      const int wanted = do_operations();
      if (wanted == engine_run_action) ++actions_run;
      if (wanted == engine_run_action) spend_press();
    }
    // Whatever is served is put down by the press on the bare canvas.
    while (popwindow != 0 || cur_button != 0)
      (void)do_operations();
  }

  /// The characters of black ink in the cells from (x, y) on.
  static std::string text_at(int x, int y, int cells) {
    std::string text;
    for (int cell = 0; cell < cells; ++cell) {
      int code = 0;
      for (int bit = 0; bit < 8; ++bit)
        code = code * 2 + (getpixel2c(x + cell * 8 + bit, y) == ink ? 1 : 0);
      text += static_cast<char>(code == 0 ? ' ' : code);
    }
    return text;
  }

  static inline std::uint32_t ink = 0;
  int actions_run = 0;
  TemporaryDirectory directory_;
};

}  // namespace torve
