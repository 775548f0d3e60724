// The files that the tools read and write.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <sstream>

#include "desktop/tools.hpp"

namespace torve::desktop {
namespace {

using Files = Workbench;

constexpr std::size_t enough = 12000;  // samples, for every analysis

/// Short signals, so that the analyses take no time: strokes of the bell in the first two, in the
/// third a tone of 3,000 Hz and a weaker one of 10,000.
class Analyses : public Workbench {
 protected:
  Analyses() {
    for (const char* name : {"bhld1.res", "bhld2.res"}) {
      std::vector<double> values = read_signal(name);
      values.resize(enough);
      write_signal(name, values);
    }
    write_signal("compar3.res", sum_of_tones(1, 0.5));
  }

  static std::vector<double> sum_of_tones(double low, double high) {
    std::vector<double> values;
    for (std::size_t i = 0; i < enough; ++i) {
      const double turns = 2 * std::numbers::pi * static_cast<double>(i) / 44100;
      values.push_back(low * std::sin(3000 * turns) + high * std::sin(10000 * turns));
    }
    return values;
  }

  /// The largest difference between a filtered signal, which has a zero in front, and another, away
  /// from the ends, where the filter rings.
  [[nodiscard]] double worst_difference(const std::string& name,
                                        const std::vector<double>& wanted) const {
    const std::vector<double> values = read_signal(name);
    if (values.size() != wanted.size() + 1) return INFINITY;
    const double loudness =
        2.0 * 44100 / static_cast<double>(values.size());  // of what is filtered
    double worst = 0;
    for (std::size_t i = 1000; i + 1000 < wanted.size(); ++i)
      worst = std::max(worst, std::abs(values[i + 1] / loudness - wanted[i]));
    return worst;
  }
};

bool has_ink_near(const Picture& picture, int x, int y, std::uint32_t darkest_paper) {
  for (int dy = -2; dy <= 2; ++dy) {
    for (int dx = -2; dx <= 2; ++dx) {
      const int at_x = std::clamp(x + dx, 0, picture.width - 1);
      const int at_y = std::clamp(y + dy, 0, picture.height - 1);
      if ((picture.at(at_x, at_y) & 0xFF) < darkest_paper) return true;
    }
  }
  return false;
}

int lines_with(const std::string& text, const std::string& part) {
  std::istringstream in(text);
  int found = 0;
  for (std::string line; std::getline(in, line);)
    found += line.find(part) != std::string::npos;
  return found;
}

TEST_F(Files, signals_and_spectra_are_read_into_the_chosen_pane) {
  write_signal("saw.res", std::vector<double>{0, 1, 2, 1, 0, 2.5});
  std::ofstream(folder() / "peaks.spe") << "size=8\n0 0\n1 0\n2 7\n3 3\n";
  start();
  const Picture before = screenshot();
  open(read_tool);
  const struct {
    const char *file, *pane, *title, *said;
  } rows[] = {{"saw.res", "2", "saw.res", "largest absolute value is 2.500000\n"},
              {"peaks.spe", "3", "Power spectrum", "maxi=2 maxf1=7.000000 offset=0\n"}};
  for (const auto& row : rows) {
    edit(read_tool, 0, 54, row.pane);
    edit(read_tool, 0, 18, row.file);
    EXPECT_TRUE(shows(read_tool, 0, 18, row.file));
    run(read_tool, 0);
    EXPECT_TRUE(wrote(row.said));
    EXPECT_TRUE(pane_shows(row.pane[0] - '1', row.title));
  }
  EXPECT_EQ(cut(screenshot(), pane_area(0)), cut(before, pane_area(0)));
  edit(read_tool, 0, 54, "4");
  const Picture refused = screenshot();
  run(read_tool, 0);
  EXPECT_EQ(screenshot(), refused) << "there is no fourth pane";
}

TEST_F(Files, a_signal_becomes_an_au_file_and_a_piece_of_it_a_signal_again) {
  // Skip the header, list one sample, leave; again, but the input ends behind the sample.
  use_input("yqy");
  start();
  open(write_tool);
  edit(write_tool, 2, 24, "bell.au");
  edit(write_tool, 2, 4, "bhld1.res");
  run(write_tool, 0);
  edit(write_tool, 2, 4, "cut.res");
  edit(write_tool, 1, 40, "0.75");
  edit(write_tool, 1, 25, "0.25");
  run(write_tool, 1);
  EXPECT_TRUE(wrote("u1[0].name=cut.res\nu1[1].name=bell.au\nu1[2].name=0.25\nu1[3].name=0.75\n"));

  const std::vector<double> whole = read_signal("bhld1.res");
  const std::vector<double> piece = read_signal("cut.res");
  ASSERT_NEAR(static_cast<double>(piece.size()), 22050, 1);
  double worst = 0;
  for (std::size_t i = 0; i < piece.size(); ++i)
    worst = std::max(worst, std::abs(piece[i] - whole[i + 11025]));
  EXPECT_LT(worst, 1e-6);

  close(write_tool);
  open(read_tool);
  for (int times = 0; times < 3; ++times) {
    edit(read_tool, 1, 16, "bell.au");
    run_by_double_press(read_tool, 1);
  }
  EXPECT_EQ(lines_with(output(), "AU-file header: dns."), 3);
  EXPECT_EQ(lines_with(output(), " f1="), 2) << "the third time there is no input";
  EXPECT_TRUE(running());
}

TEST_F(Analyses, each_pane_prints_as_it_looks) {
  start();
  open(read_tool);
  edit(read_tool, 0, 54, "2");
  edit(read_tool, 0, 18, "bhld2.res");
  run(read_tool, 0);
  close(read_tool);
  open(print_tool);
  const Picture screen = screenshot();
  const char* const names[] = {"one.eps", "two.eps", "three.eps"};
  for (int pane = 0; pane < 3; ++pane) {
    // All three lines print into the file of the first.
    const std::string name = names[pane];
    edit(print_tool, 0, 24, name);
    run(print_tool, pane);
    EXPECT_NE(read_file(name).find("%%BoundingBox: 0 0 488 104\n"), std::string::npos);
    // At this resolution a dot is a pixel of the screen.
    const std::filesystem::path page = folder() / (name + ".ppm");
    const Picture print =
        read_with({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dEPSCrop", "-sDEVICE=ppmraw",
                   "-r120", "-o", page.string(), (folder() / name).string()},
                  page);
    int missing = 0;
    int surplus = 0;
    const int top = pane_area(pane).y;
    // The curve, without labels, whose letters the printer has of its own.
    for (int y = 26; y < 150; ++y) {
      for (int x = 40; x < 795; ++x) {
        missing += screen.at(x, top + y) == black && !has_ink_near(print, x + 9, y - 3, 0xA0);
        surplus += (print.at(x + 9, y - 3) & 0xFF) < 0xA0 && !has_ink_near(screen, x, top + y, 1);
      }
    }
    EXPECT_EQ(missing, 0) << name;
    EXPECT_EQ(surplus, 0) << name;
  }
  EXPECT_FALSE(exists(folder() / "plot2.eps"));
}

TEST_F(Files, a_pane_becomes_a_gif_picture) {
  start();
  open(read_tool);
  const Picture screen = screenshot();
  edit(read_tool, 2, 41, "2");
  run(read_tool, 2);
  const std::filesystem::path gif = folder() / "figure.gif";
  const std::filesystem::path ppm = folder() / "figure.ppm";
  const Picture picture = read_with({"convert", gif.string(), ppm.string()}, ppm);
  ASSERT_EQ(picture.width, 957);
  ASSERT_EQ(picture.height, 171);
  constexpr std::uint32_t rose_brown = 0xBC8F8F;  // what the colour table has for white
  int wrong = 0;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const std::uint32_t seen = screen.at(static_cast<int>(x * 0.8359375), 176 + y);
      wrong += picture.at(x, y) != (seen == white ? rose_brown : seen);
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST_F(Analyses, of_two_signals_are_written_and_shown) {
  start();
  open(correlate_tool);
  const struct {
    int line, pane;
    const char *name, *said;
  } rows[] = {{2, 2, "compar3.res", "offset_best"},
              {1, 2, "corre3.res", "in correlation\n"},
              {0, 0, "autocor1.res", "in autocorrelation\n"}};
  for (const auto& row : rows) {
    const Picture before = screenshot();
    run(correlate_tool, row.line);
    EXPECT_TRUE(wrote(row.said));
    EXPECT_TRUE(pane_shows(row.pane, row.name));
    EXPECT_NE(cut(screenshot(), pane_area(row.pane)), cut(before, pane_area(row.pane)));
    EXPECT_GT(read_signal(row.name).size(), enough / 4) << row.name;
  }
}

TEST_F(Analyses, a_spectrum_is_shown_and_cut_into_bands) {
  start();
  open(spectrum_tool);
  run(spectrum_tool, 0);
  EXPECT_TRUE(wrote("run power spectrum\n"));
  EXPECT_FALSE(exists(folder() / "rest.res"));
  run(spectrum_tool, 1);
  EXPECT_TRUE(pane_shows(2, "Power spectrum"));
  EXPECT_TRUE(read_file("spectr3.spe").starts_with("size=12001\n"));
  const std::vector<double> bins = read_signal("spectr3.spe");
  const auto loudest = std::max_element(bins.begin(), bins.end()) - bins.begin();
  EXPECT_NEAR(static_cast<double>(loudest) * 44100 / enough, 3000, 4);
  run(spectrum_tool, 2);
  EXPECT_TRUE(wrote("going to filter_spectrum low=2200 high=5000\n"));
  run(spectrum_tool, 0);
  EXPECT_LT(worst_difference("mid.res", sum_of_tones(1, 0)), 0.02);
  EXPECT_LT(worst_difference("rest.res", sum_of_tones(0, 0.5)), 0.02);
}

}  // namespace
}  // namespace torve::desktop
