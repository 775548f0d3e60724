// A user played from a list of events, the menus that he meets, and a font whose text can be read
// off the screen.
#pragma once

#include <algorithm>
#include <cstring>

#include "base/errors.hpp"
#include "dialogs/install.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/messages.hpp"
#include "dialogs/popup_menu.hpp"
#include "dialogs/strip.hpp"
#include "pool/pool.hpp"
#include "support/hands.hpp"
#include "support/screen.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"
#include "wm/wd_object.hpp"

namespace torve {

/// The menus of all tests: one with fields of every kind, more lines than it shows and longer ones
/// than it is wide; and one without fields.
struct SampleMenu {
  int width, visible_lines, line_count, item_count;
};
inline constexpr SampleMenu field_menu = {320, 3, 9, 5}, pen_menu = {136, 3, 3, 0};

inline constexpr int line_size = 80;
// The last stands for all lines behind it.
inline constexpr const char* sample_lines[] = {
    "Autocorrelation of            to Plot   ", "work load distribution ",
    "delay=       ,parameter=     ", "arrival rate        calls/s "};
inline constexpr MenuItem sample_items[] = {
    {"bhld1.res", 19 * 8, 0, 30, 10, 2},
    {"1", 38 * 8, 0, 30, 2},
    {"\1uniform\2normal\3constant", 23 * 8, 11, 30, 10, 1, ItemFlags::selection},
    {"5", 6 * 8, 22, 6, 6, 1, ItemFlags::use_maxlen},
    {"100", 13 * 8, 66, 6, 6, 1, ItemFlags::use_maxlen}};

/// A screen, a font whose glyphs show their own codes in the first row, and the dialogs.
class DialogTest : public ScreenTest, protected Hands {
 protected:
  DialogTest() {
    std::string font = {10, 127};
    for (int code = 0; code < 127; ++code)
      font += static_cast<char>(code) + std::string(9, '\0');
    write_file("font7.dat", font);
    reset_text_state();
    defaultfont = 7;
    EXPECT_EQ(init_font(7), 0);
    user_events.clear(), at_wait = nullptr, user_time = 1000;
    set_display_backend(&user);
    EXPECT_EQ(initPool(0, 0, 0, 0), 0);
    EXPECT_TRUE(allocate_staging());
    init_win(0, 0);
    reset_messages();
    reset_strip();
    fill_jmptable_b(default_action_slot, [](int, int*, MenuItem*, char**) { return 0; });
    install_dialogs();
    for (int y = 0; y < 600; y += 7)
      clearwin(y, y, 800, y + 3, y % 15 + 1);  // something to be covered
    clearwin(strip_area.x1, strip_area.y1, strip_area.x2, strip_area.y2, white_colour);
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

  static void make_sample_menu(int id, const SampleMenu& menu, int x, int y) {
    MenuItem* items = nullptr;
    char** lines = nullptr;
    int* flags = nullptr;
    const auto [width, visible, line_count, item_count] = menu;
    ASSERT_EQ(create_menustructure(&items, &lines, &flags, item_count, line_count, line_size), 0);
    for (int i = 0; i < line_count; ++i)
      std::strcpy(lines[i], sample_lines[std::min(i, 3)]);
    std::copy_n(sample_items, item_count, items);
    make_popup_menu(id, x, y, width, 24 + visible * 11, 16, 1, 3, 9, 0, items, lines, flags,
                    item_count, line_count, visible, line_size);
  }
  static void put(int id) { ASSERT_EQ(put_wd_objects(id, id), 0); }
  static void open_menu(int id, const SampleMenu& menu, int x, int y) {
    make_sample_menu(id, menu, x, y), put(id);
  }

  /// The main loop until the user has nothing left to do.
  void play() {
    while (!user_events.empty()) {
      if (engine_round().result == EngineRound::Result::run_action) ++actions_run, spend_press();
    }
    // Whatever is served is put down by the press on the bare canvas.
    while (popwindow != 0 || cur_button != 0)
      (void)engine_round();
  }

  /// The characters in the cells from (x, y) on.
  static std::string text_at(int x, int y, int cells, std::uint32_t ink = 0) {
    std::string text;
    for (int cell = 0; cell < cells; ++cell) {
      int code = 0;
      for (int bit = 0; bit < 8; ++bit)
        code = code * 2 + (getpixel2c(x + cell * 8 + bit, y) == ink ? 1 : 0);
      text += static_cast<char>(code == 0 ? ' ' : code);
    }
    return text;
  }

  int actions_run = 0;
  TemporaryDirectory directory_;
};

}  // namespace torve
