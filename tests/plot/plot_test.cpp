// Plots: points, rows and columns of known samples, numbers along the axes.

#include <climits>
#include <cmath>
#include <limits>

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

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(RunningSums, EqualTheLiteralLoop) {
  std::vector<float> values(1000);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = std::sin(0.37F * static_cast<float>(i * i));
  for (const int step : {-1, 0, 1, 2, 44, 441, 999, 1000, 5000, INT_MAX}) {
    const std::vector<float> sums = running_sums(values, step);
    ASSERT_EQ(sums.size(), values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      float sum = 0;
      for (std::size_t k = i; k < values.size() && static_cast<int>(k - i) < step; ++k) {
        sum = static_cast<float>(static_cast<double>(sum) + static_cast<double>(values[k]));
      }
      ASSERT_EQ(sums[i], sum) << step << ' ' << i;
    }
  }
  const std::vector<float> tenths(2000, 0.1F);
  EXPECT_FLOAT_EQ(find_extremes(running_sums(tenths, 1000)).largest, 99.999046F);
}

TEST(AxisNumbers, FourDigitsInTheRoomThereIs) {
  const struct {
    double value;
    const char *narrow, *wide;
  } cases[] = {
      {-0.0, "0", "0"},
      {56.689342, "56.68", "56.68"},
      {170.068, "170.0", "170.0"},
      {0.3 - 1e-12, "0.3", "0.3"},
      {-0.859985, "-0.85", "-0.859"},
      {32767, "32767", "32767"},
      {-32768, "-32e3", "-32768"},
      {0.00123, "12e-4", "1.23e-3"},
      {-2e9, "-2e9", "-2e9"},
      {1e300, "1e300", "1e300"},
      {-1e-300, "", "-1e-300"},
      {5e-324, "", "4.9e-324"},
      {inf, "", ""},
      {nan, "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(axis_number(c.value, 5), c.narrow);
    EXPECT_EQ(axis_number(c.value, 8), c.wide);
  }
  EXPECT_EQ(whole_axis_number(551.35, 8), "551");
  EXPECT_EQ(whole_axis_number(0.1, 8), "0");
}

class PlotTest : public ScreenTest {
 protected:
  PlotTest() {
    reset_text_state();
    defaultfont = 7;
    EXPECT_EQ(init_font(7), 0);
    EXPECT_EQ(init_font2(6), 0);
  }
  ~PlotTest() override {
    free_font();
    free_font2();
  }

  // The lines that a drawing puts into an EPS file.
  std::string eps(const std::function<void()>& draw) {
    outstream = open_file("out", "w");
    printed_by(draw);
    outstream.reset();
    std::ifstream file("out");
    return {std::istreambuf_iterator<char>(file), {}};
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
    const int points[] = {12, 36, 75, 114, 154};
    for (int i = 0; i < 5; ++i)
      EXPECT_TRUE(is_ink(32 + 100 * i, yoff + points[i])) << i;
    EXPECT_FALSE(is_ink(440, yoff + 150)) << "nothing behind the last point";
    for (int x = 0; x < 800; ++x)
      ASSERT_EQ(getpixel2c(x, yoff + 170), colour_pixel(15)) << x;
    for (int y = 0; y < 600; ++y)
      ASSERT_EQ(getpixel2c(796, y), colour_pixel(15)) << y;
    EXPECT_EQ(std::tuple(X1_min, X1_max, Y1_min, Y1_max),
              std::tuple(0, 795, yoff + 12, yoff + 170));
  }
}

TEST_F(PlotTest, SegmentsAndNumbersInEps) {
  write_file("s.res", "0 0.0\n1 1.0\n2 -1.0\n");
  const std::string first = eps([] { plot_anew("s.res", 0, 0, 1, 100, 1, 1); });
  EXPECT_NE(first.find("Or moveto 32 CX 83 CX rmoveto 100 CX 63 CX rlineto stroke\n"
                       "Or moveto 132 CX 146 CX rmoveto 100 CX -142 CX rlineto stroke\n"),
            std::string::npos);
  const std::string uneven = eps([] { plot_anew("s.res", 0, 0, 1, 100.7, 1, 1); });
  EXPECT_NE(uneven.find("Or moveto 132 CX 146 CX rmoveto 101 CX -142 CX"), std::string::npos);
  const std::string third = eps([] { plot_anew("s.res", 352, 0, 1, 100, 1, 1); });
  EXPECT_NE(third.find("Or moveto 32 CX -269 CX rmoveto 100 CX 63 CX"), std::string::npos);
  const std::string small = eps([] { plot_anew("s.res", 0, 0, 1, 0.02, 1, 1); });
  for (const char* number :
       {"(56.68)", "(113.3)", "(793.6)", "(0.797)", "(-1)", "(num)", "(ms)", "(s.res)"}) {
    EXPECT_NE(small.find(number), std::string::npos) << number;
  }
  EXPECT_EQ(small.find("(-0)"), std::string::npos);
  EXPECT_NE(eps([] { plot_anew("s.res", 0, 0, 442, 1, 1, 1); }).find("(sec)"), std::string::npos);
  EXPECT_EQ(eps([] { plot_anew("s.res", 0, 0, 0, 1, 1, 1); }).find("(ms)"), std::string::npos);
}

TEST_F(PlotTest, SpectraStandOnTheBaseLine) {
  write_file("s.spe", "size=20000\n0 0\n1 4\n2 1\n");
  EXPECT_EQ(printed_by([] { plot_spectrum_anew("s.spe", 0, 0, 1, 100, 1, 0, "all"); }),
            "plot_spectrum K=20000\nmaxi=1 maxf1=4.000000 offset=0\n"
            "plot_curve largest absolute value is 4.000000\n");
  EXPECT_TRUE(is_ink(132, 20));
  EXPECT_TRUE(is_ink(232, 154 - 33)) << "1/4 of 134.3, truncated";
  EXPECT_FALSE(is_ink(132, 18));
  const std::string lines = eps([] { plot_spectrum_anew("s.spe", 0, 0, 1, 0.4, 1, 1, "all"); });
  for (const char* number :
       {"(0)", "(275)", "(551)", "(3858)", "(4.229)", "(Hz)", "(Power spectrum)"}) {
    EXPECT_NE(lines.find(number), std::string::npos) << number;
  }
  const std::pair<const char*, const char*> headers[] = {{"size=0\n", "plot_spectrum K=1\n"},
                                                         {"size=-4\n", "plot_spectrum K=1\n"},
                                                         {"0 5\n", "plot_spectrum K=1\n"}};
  for (const auto& [header, said] : headers) {
    write_file("h.spe", header);
    EXPECT_EQ(printed_by([] { plot_spectrum_anew("h.spe", 0, 0, 1, 1, 1, 0, "x"); }).substr(0, 18),
              said);
  }
}

TEST_F(PlotTest, OddSettingsDrawWithinTheirPane) {
  std::string noise;
  for (int i = 0; i < 3000; ++i)
    noise += "0 " + std::to_string((i * 7919) % 1000 - 500) + "\n";
  write_file("n.res", noise + "0 inf\n0 nan\n0 -1e38\n");
  write_file("z.res", "0 0\n1 0\n");
  write_file("e.res", "");
  for (const char* file : {"n.res", "z.res", "e.res"}) {
    for (const double xsc : {1.0, 0.0, -1.0, 1e-300, 1e30, inf, -inf, nan}) {
      for (const double ysc : {1.0, 0.0, -3.0, 1e300, inf, nan}) {
        for (const int step : {1, 0, INT_MAX, INT_MIN}) {
          printed_by([&] { EXPECT_EQ(plot_anew(file, 176, 0, step, xsc, ysc, 0), 0); });
        }
      }
      for (const int start : {INT_MIN, -1, 1, INT_MAX}) {
        printed_by([&] { plot_anew(file, 176, start, 1, xsc, 1, 0); });
      }
    }
  }
  for (int x = 0; x < 800; ++x) {
    ASSERT_EQ(getpixel2c(x, 187), colour_pixel(15)) << x;
    ASSERT_EQ(getpixel2c(x, 346), colour_pixel(15)) << x;
  }
}

TEST_F(PlotTest, ShiftSkipAndMissingFiles) {
  write_file("s.res", "0 1\n1 -1\n2 1\n");
  EXPECT_EQ(printed_by([] { plot_anew("s.res", 0, 4, 1, 1, 1, 0); }), "file too short\n");
  EXPECT_EQ(printed_by([] { plot_anew("s.res", 0, 3, 1, 1, 1, 0); }),
            "plot_curve largest absolute value is 0.000000\n");
  clearwin(0, 0, 800, 600, 15);
  printed_by([] { plot_anew("s.res", 0, -100, 1, 1, 1, 0); });
  EXPECT_TRUE(is_ink(132, 20));
  EXPECT_FALSE(is_ink(131, 20));
  printed_by([] { plot_anew("s.res", 0, 0, 1, -1, 1, 0); });
  for (int y = 12; y < 154; ++y)
    ASSERT_FALSE(is_ink(31, y)) << "left of the axis, row " << y;
  EXPECT_EQ(plot_anew("none.res", 352, 0, 1, 1, 1, 0), 1);
  EXPECT_EQ(plot_anew(".", 352, 0, 1, 1, 1, 0), 1) << "a directory";
  int cyan = 0;  // in the title line of the pane drawn last
  for (int y = 15; y < 25; ++y) {
    for (int x = 96; x < 200; ++x)
      cyan += getpixel2c(x, y) == colour_pixel(3) ? 1 : 0;
  }
  EXPECT_GT(cyan, 50);
}

}  // namespace
}  // namespace torve
