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

// A press has left a dot. Once it has been served, a request to draw does not clear the window: it
// is one to serve.
TEST_F(InputWindows, CreatorsAreToldAndPressesStayUntilTheInsideIsDrawnAnew) {
  enum Then { gone, icon, shown };
  const struct {
    const char* what;
    void (*acts)();
    std::string told;
    bool dot_stays = true;
    Then then = shown;
    int runs = 0, line = 0;
  } cases[] = {
      {"nothing", [] {}, ""},
      {"a press", [] { click(190, 240); }, "p"},
      {"a drag", [] { press(190, 240), move(199, 240), move(600, 20), release(600, 20); }, "ppp"},
      {"a line down", [] { click(108, 258); }, "pd", false, shown, 0, 1},
      {"all down", [] { drag(108, 225, 108, 260); }, "pdd", false, shown, 0, 9},
      {"no columns to scroll", [] { click(180, 205); }, "p"},
      {"its creator closes it", [] { click(190, 240, 3); }, "p", false, gone},
      {"closed", [] { click(258, 204); }, "", false, gone},
      {"an icon", [] { click(258, 204, 3); }, "", false, icon},
      {"no icon", [] { click(258, 204, 3), click(110, 210); }, "d", false},
      {"run", [] { click(107, 204); }, "", true, shown, 1},
      {"moved", [] { drag(107, 204, 107, 212, 3), click(190, 240); }, "p"},
      {"covered", [] { open_menu(3, pen_menu, 96, 210), click(240, 260), click(240, 260); }, "dpp",
       false},
      {"put", [] { EXPECT_EQ(input_window(id, mode_put), -2); }, ""},
      {"drawn", [] { EXPECT_EQ(input_window(id, mode_refresh), -2); }, ""},
      {"wider, narrower", [] { drag(262, 240, 300, 240), drag(303, 240, 250, 240); }, "ddd"},
      {"and flat", [] { click(262, 240), drag(259, 267, 259, 1), drag(262, 240, 799, 240); },
       "ddd"},
      {"painted beneath", [] { const CanvasPaint all(whole_screen); }, ""},
      {"drawn anew", [] { EXPECT_EQ(redraw_input_window(id), -2); }, "d", false},
      {"small, a line down", [] { drag(258, 240, 110, 241), click(108, 258); }, "ddpd", false,
       shown, 0, 1},
      {"hidden", [] { hide_wd_object(id), put(id); }, "d", false}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    told.clear(), actions_run = 0;
    open();
    EXPECT_EQ(wd(id).background, nullptr);
    click(180, 226);
    play();
    EXPECT_EQ(getpixel2c(180, 226), dot);
    test.acts();
    play();
    EXPECT_EQ(told, "dp" + test.told);
    EXPECT_EQ(actions_run, test.runs);
    EXPECT_EQ(wd(id).scroll_line, test.line);
    EXPECT_EQ(wd(id).kind == kind_free ? gone : is_icon(wd(id)) ? icon : shown, test.then);
    EXPECT_EQ(getpixel2c(wd(id).x + 77, wd(id).y + 26) == dot, test.dot_stays);
    const char* first = test.line == 0 ? "AA" : test.line == 1 ? "BB" : "JJ";
    EXPECT_TRUE(test.then != shown || text_at(wd(id).x + 16, wd(id).y + 16, 2) == first);
    EXPECT_EQ(xxmin, 0);
    free_one_wd_object(3), free_input_window(id);
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
    for (int x = 0; x < 165; ++x)
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
  EXPECT_EQ(std::tuple(scroll.column_range, scroll.line_range, scroll.y_fraction),
            std::tuple(2 - 160 / 8, 2 - 68 / 11, 0));
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
