// The whole diagram editor, and a user of it: palette, menus and canvas are there, no plots.
#pragma once

#include "app/main_loop.hpp"
#include "diagram/diagram_state.hpp"
#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/history.hpp"
#include "diagram/palette.hpp"
#include "dialogs/install.hpp"
#include "dialogs/messages.hpp"
#include "display/colours.hpp"
#include "pool/pool.hpp"
#include "support/canvas_model.hpp"
#include "support/hands.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"

namespace torve {

constexpr int palette_lines = 14, undo_line = 9, arc_line = 12, text_line = 13;

class DiagramTest : public ScreenTest, protected Hands {
 protected:
  DiagramTest() {
    reset_text_state();
    defaultfont = 7;
    EXPECT_EQ(init_font(7) + init_font2(6), 0);
    user_events.clear(), at_wait = nullptr, user_time = 1000;
    bare_x = 795, bare_y = 590;
    set_display_backend(&user);
    EXPECT_EQ(initPool(0, 0, 0, 0), 0);
    EXPECT_TRUE(allocate_staging());
    init_win(0, 0);
    reset_messages();
    install_dialogs();
    install_diagram();
    xxmin = yymin = 0, xxmax = 680, yymax = 599;
    EXPECT_EQ(init_engine(1), 0);
  }
  ~DiagramTest() override {
    close_everything();
    free_wd_objects();
    bare_x = 795, bare_y = 5;
    set_figure_hooks({});
    set_error_reporters(console_reporters);
    set_display_backend(nullptr);
    free_font(), free_font2();
    release_pool();
    release_staging();
  }

  static void close_everything() {
    exit_ope();
    reset_history();
    free_wd_objects_gt1_u();
    free_vector_objects(VectorMode::clipped);
  }

  static void double_click(int x, int y) { click(x, y, 1, 600), click(x, y, 1, 100); }
  static int line_row(const WdObject& menu, int line) { return menu.y + 16 + 11 * line + 5; }
  static void run_line(int id, int line) {
    if (is_eligible(wd(id))) double_click(wd(id).x + 30, line_row(wd(id), line));
  }

  // Runs a line of the palette, which is opened first by a press that may fall on something else.
  static void choose(int line, int opened_at = 100) {
    if (!is_eligible(wd(palette_id))) click(opened_at, 585, 3, 600), play();
    run_line(palette_id, line), play();
  }

  static void play(const JumpEntry* icons = no_icons) {
    while (!user_events.empty())
      ASSERT_FALSE(main_loop_round(icons));
    while (popwindow != 0 || cur_button != 0)
      ASSERT_FALSE(main_loop_round(icons));
  }

  Pixels base_;
  static constexpr JumpEntry no_icons[1] = {};
  TemporaryDirectory directory_;
};

}  // namespace torve
