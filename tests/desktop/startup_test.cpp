// What a person sees when the program has started.

#include <algorithm>
#include <array>

#include "desktop/harness.hpp"

namespace torve::desktop {
namespace {

constexpr std::array<const char*, 7> icons = {"texit",   "plicon",  "print", "readic",
                                              "writeic", "compile", "start"};
constexpr int pane_count = 3;
constexpr std::array<const char*, pane_count> signals = {"bhld1.res", "bhld2.res", "compar3.res"};
constexpr int pane_pitch = 176;
constexpr std::uint32_t cyan = 0x00FFFF;

Area pane(int i) {
  return {0, pane_pitch * i, 800, 170};
}

constexpr int behind_ticks = 38;

/// The first column, from `behind_ticks` on, that holds a pixel of the curve.
int first_column_of_curve(const Picture& picture, int i) {
  const int zero_row = pane_pitch * i + 75;
  int x = behind_ticks;
  while (x < 796 && count(picture, {x, zero_row - 20, 1, 41}, black) == 0)
    ++x;
  return x;
}

/// Columns of the pane in which the curve leaves the zero row, which lies 75 below the pane's top.
std::vector<int> swinging_columns(const Picture& picture, int i) {
  const int zero_row = pane_pitch * i + 75;
  std::vector<int> columns;
  for (int x = 40; x < 796; ++x) {
    if (count(picture, {x, zero_row - 12, 1, 25}, black) > 12) columns.push_back(x);
  }
  return columns;
}

using Startup = Desktop;

TEST_F(Startup, shows_seven_icons_and_three_signals) {
  start();
  const Picture picture = screenshot();
  ASSERT_EQ(picture.width, 800);
  ASSERT_EQ(picture.height, 600);

  for (int i = 0; i < static_cast<int>(icons.size()); ++i) {
    const char* name = icons[static_cast<std::size_t>(i)];
    EXPECT_EQ(cut(picture, icon_area(i)), read_icon(name)) << name;
  }
  for (int i = 0; i < pane_count; ++i) {
    const char* name = signals[static_cast<std::size_t>(i)];
    const int top = pane_pitch * i + 12;
    EXPECT_TRUE(shows_text(picture, 6, 96, top + 3, name, black)) << name;
    EXPECT_TRUE(shows_text(picture, 6, 776, top + 145, "ms", black)) << name;
    EXPECT_GT(swinging_columns(picture, i).size(), 150U) << name;
  }
  // Pane 2 starts 1544 samples of 0.02 pixels to the right, so the stroke lies under the stroke.
  EXPECT_EQ(first_column_of_curve(picture, 0), behind_ticks);
  EXPECT_EQ(first_column_of_curve(picture, 1), 62);
  EXPECT_EQ(first_column_of_curve(picture, 2), behind_ticks);
  EXPECT_NEAR(swinging_columns(picture, 0).front(), swinging_columns(picture, 1).front(), 1);
  // The clear at the start reaches the last column and the last row.
  EXPECT_EQ(picture.at(799, 300), white);
  EXPECT_EQ(picture.at(2, 599), white);
  EXPECT_EQ(errors(), "");
}

TEST_F(Startup, reports_the_largest_value_of_each_signal) {
  start();
  EXPECT_TRUE(
      wrote("plot_curve largest absolute value is 0.859985\n"
            "plot_curve largest absolute value is 0.859985\n"
            "plot_curve largest absolute value is 1.000000\n"));
}

TEST_F(Startup, without_a_signal_it_says_so_and_leaves_the_panes_empty) {
  std::filesystem::remove(folder() / "bhld2.res");
  start();
  const Picture picture = screenshot();
  EXPECT_TRUE(shows_text(picture, 6, 96, 3, "Cannot find files", cyan));
  for (int i = 0; i < pane_count; ++i) {
    const Area area = i == 0 ? Area{0, 14, 800, 156} : pane(i);
    EXPECT_EQ(count(picture, area, white), area.width * area.height) << "pane " << i;
  }
  EXPECT_EQ(cut(picture, icon_area(0)), read_icon(icons[0]));
}

TEST_F(Startup, a_signal_in_the_working_directory_is_never_changed) {
  const std::filesystem::path file = folder() / "bhld1.res";
  const auto before = std::filesystem::last_write_time(file);
  start();
  EXPECT_EQ(std::filesystem::last_write_time(file), before);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder()), {}), pane_count);
}

TEST_F(Startup, without_a_font_it_gives_up_with_a_message) {
  for (const char* font : {"font7.dat", "font6.dat"}) {
    std::filesystem::remove(use_copied_installation() / "font" / font);
    launch();
    EXPECT_EQ(exit_status(), 1) << font;
    EXPECT_TRUE(wrote("problems in loading font\n")) << font;
    EXPECT_EQ(errors(), "") << font;
  }
}

TEST_F(Startup, read_only_data_is_enough) {
  const std::filesystem::path share = use_copied_installation();
  for (const auto& entry : std::filesystem::recursive_directory_iterator(share)) {
    using enum std::filesystem::perms;
    if (entry.is_regular_file()) permissions(entry, owner_read | group_read | others_read);
  }
  use_ordinary_user();
  start();
  EXPECT_EQ(cut(screenshot(), icon_area(6)), read_icon(icons[6]));
}

TEST_F(Startup, gives_up_on_a_screen_of_too_few_colours) {
  use_screen("800x600x16");
  launch();
  EXPECT_EQ(exit_status(), 255);
  EXPECT_EQ(output(), "X not started\n");
  EXPECT_EQ(errors(), "");
}

}  // namespace
}  // namespace torve::desktop
