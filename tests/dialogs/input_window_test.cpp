// Input windows: what their creators are told, what resizing keeps and shows, what comes back.

#include "dialogs/input_window.hpp"

#include "dialogs/player.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {
namespace {

constexpr int id = 6;
constexpr std::uint32_t dot = 0x123456, figure_ink = 0x654321;

std::string told;  // d: asked to draw, p: of a press
int figure_slope = 1;

// Writes a text whose first line the scroll position names; presses leave dots, one of the right
// button closes the window.
void write_and_dot(int window, int mode) {
  told += mode == mode_refresh ? 'd' : 'p';
  if (mode == mode_refresh) {
    EXPECT_TRUE(has(wd(window).flags, WdFlags::fresh));
    textn(std::string(30, static_cast<char>('A' + wd(window).scroll_line)).c_str(), fgcol, bgcol);
  } else if (buttons == 1) {
    if (rect_of(wd(window)).contains(X, Y)) drawpixel2c(X, Y, dot);
  } else {
    free_input_window(window);
  }
  xxmin = yymin = X1_min = 5000, fgcol = 9;
}

bool on_figure(int x, int y) {
  return (figure_slope * x + y) % 8 == 0;
}

void draw_figures(const Rect& rect) {
  for (int y = rect.y1; y < rect.y2; ++y) {
    for (int x = rect.x1; x < rect.x2; ++x) {
      if (on_figure(x, y)) drawpixel2c(x, y, figure_ink);
    }
  }
}

class InputWindows : public DialogTest {
 protected:
  InputWindows() { set_figure_hooks({.refresh = draw_figures}), told.clear(), figure_slope = 1; }
  ~InputWindows() override { set_figure_hooks({}); }

  // At (103, 200), 160 x 68: text from (119, 216), not aligned to cells; 9 lines to scroll.
  static void open(int columns = -1, int lines = 9) {
    make_input_window(id, 103, 200, 160, 68, 15, 1, 0, 0, "notes", 7, columns, lines,
                      write_and_dot);
    put(id);
  }
  // Whether the figures show inside [x1, x2) x [y1, y2) and nothing else does.
  static bool figures_fill(int x1, int y1, int x2, int y2) {
    for (int y = y1; y < y2; ++y) {
      for (int x = x1; x < x2; ++x) {
        const std::uint32_t shown = on_figure(x, y) ? figure_ink : colour_pixel(15);
        if (getpixel2c(x, y) != shown) return false;
      }
    }
    return true;
  }
  const Pixels bare = all_pixels();
};

TEST_F(InputWindows, CreatorsAreAskedToDrawAndToldOfPresses) {
  enum { gone, icon, shown };
  const struct {
    void (*acts)();
    std::string told;
    int then = shown, runs = 0, line = 0;
  } cases[] = {
      {[] {}, "d"},
      {[] { click(180, 240); }, "dp"},
      {[] { press(180, 240), move(190, 240), move(600, 20), release(600, 20); }, "dppp"},
      {[] { click(108, 258); }, "dpd", shown, 0, 1},
      {[] { press(108, 225), move(108, 260), release(108, 260); }, "dpd", shown, 0, 9},
      {[] { click(180, 205); }, "dp"},  // no columns to scroll
      {[] { click(180, 240, 3); }, "dp", gone},
      {[] { click(258, 204); }, "d", gone},
      {[] { click(258, 204, 3); }, "d", icon},
      {[] { click(258, 204, 3), click(110, 210); }, "dd"},
      {[] { click(107, 204); }, "d", shown, 1},
      {[] { drag(107, 204, 300, 300, 3), click(380, 340); }, "dp"},
      {[] { drag(262, 240, 270, 240); }, "dd"},
      {[] { open_menu(3, pen_menu, 96, 210), click(240, 260), click(240, 260); }, "ddpp"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(&test - cases);
    told.clear(), actions_run = 0;
    open();
    EXPECT_EQ(wd(id).background, nullptr);
    test.acts();
    play();
    EXPECT_EQ(told, test.told);
    EXPECT_EQ(actions_run, test.runs);
    EXPECT_EQ(wd(id).scroll_line, test.line);
    EXPECT_EQ(wd(id).kind == kind_free ? gone : is_icon(wd(id)) ? icon : shown, test.then);
    EXPECT_EQ(xxmin, 0);
    free_one_wd_object(3), free_input_window(id);
    EXPECT_TRUE(all_pixels() == bare);
  }
}

// Once it has been served, a request to draw does not clear the window: it is one to serve.
TEST_F(InputWindows, PressesStayUntilTheInsideIsDrawnAnew) {
  const struct {
    void (*acts)();
    bool stays;
  } cases[] = {
      {[] { EXPECT_EQ(input_window(id, mode_put), static_cast<int>(Command::put_down)); }, true},
      {[] { EXPECT_EQ(input_window(id, mode_refresh), static_cast<int>(Command::put_down)); },
       true},
      {[] { drag(262, 240, 300, 240), drag(303, 240, 250, 240); }, true},
      {[] { click(262, 240), drag(259, 267, 259, 1), drag(262, 240, 799, 240); }, true},
      {[] {
         const CanvasPaint scope({0, 0, 800, 600});
       },
       true},
      {[] { EXPECT_EQ(redraw_input_window(id), static_cast<int>(Command::put_down)); }, false},
      {[] { click(108, 258); }, false},
      {[] {
         press(258, 240), move(110, 240), move(110, 241), release(110, 241);
         click(108, 258);
       },
       false},
      {[] { hide_wd_object(id), put(id); }, false},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(&test - cases);
    open();
    click(180, 226);
    play();
    ASSERT_EQ(getpixel2c(180, 226), dot);
    test.acts();
    play();
    EXPECT_EQ(getpixel2c(180, 226) == dot, test.stays);
    EXPECT_EQ(text_at(119, 216, 2), wd(id).scroll_line == 0 ? "AA" : "BB");
    free_input_window(id);
    EXPECT_TRUE(all_pixels() == bare);
  }
}

TEST_F(InputWindows, FiguresShowInWhatAWindowHasGrownBy) {
  open();
  const auto grow = [] {
    drag(102 + wd(id).width, 240, 301, 240);   // to 303
    drag(270, 199 + wd(id).height, 270, 300);  // to 301
  };
  grow(), play();
  const auto shown = [](int width) {
    return figures_fill(99 + width, 227, 298, 296) && figures_fill(115, 263, 298, 296);
  };
  EXPECT_TRUE(shown(160));
  EXPECT_EQ(text_at(119, 216, 8), "AAAAAAAA");
  EXPECT_EQ(text_at(175, 216, 10), "AAAAAAAAAA") << "drawn at the new width, too";
  EXPECT_NE(getpixel2c(200, 240), figure_ink);
  open_menu(3, pen_menu, 240, 210);
  figure_slope = 3;
  { const CanvasPaint figures_change({280, 280, 281, 281}, PaintOn::figures); }
  const Pixels below_menu = all_pixels();
  refresh_one_wd_object(3);
  EXPECT_TRUE(all_pixels() == below_menu) << "it has stayed whole";
  free_pop_up_menu(3);
  EXPECT_TRUE(shown(160)) << "as they are now";
  drag(300, 240, 250, 240);
  play();
  const int narrow = wd(id).width;
  EXPECT_LT(narrow, 160);
  grow(), play();
  EXPECT_TRUE(shown(narrow));

  for (void (*const act)() :
       {+[] { click(108, 290); }, +[] { drag(107, 204, 120, 230, 3); },
        +[] { move_input1(id, 120, 230); }, +[] { hide_wd_object(id), put(id); }}) {
    free_input_window(id);
    open();
    grow(), play();
    act();
    play();
    const Pixels pixels = all_pixels();
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), figure_ink), 0);
  }
  free_input_window(id);
  EXPECT_TRUE(all_pixels() == bare);
}

TEST_F(InputWindows, LookTheSameAtEveryPlace) {
  make_input_window(id, 103, 200, 165, 68, 15, 1, 0, 0, "notes", 7, 9, 9, write_and_dot);
  put(id);
  const auto row_of_text = [] {
    Pixels row;
    for (int x = 0; x < wd(id).width; ++x)
      row.push_back(getpixel2c(wd(id).x + x, wd(id).y + 16));
    return row;
  };
  const Pixels row = row_of_text();
  for (int x = 104; x < 111; ++x) {
    move_input1(id, x, 300);
    EXPECT_EQ(row_of_text(), row) << x;
  }
}

TEST_F(InputWindows, NegativeRangesComeFromTheSize) {
  open(-1, -1);
  ScrollState scroll;
  init_input_resizable(wd(id), scroll);
  EXPECT_EQ(scroll.column_range, 2 - 160 / 8);
  EXPECT_EQ(scroll.line_range, 2 - 68 / 11);
  EXPECT_EQ(scroll.y_fraction, 0);
  wd(id).column_range = 64, wd(id).scroll_column = 16;
  init_input_resizable(wd(id), scroll);
  EXPECT_EQ(scroll.x_fraction, 32);
  for (const int bad_id : {0, 129}) {
    EXPECT_EQ(make_input_window(bad_id, 1, 1, 99, 99, 1, 1, 1, 1, "", 0, 0, 0, nullptr), 1);
    EXPECT_EQ(input_window(bad_id, mode_put) + move_input1(bad_id, 1, 1), 2);
  }
}

}  // namespace
}  // namespace torve
