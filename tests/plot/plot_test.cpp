// Plots: points, rows and columns of known samples, numbers along the axes.

#include <algorithm>
#include <climits>
#include <cmath>
#include <map>
#include <random>
#include <set>

#include "app/plot/axis_numbers.hpp"
#include "app/plot/plot_panes.hpp"
#include "base/console.hpp"
#include "eps/eps_stream.hpp"
#include "support/screen.hpp"
#include "support/strokes.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {
namespace {

TEST(AxisNumbers, FourDigitsInTheRoomThereIs) {
  const struct {
    double value;
    const char *narrow, *wide;
  } cases[] = {{-0.0, "0", "0"},
               {56.689342, "56.68", "56.68"},
               {0.3 - 1e-12, "0.3", "0.3"},
               {-0.859985, "-0.85", "-0.859"},
               {0.00128, "12e-4", "1.28e-3"},
               {5e-324, "", "4.9e-324"},
               {NAN, "", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(axis_number(c.value, 5), c.narrow);
    EXPECT_EQ(axis_number(c.value, 8), c.wide);
  }
}

// The nearest to `magnitude` of all numbers in so few characters, found by writing them all.
double nearest_in(std::size_t room, double magnitude) {
  static const auto all = [] {
    std::map<std::size_t, std::vector<double>> said;
    const auto add = [&said](const std::string& text) {
      for (std::size_t size = text.size(); size <= 5; ++size)
        said[size].push_back(std::stod(text));
    };
    for (int digits = 0; digits < 100'000; ++digits) {
      const std::string text = std::to_string(digits);
      for (std::size_t zeros = 0; zeros + text.size() <= 4; ++zeros) {
        const std::string whole = std::string(zeros, '0') + text;
        for (std::size_t point = 0; point <= whole.size(); ++point)
          add(std::string(whole).insert(point, 1, '.'));
      }
      for (int exponent = -9; digits < 1000 && exponent < 13; ++exponent)
        add(text + "e" + std::to_string(exponent));
      add(text);
    }
    for (auto& [size, values] : said)
      std::ranges::sort(values);
    return said;
  }();
  const auto above = std::ranges::lower_bound(all.at(room), magnitude);
  return above != all.at(room).begin() && magnitude - above[-1] < *above - magnitude ? above[-1]
                                                                                     : *above;
}

TEST(AxisNumbers, EndsAreAsNearAsFiveCellsCanSay) {
  const std::array<const char*, 4> examples[] = {
      {"0.011", "-0.013996", ".011", "-.014"}, {"0.685808", "-0.859985", ".686", "-.860"},
      {"0.797468", "-1", "0.797", "-1"},       {"0.398", "-0.5", "0.398", "-0.5"},
      {"0.957", "-1.2", "0.957", "-1.2"},      {"26131", "-32767", "261e2", "-33e3"},
      {"0.0000124", "0", "12e-6", "0"},        {"1e-300", "-1e-12", "", ""},
      {"135.43", "0", "135.4", "0"},           {"9999.4", "-9999.4", "9999", "-9999"}};
  for (const auto& [top, bottom, first, second] : examples) {
    const AxisEnds ends = axis_ends(std::stod(top), std::stod(bottom), 5);
    EXPECT_EQ(ends.top + " " + ends.bottom, first + std::string(" ") + second);
  }
  for (double value = 1e-6; value < 1e9; value *= 1.0007) {
    const AxisEnds ends = axis_ends(value * 63 / 79, -value, 5);
    for (const auto& [text, meant] :
         {std::pair(ends.top, value * 63 / 79), {ends.bottom, -value}}) {
      const double error = std::fabs(std::stod(text) - meant), size = std::fabs(meant);
      ASSERT_LE(text.size(), 5U);
      const bool is_three = size >= 0.1 && size < 9999.5;
      const std::size_t room = meant < 0 ? 4 : 5;
      const double nearest = std::fabs(nearest_in(room, size) - size);
      ASSERT_LE(error, size < 0.01 ? nearest * (1 + 1e-6)
                                   : size * (is_three ? 0.005 : 0.05) + nearest * 1e-6)
          << text << ' ' << meant;
    }
    const bool alike =
        (ends.top.find('e') == ends.top.npos) == (ends.bottom.find('e') == ends.bottom.npos);
    EXPECT_TRUE(alike || value < 0.013) << ends.top << ' ' << ends.bottom;
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
    const std::string text = read_file("out");
    for (const char* part : parts)
      EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
  }

  static bool is_ink(int x, int y) { return getpixel2c(x, y) == 0; }

  TemporaryDirectory directory_;
};

// Where a curve has ink, stroke by stroke: of `values` from `start` on, in a pane whose first row
// is 0.
std::set<std::pair<int, int>> strokes(std::vector<float> values, int start, int step, double xsc,
                                      double ysc, bool is_spectrum) {
  values.erase(values.begin(), values.begin() + std::max(start, 0));
  float largest = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    float sum = 0;
    for (std::size_t k = i; k < values.size() && static_cast<int>(k - i) < step; ++k)
      sum += values[k];
    values[i] = sum;
    largest = std::max(largest, std::fabs(sum));
  }
  const double scale = largest == 0 ? 0 : 79 * ysc / static_cast<double>(largest);
  std::set<std::pair<int, int>> ink;
  double x = 32 + (start < 0 ? -start * xsc : 0);
  int last_x = 0, last_y = 0;
  for (std::size_t i = 0; i < values.size() && x <= 795; ++i, x += xsc) {
    const double height = static_cast<double>(values[i]) * scale * (is_spectrum ? 1.7 : 1);
    const int y = std::clamp((is_spectrum ? 154 : 75) - static_cast<int>(height), 12, 154);
    if (i > 0) {
      for_each_point_of_line(last_x, last_y, static_cast<int>(x), y,
                             [&ink](int column, int row) { ink.emplace(column, row); });
    }
    last_x = static_cast<int>(x), last_y = y;
  }
  return ink;
}

TEST_F(PlotTest, CurvesAndSpectraEqualTheirStrokesOneByOne) {
  std::mt19937 random(5);
  const auto any = [&random](auto... choices) {
    return std::array{choices...}[random() % sizeof...(choices)];
  };
  for (int round = 0; round < 120; ++round) {
    const int pane = any(0, 1, 2), start = any(0, 0, 1, 37, -100, -7),
              step = any(1, 1, 2, 44, 1000, INT_MAX, 0, -1);
    const double xsc = any(0.02, 0.3, 0.99, 1.0, 7.3, 100.0), ysc = any(1.0, 0.4, -1.0, 2.5);
    const bool is_spectrum = any(true, false);
    std::vector<float> values(any(37U, 40U, 900U, 5000U));
    std::string text = is_spectrum ? "size=5000\n" : "";
    float value = 0;
    for (float& next : values) {
      value = next =
          value * 0.75F + static_cast<float>(static_cast<int>(random() % 2001) - 1000) / 8;
      text += "0 " + std::to_string(next) + "\n";
      next = std::stof(std::to_string(next));
    }
    write_file("s", text);
    clearwin(0, 0, 800, 600, 15);
    printed_by([&] {
      if (is_spectrum)
        plot_spectrum_anew("s", pane * 176, start, step, xsc, ysc, 0, "all");
      else
        plot_anew("s", pane * 176, start, step, xsc, ysc, 0);
    });
    const auto ink = strokes(values, start, step, xsc, ysc, is_spectrum);
    for (int y = 12; y < 154; ++y) {
      for (int x = 38; x < 800; ++x) {
        const bool in_title = x >= 96 && x < 208 && y >= 15 && y < 26;
        ASSERT_TRUE(in_title || is_ink(x, pane * 176 + y) == ink.contains({x, y}))
            << round << ": " << x << ' ' << y;
      }
    }
  }
}

TEST_F(PlotTest, SegmentsAndNumbersInEps) {
  write_file("s.res", "0 0.0\n1 1.0\n2 -1.0\n");
  write_file("s.spe", "size=20000\n0 0\n1 4\n2 1\n");
  const struct {
    const char* name;
    int yoff, start, step;
    double xsc;
    std::vector<const char*> parts;
  } cases[] = {
      {"s.res", 0, 0, 1, 100, {"moveto 32 CX 83 CX rmoveto 100 CX 63 CX"}},
      {"s.res", 0, 0, 1, 100, {"132 CX 146 CX rmoveto 100 CX -142"}},
      {"s.res", 0, 0, 1, 100.7, {"Or moveto 132 CX 146 CX rmoveto 101 CX -142 CX"}},
      {"s.res", 352, 0, 1, 100, {"Or moveto 32 CX -269 CX rmoveto 100 CX 63 CX"}},
      {"s.res", 0, 0, 1, 0.02, {"(56.68)", "(793.6)", "(0.797)", "(-1)", "(num)", "(ms)"}},
      {"s.res", 0, 0, 1, 0.3, {"moveto 32 CX 83 CX rmoveto 0 CX 63 CX", "(s.res)"}},
      {"s.res", 0, 1, 441, 1, {"(ms)", "(0.022)", "(500.0)"}},
      {"s.res", 0, 1, 442, 1, {"(sec)", "(2.267e-5)", "(1.002)"}},
      {"s.spe", 0, 0, 1, 0.4, {"(0)", "(275)", "(551)", "(3858)", "(4.229)", "(Hz)"}},
      {"s.spe", 0, 0, 1, 10, {"(0)", "(11.02)", "(22.05)", "(Power spectrum)"}},
      {"s.spe", 0, 1, 1, 5, {"(1)", "(23)"}},
      {"s.spe", 0, 0, 999, 2, {"(Hz)", "(55069)"}},
      {"s.spe", 0, 0, 1000, 2, {"(kHz)", "(55)"}},
  };
  for (const auto& test : cases) {
    const auto draw = [&test] {
      const auto& [name, yoff, start, step, xsc, parts] = test;
      if (name[2] == 's')
        plot_spectrum_anew(name, yoff, start, step, xsc, 1, 1, "all");
      else
        plot_anew(name, yoff, start, step, xsc, 1, 1);
    };
    expect_in_eps(draw, test.parts);
  }
}

TEST_F(PlotTest, SayWhatTheyFind) {
  write_file("s.res", "0 1\n1 -1\n2 0.5\n");
  write_file("s.spe", "size=20000\n0 0\n1 4\n2 1\n");
  write_file("h.spe", "size=0\n");
  EXPECT_EQ(printed_by([] { plot_anew("s.res", 0, 0, 1, 1, 1, 0); }),
            "plot_curve largest absolute value is 1.000000\n");
  EXPECT_EQ(printed_by([] { plot_anew("s.res", 0, 4, 1, 1, 1, 0); }), "file too short\n");
  EXPECT_EQ(printed_by([] { plot_spectrum_anew("s.spe", 0, 0, 1, 100, 1, 0, "all"); }),
            "plot_spectrum K=20000\nmaxi=1 maxf1=4.000000 offset=0\n"
            "plot_curve largest absolute value is 4.000000\n");
  const auto said = printed_by([] { plot_spectrum_anew("h.spe", 0, 0, 1, 1, 1, 0, "x"); });
  EXPECT_TRUE(said.starts_with("plot_spectrum K=1\n"));
  for (const char* missing : {"none.res", "."})
    EXPECT_EQ(plot_anew(missing, 352, 0, 1, 1, 1, 0), 1);
  EXPECT_GT(std::ranges::count(all_pixels(), colour_pixel(3)), 50) << "says that there is none";
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

}  // namespace
}  // namespace torve
