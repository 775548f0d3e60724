// Menus, plots and analyses: what a person sees after each line of each tool.

#include "desktop/tools.hpp"

#include <string>
#include <vector>

namespace torve::desktop {
namespace {

using Menus = Workbench;
using Plots = Workbench;

/// The panes, "1" to "3", whose pictures differ.
std::string changed_panes(const Picture& before, const Picture& after) {
  std::string changed;
  for (int pane = 0; pane < 3; ++pane) {
    if (cut(before, pane_area(pane)) != cut(after, pane_area(pane)))
      changed += std::to_string(pane + 1);
  }
  return changed;
}

TEST_F(Menus, an_icon_opens_one_menu_however_it_is_pressed) {
  start();
  const Picture canvas = screenshot();
  open(plot_tool);
  const Picture opened = screenshot();
  ASSERT_NE(opened, canvas);
  edit(plot_tool, 1, 23, "7");
  const Picture edited = screenshot();
  open(plot_tool);
  EXPECT_EQ(screenshot(), edited) << "pressed again";
  close(plot_tool);
  EXPECT_EQ(screenshot(), canvas) << "closed";

  const Area icon = icon_area(plot_tool.icon);
  press(icon.x + 20, icon.y + 20);
  for (const int tremble : {1, 3, 0, 2}) {
    settle();
    server().move_pointer(window(), icon.x + 20 + tremble, icon.y + 20 - tremble);
  }
  settle();
  release();
  settle();
  EXPECT_EQ(screenshot(), opened) << "with a tremble";
  close(plot_tool);
  EXPECT_EQ(screenshot(), canvas) << "one menu, not two";
}

TEST_F(Menus, the_exit_icon_ends_the_program_with_menus_open) {
  start();
  open(write_tool);
  open(print_tool);
  click(22, 575);
  EXPECT_EQ(exit_status(), 1);
  EXPECT_EQ(errors(), "");
}

TEST_F(Menus, leave_nothing_behind_on_plots_made_under_them) {
  start();
  const Picture canvas = screenshot();
  open(plot_tool);
  run(plot_tool, 0);
  ASSERT_EQ(changed_panes(canvas, screenshot()), "1");
  // Both menus lie over the panes that are drawn.
  const Tool plots = move(plot_tool, 200, 150);
  open(read_tool);
  const Tool reader = move(read_tool, 160, 40);
  edit(reader, 0, 18, "bhld1.res");
  run(reader, 0);
  close(plots);
  close(reader);
  EXPECT_EQ(screenshot(), canvas);
}

TEST_F(Menus, of_all_six_tools_leave_the_canvas_as_the_same_plots_without_menus) {
  for (const char* name : {"bhld1.res", "bhld2.res", "compar3.res"}) {
    std::vector<double> values = read_signal(name);
    values.resize(12000);
    write_signal(name, values);
  }
  start();
  const Picture canvas = screenshot();
  // Each menu leaves the icons of those after it in sight.
  open(spectrum_tool);
  edit(spectrum_tool, 1, 47, "10000");
  run(spectrum_tool, 1);
  open(correlate_tool);
  run(correlate_tool, 1);
  open(write_tool);
  edit(write_tool, 2, 4, "bhld1.res");
  run(write_tool, 0);
  open(print_tool);
  run(print_tool, 0);
  open(plot_tool);
  run(plot_tool, 0);
  EXPECT_EQ(changed_panes(canvas, screenshot()), "13");

  open(read_tool);
  for (const char* pane : {"1", "3"}) {
    // From right to left: a field that is filled widens and moves what is right of it.
    edit(read_tool, 0, 54, pane);
    edit(read_tool, 0, 18, *pane == '1' ? "bhld1.res" : "compar3.res");
    run(read_tool, 0);
  }
  for (const Tool& tool :
       {read_tool, plot_tool, print_tool, write_tool, correlate_tool, spectrum_tool})
    close(tool);
  EXPECT_EQ(screenshot(), canvas);
}

TEST_F(Plots, are_drawn_with_the_settings_of_their_line) {
  for (const char* name : {"bhld1.res", "bhld2.res", "compar3.res"})
    write_signal(name, std::vector<double>(10000, 1.0));
  start();
  open(plot_tool);
  Picture before = screenshot();
  const char* const changes[] = {"1", "2", "3"};
  for (int line = 0; line < 3; ++line) {
    run(plot_tool, line);
    const Picture after = screenshot();
    EXPECT_EQ(changed_panes(before, after), changes[line]);
    before = after;
  }
  // A running sum over 44 ones.
  EXPECT_TRUE(wrote("value is 1.000000\nplot_curve largest absolute value is 44.000000\n"));
  edit(plot_tool, 1, 23, "3");
  edit(plot_tool, 1, 42, "0.5");
  run_by_double_press(plot_tool, 1);
  EXPECT_TRUE(wrote("plot_curve largest absolute value is 3.000000\n"));
  // Ones at half the half height of 79 above the zero row, which is row 75 of the pane.
  EXPECT_EQ(count(screenshot(), {40, 176 + 75 - 39, 756, 1}, black), 756);
}

TEST_F(Plots, a_match_fills_in_the_settings_and_draws_all_panes) {
  start();
  open(plot_tool);
  run(plot_tool, 3);
  EXPECT_TRUE(wrote("sample too small\n")) << "no samples were asked for";
  const Picture before = screenshot();
  edit(plot_tool, 2, 12, "all");
  edit(plot_tool, 3, 27, "1000");
  run(plot_tool, 3);
  EXPECT_EQ(changed_panes(before, screenshot()), "123");
  EXPECT_TRUE(pane_shows(2, "compres.res"));
  EXPECT_TRUE(shows(plot_tool, 0, 12, "0 "));
  EXPECT_TRUE(shows(plot_tool, 1, 12, "1544"));
  EXPECT_TRUE(shows(plot_tool, 2, 12, "1544"));
  EXPECT_FALSE(shows(plot_tool, 0, 42, "1.0"));
  EXPECT_GT(read_signal("compres.res").size(), 80000U);
}

}  // namespace
}  // namespace torve::desktop
