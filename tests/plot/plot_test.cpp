// Plots: points, rows and columns of known samples, numbers along the axes.

#include <algorithm>
#include <climits>
#include <cmath>

#include "app/plot/axis_numbers.hpp"
#include "app/plot/plot_panes.hpp"
#include "app/plot/running_sums.hpp"
#include "base/console.hpp"
#include "eps/eps_stream.hpp"
#include "support/screen.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {
namespace {

TEST(RunningSums, EqualTheLiteralLoop) {
  std::vector<float> values(1000);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = std::sin(0.37F * static_cast<float>(i * i));
  for (const int step : {-1, 0, 1, 2, 44, 441, 999, 1000, 5000, INT_MAX}) {
    const std::vector<float> sums = running_sums(values, step);
    ASSERT_EQ(sums.size(), values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      float sum = 0;
      for (std::size_t k = i; k < values.size() && static_cast<int>(k - i) < step; ++k)
        sum += values[k];
      ASSERT_EQ(sums[i], sum) << step << ' ' << i;
    }
  }
}

TEST(AxisNumbers, FourDigitsInTheRoomThereIs) {
  const struct {
    double value;
    const char *narrow, *wide;
  } cases[] = {
      {-0.0, "0", "0"},
      {56.689342, "56.68", "56.68"},
      {0.3 - 1e-12, "0.3", "0.3"},
      {-0.859985, "-0.85", "-0.859"},
      {0.00128, "12e-4", "1.28e-3"},
      {5e-324, "", "4.9e-324"},
      {NAN, "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(axis_number(c.value, 5), c.narrow);
    EXPECT_EQ(axis_number(c.value, 8), c.wide);
  }
}

class PlotTest : public ScreenTest {
 protected:
  PlotTest() {
    reset_text_state();
    defaultfont = 7;
    EXPECT_EQ(init_font(7) + init_font2(6), 0);
  }
  ~PlotTest() override { free_font(), free_font2(); }

  // What a drawing puts into an EPS file holds each of these.
  static void expect_in_eps(const std::function<void()>& draw,
                            const std::vector<const char*>& parts) {
    outstream = open_file("out", "w");
    printed_by(draw);
    outstream.reset();
    std::ifstream file("out");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    for (const char* part : parts)
      EXPECT_NE(text.find(part), std::string::npos) << part;
  }

  static bool is_ink(int x, int y) { return getpixel2c(x, y) == 0; }

  TemporaryDirectory directory_;
};

TEST_F(PlotTest, KnownSamplesLieOnKnownRows) {
  write_file("s.res", "0 1\n1 0.5\n2 0\n3 -0.5\n4 -1");
  for (const int yoff : {0, 176, 352}) {
    clearwin(0, 0, 800, 600, 15);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(plot_anew("s.res", yoff, 0, 1, 100, 1, 0), 0); }),
              "plot_curve largest absolute value is 1.000000\n");
    for (const auto& [x, row] : {std::pair(32, 12), {132, 36}, {232, 75}, {332, 114}, {432, 154}})
      EXPECT_TRUE(is_ink(x, yoff + row)) << row;
    EXPECT_FALSE(is_ink(440, yoff + 150)) << "nothing behind the last point";
  }
}

TEST_F(PlotTest, SegmentsAndNumbersInEps) {
  write_file("s.res", "0 0.0\n1 1.0\n2 -1.0\n");
  const struct {
    int yoff, step;
    double xsc;
    std::vector<const char*> parts;
  } cases[] = {
      {0, 1, 100, {"moveto 32 CX 83 CX rmoveto 100 CX 63 CX", "132 CX 146 CX rmoveto 100 CX -142"}},
      {0, 1, 100.7, {"Or moveto 132 CX 146 CX rmoveto 101 CX -142 CX"}},
      {352, 1, 100, {"Or moveto 32 CX -269 CX rmoveto 100 CX 63 CX"}},
      {0, 1, 0.02, {"(56.68)", "(793.6)", "(0.797)", "(-1)", "(num)", "(ms)", "(s.res)"}},
      {0, 1, 0.3, {"moveto 32 CX 83 CX rmoveto 0 CX 63 CX"}},
      {0, 442, 1, {"(sec)"}},
  };
  for (const auto& c : cases)
    expect_in_eps([&] { plot_anew("s.res", c.yoff, 0, c.step, c.xsc, 1, 1); }, c.parts);
}

TEST_F(PlotTest, SpectraStandOnTheBaseLine) {
  write_file("s.spe", "size=20000\n0 0\n1 4\n2 1\n");
  EXPECT_EQ(printed_by([] { plot_spectrum_anew("s.spe", 0, 0, 1, 100, 1, 0, "all"); }),
            "plot_spectrum K=20000\nmaxi=1 maxf1=4.000000 offset=0\n"
            "plot_curve largest absolute value is 4.000000\n");
  EXPECT_TRUE(is_ink(132, 20));
  EXPECT_TRUE(is_ink(232, 154 - 33)) << "1/4 of 134.3, truncated";
  EXPECT_FALSE(is_ink(132, 18));
  expect_in_eps([] { plot_spectrum_anew("s.spe", 0, 0, 1, 0.4, 1, 1, "all"); },
                {"(0)", "(275)", "(551)", "(3858)", "(4.229)", "(Hz)", "(Power spectrum)"});
  write_file("h.spe", "size=0\n");
  EXPECT_TRUE(printed_by([] {
                plot_spectrum_anew("h.spe", 0, 0, 1, 1, 1, 0, "x");
              }).starts_with("plot_spectrum K=1\n"));
}

TEST_F(PlotTest, OddSettingsDrawWithinTheirPane) {
  std::string noise;
  for (int i = 0; i < 3000; ++i)
    noise += "0 " + std::to_string((i * 7919) % 1000 - 500) + "\n";
  write_file("n.res", noise + "0 inf\n0 nan\n0 -1e38\n");
  write_file("z.res", "0 0\n1 0\n");
  write_file("e.res", "");
  const auto draw = [](const char* file, int start, int step, double xsc, double ysc) {
    printed_by([&] { EXPECT_EQ(plot_anew(file, 176, start, step, xsc, ysc, 0), 0); });
  };
  for (const char* file : {"n.res", "z.res", "e.res"}) {
    for (const double xsc : {1.0, 0.0, -1.0, 1e-300, 1e30, HUGE_VAL, -HUGE_VAL, double{NAN}}) {
      for (const double ysc : {1.0, 0.0, -3.0, 1e300, HUGE_VAL, double{NAN}}) {
        for (const int step : {1, 0, INT_MAX, INT_MIN})
          draw(file, 0, step, xsc, ysc);
      }
      for (const int start : {INT_MIN, -1, 1, INT_MAX})
        draw(file, start, 1, xsc, 1);
    }
  }
  for (int x = 0; x < 800; ++x) {
    ASSERT_EQ(getpixel2c(x, 187), colour_pixel(15)) << x;
    ASSERT_EQ(getpixel2c(x, 346), colour_pixel(15)) << x;
    ASSERT_EQ(getpixel2c(796, x), x < 600 ? colour_pixel(15) : 0) << x;
  }
}

TEST_F(PlotTest, ShiftSkipAndMissingFiles) {
  write_file("s.res", "0 1\n1 -1\n2 1\n");
  EXPECT_EQ(printed_by([] { plot_anew("s.res", 0, 4, 1, 1, 1, 0); }), "file too short\n");
  printed_by([] { plot_anew("s.res", 0, 0, 1, -1, 1, 0); });
  for (int y = 12; y < 154; ++y)
    ASSERT_FALSE(is_ink(31, y)) << "left of the axis, row " << y;
  printed_by([] { plot_anew("s.res", 0, -100, 1, 1, 1, 0); });
  EXPECT_TRUE(is_ink(132, 20));
  EXPECT_FALSE(is_ink(131, 20));
  for (const char* missing : {"none.res", "."})
    EXPECT_EQ(plot_anew(missing, 352, 0, 1, 1, 1, 0), 1);
  EXPECT_GT(std::ranges::count(all_pixels(), colour_pixel(3)), 50) << "says that there is none";
}

}  // namespace
}  // namespace torve
