// Every line of every tool, pressed and typed as a person would, with fields that differ from their
// defaults and from each other. What it prints, draws, names and writes must be what the procedures
// that it stands for do with just these values.

#include <map>

#include "app/plot/plot_panes.hpp"
#include "app/signal/au_file.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/report.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/tools/tools.hpp"
#include "dialogs/player.hpp"
#include "draw/lines.hpp"
#include "eps/eps_stream.hpp"
#include "gif/gif_writer.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {
namespace {

// A menu of the icon bar as a person sees it: where its text begins, cells and rows of the screen.
struct Tool {
  int (*open)(int, int, int);
  int id, x, y;
};
const Tool plots = {audio_ope, 12, 400, 520}, printer = {printeps_ope, 13, 400, 520},
           reader = {read_au_ope, 14, 240, 520}, writer = {write_au_ope, 11, 400, 529},
           correlations = {analysis_ope, 15, 256, 520}, spectra = {analysis2_ope, 16, 320, 520};

// What is typed into the field at a column of a line, in place of what it holds. Fields to the
// right come first: one that widens moves them.
struct Typed {
  int line, column;
  const char* text;
};

struct Case {
  const char* what;
  const Tool& tool;
  int line;
  std::vector<Typed> typed;
  std::function<void()> means;
  std::vector<Typed> shows = {};  // what fields show afterwards
};

struct Outcome {
  std::string said;
  Pixels canvas;
  std::map<std::string, std::string> files;
  std::string panes;
};

int noise(int i) {
  return static_cast<int>(static_cast<unsigned>(i) * 2654435761U >> 20);
}

void clear_band(int pane) {
  clearwin(0, pane * 176, 800, pane * 176 + 170, 15);
}

void draw(int pane, const char* name, int start, int step, double xsc, double ysc) {
  set_pane_name(pane, name);
  clear_band(pane);
  plot_anew(name, pane * 176, start, step, xsc, ysc, target_screen);
}

void print(int pane, const char* file, int start, int step, double xsc, double ysc) {
  FilePtr end = open_eps(file, "psexampl.dat");
  plot_anew(pane_name(pane), pane * 176, start, step, xsc, ysc, target_eps);
  close_eps(std::move(end));
}

void match(const char* a, const char* b, const char* out, int start, const char* samples,
           float scale = 1) {
  float mean = 0;
  int offset = 0;
  if (my_correlation(a, b, out, &mean, &offset, &scale, 1, start, samples) != 0)
    std::printf("sample too small\n");
}

class ToolLines : public DialogTest {
 protected:
  ToolLines() {
    std::ifstream file("font7.dat", std::ios::binary);
    font_.assign(std::istreambuf_iterator<char>(file), {});
    EXPECT_TRUE(allocate_work_buffer());
  }
  ~ToolLines() override { release_work_buffer(); }

  // Signals that tell panes, starts and steps apart: falling, from
  // 20000, 40000 and 60000 on, with one noise, which begins 100 samples later in each.
  void write_start_files() const {
    write_file("font7.dat", font_);
    for (int pane = 1; pane <= 3; ++pane) {
      std::string samples;
      for (int i = 0; i < 11000; ++i)
        samples += std::to_string(i) + ' ' +
                   std::to_string(pane * 20000 - i + noise(i + 100 * pane)) + '\n';
      write_file('p' + std::to_string(pane) + ".res", samples);
      set_pane_name(pane - 1, 'p' + std::to_string(pane) + ".res");
    }
    make_au_file("p2.res", "t.au");
    power_spectrum("p1.res", "p1.spe", "300");
    make_au_file("p1.res", "p1.au");
  }

  template <typename Act>
  Outcome outcome(Act act) const {
    const TemporaryDirectory here;
    reset_screen_state();
    clearwin(0, 0, 800, 600, 15);
    Outcome all;
    printed_by([this] { write_start_files(); });
    all.said = printed_by(act);
    all.canvas = base_without_windows();
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
      std::ifstream file(entry.path(), std::ios::binary);
      all.files[entry.path().filename()] = {std::istreambuf_iterator<char>(file), {}};
    }
    for (int pane = 0; pane < 3; ++pane)
      all.panes += std::string(pane_name(pane)) + ' ';
    return all;
  }

  static Pixels base_without_windows() {
    const CanvasPaint everything_off(whole_screen);
    return all_pixels();
  }

  static int text_x(const Tool& tool, int column) { return tool.x + 16 + column * 8; }
  static int text_y(const Tool& tool, int line) { return tool.y + 16 + line * 11; }

  void use(const Case& test) {
    const Tool& tool = test.tool;
    EXPECT_EQ(tool.open(1, 0, 0), 0);
    for (const auto& [line, column, text] : test.typed) {
      press(text_x(tool, column) + 3, text_y(tool, line) + 4, 1, 900);
      type(std::string(30, '\b') + text + '\r');
      release(text_x(tool, column), text_y(tool, line));
      play();
    }
    // Twice on the line's first letter.
    click(text_x(tool, 0) + 2, text_y(tool, test.line) + 4, 1, 900);
    click(text_x(tool, 0) + 2, text_y(tool, test.line) + 4);
    while (!user_events.empty()) {
      const EngineRound round = engine_round();
      if (round.result != EngineRound::Result::run_action) continue;
      const WdObject& object = wd(round.object);
      EXPECT_EQ(wd_actions[round.object - 1](round.object - 1, object.line_flags, object.menu_items,
                                             object.menu_lines),
                0);
      spend_press();
    }
    const std::string& name = test.what;
    for (const auto& [line, column, text] : test.shows) {
      const int cells = static_cast<int>(std::strlen(text));
      EXPECT_EQ(text_at(text_x(tool, column), text_y(tool, line), cells), text) << name;
    }
  }

  std::string font_;  // whose text can be read off the screen
};

TEST_F(ToolLines, DoWhatTheirFieldsSay) {
  const std::vector<Case> cases = {
      {"Plot1",
       plots,
       0,
       {{0, 42, "0.5"}, {0, 33, "2"}, {0, 23, "3"}, {0, 12, "5"}},
       [] { draw(0, "p1.res", 5, 3, 2, 0.5); }},
      {"Plot2",
       plots,
       1,
       {{1, 42, "0.7"}, {1, 33, "3"}, {1, 23, "2"}, {1, 12, "-40"}},
       [] { draw(1, "p2.res", -40, 2, 3, 0.7F); }},
      {"Plot3",
       plots,
       2,
       {{2, 42, "2"}, {2, 33, "0.1"}, {2, 23, "5"}, {2, 12, "11"}},
       [] { draw(2, "p3.res", 11, 5, 0.1F, 2); }},
      {"Plot2 without numbers",
       plots,
       1,
       {{1, 42, "x"}, {1, 33, "x"}, {1, 23, "x"}, {1, 12, "x"}},
       [] { draw(1, "p2.res", 0, 1, 1, 1); }},
      {"Find a match",
       plots,
       3,
       {{3, 44, "out.res"}, {3, 27, "3"}, {2, 12, "10500"}, {0, 33, "0.5"}, {0, 23, "4"}},
       [] {
         float mean = 0, scale = 1;
         int offset = 0;
         my_correlation("p1.res", "p2.res", "out.res", &mean, &offset, &scale, 1, 3, "10500");
         draw(0, "p1.res", offset, 4, 0.5, static_cast<double>(scale));
         draw(1, "p2.res", 0, 4, 0.5, 1);
         draw(2, "out.res", 0, 4, 0.5, 1);
       },
       {{0, 12, "0"},
        {0, 42, "0.98"},
        {1, 12, "710"},
        {1, 23, "4 "},
        {1, 33, "0.5"},
        {1, 42, "1.0"},
        {2, 12, "710"}}},
      {"Save Plot1", printer, 0, {{0, 24, "a.eps"}}, [] { print(0, "a.eps", 0, 1, 0.02, 1); }},
      {"Save Plot2", printer, 1, {{1, 24, "b.eps"}}, [] { print(1, "plot1.eps", 0, 1, 0.02, 1); }},
      {"Save Plot3", printer, 2, {{0, 24, "c.eps"}}, [] { print(2, "c.eps", 0, 1, 0.02, 1); }},
      {"Get a signal",
       reader,
       0,
       {{0, 54, "3"}, {0, 33, "b.res"}, {0, 18, "p2.res"}},
       [] { draw(2, "p2.res", 0, 1, 0.02, 1); },
       {{0, 33, "p2.res"}}},
      {"Get a spectrum",
       reader,
       0,
       {{0, 54, "2"}, {0, 18, "p1.spe"}},
       [] {
         set_pane_name(1, "p1.spe");
         clear_band(1);
         plot_spectrum_anew("p1.spe", 176, 0, 1, 0.4, 1, target_screen, "20000");
       }},
      {"Get into no pane", reader, 0, {{0, 54, "4"}, {0, 18, "p1.spe"}}, [] {}},
      {"Analyze", reader, 1, {{1, 16, "p3.res"}}, [] { analyse("p3.res"); }},
      {"Make a gif",
       reader,
       2,
       {{2, 41, "2"}, {2, 16, "b.gif"}},
       [] { writeGIF1("b.gif", 0, 176, 799, 346); }},
      {"Convert",
       writer,
       0,
       {{2, 24, "new.au"}, {2, 4, "p3.res"}},
       [] {
         make_au_file("p3.res", "new.au");
         std::printf("done\n");
       }},
      {"Cut",
       writer,
       1,
       {{2, 24, "t.au"}, {2, 4, "cut.res"}, {1, 40, ".006"}, {1, 25, ".002"}},
       [] {
         std::printf(
             "at write_au_menu_actions\nu1[0].name=cut.res\nu1[1].name=t.au\n"
             "u1[2].name=.002\nu1[3].name=.006\n");
         cut_part("t.au", "cut.res", .002F, .006F);
         std::printf("done\n");
       }},
      {"the names", writer, 2, {{2, 4, "p3.res"}}, [] {}},
      {"Autocorrelation",
       correlations,
       0,
       {{0, 41, "2"}, {0, 19, "p3.res"}},
       [] { autocorrelation("p3.res", "2"), draw(1, "autocor2.res", 0, 1, 1, 1); }},
      {"Correlation",
       correlations,
       1,
       {{1, 47, "1"}, {1, 29, "p1.res"}, {1, 15, "p3.res"}},
       [] { correlation("p3.res", "p1.res", "1"), draw(0, "corre1.res", 0, 1, 1, 1); }},
      {"Comparison",
       correlations,
       2,
       {{2, 57, "10500"}, {2, 47, "1"}, {2, 29, "p3.res"}, {2, 15, "p2.res"}},
       [] {
         float mean = 0, scale = 1;
         int offset = 0;
         my_correlation("p2.res", "p3.res", "compar1.res", &mean, &offset, &scale, 1, 0, "10500");
         draw(0, "compar1.res", offset, 1, 0.02, 1);
       }},
      {"Comparison, refused",
       correlations,
       2,
       {{2, 57, "2"}, {2, 47, "2"}},
       [] {
         set_pane_name(1, "compar2.res");
         clear_band(1);
         match("p1.res", "p2.res", "compar2.res", 0, "2");
         plot_anew("compar2.res", 176, 0, 1, 0.02, 1, target_screen);
       }},
      {"Out-of-band",
       spectra,
       0,
       {{2, 45, "999"},
        {2, 31, "99"},
        {2, 12, "b.res"},
        {0, 45, "4000"},
        {0, 31, "3000"},
        {0, 15, "o.res"}},
       [] {
         static_cast<void>(filter_spectrum("b.res", "o.res", 3000, 4000, filter_out_of_band));
       }},
      {"Powerspectrum",
       spectra,
       1,
       {{1, 47, "200"}, {1, 37, "1"}, {1, 17, "p2.res"}},
       [] {
         set_pane_name(0, "spectr1.spe");
         static_cast<void>(power_spectrum("p2.res", "spectr1.spe", "200"));
         clear_band(0);
         plot_spectrum_anew("spectr1.spe", 0, 0, 1, 0.4, 1, target_screen, "200");
       }},
      {"Bandpass",
       spectra,
       2,
       {{2, 45, "4000"},
        {2, 31, "3000"},
        {2, 12, "b.res"},
        {0, 45, "999"},
        {0, 31, "99"},
        {0, 15, "o.res"}},
       [] {
         std::printf("going to filter_spectrum low=3000 high=4000\n");
         static_cast<void>(filter_spectrum("b.res", "o.res", 3000, 4000, filter_band_pass));
       }},
      // As they open.
      {"autocorrelation",
       correlations,
       0,
       {},
       [] { autocorrelation("p1.res", "1"), draw(0, "autocor1.res", 0, 1, 1, 1); }},
      {"correlation",
       correlations,
       1,
       {},
       [] { correlation("p1.res", "p2.res", "3"), draw(2, "corre3.res", 0, 1, 1, 1); }},
      {"comparison",
       correlations,
       2,
       {},
       [] {
         float mean = 0, scale = 0.7F;
         int offset = 0;
         my_correlation("p1.res", "p2.res", "compar3.res", &mean, &offset, &scale, 1, 1544, "all");
         draw(1, "p2.res", offset, 1, 0.02, static_cast<double>(scale));
         draw(2, "compar3.res", offset, 1, 0.02, 1);
       }},
      {"spectrum",
       spectra,
       1,
       {},
       [] {
         set_pane_name(2, "spectr3.spe");
         static_cast<void>(power_spectrum("p3.res", "spectr3.spe", "all"));
         clear_band(2);
         plot_spectrum_anew("spectr3.spe", 352, 0, 1, 0.4, 1, target_screen, "all");
       }},
      {"band",
       spectra,
       2,
       {},
       [] {
         std::printf("going to filter_spectrum low=2200 high=5000\n");
         static_cast<void>(filter_spectrum("mid.res", "rest.res", 2200, 5000, filter_band_pass));
       }},
      {"plot", plots, 1, {}, [] { draw(1, "p2.res", 0, 44, 1, 1); }},
      {"eps", printer, 1, {}, [] { print(1, "plot1.eps", 0, 1, 0.02, 1); }},
      {"au",
       writer,
       0,
       {},
       [] {
         make_au_file("checknew.res", "checkts.au");
         std::printf("done\n");
       }},
  };
  for (const Case& test : cases) {
    const Outcome wanted = outcome(test.means);
    const Outcome found = outcome([&] { use(test); });
    EXPECT_EQ(found.said, wanted.said) << test.what;
    EXPECT_EQ(found.panes, wanted.panes) << test.what;
    EXPECT_TRUE(found.canvas == wanted.canvas) << test.what << ": the canvas";
    for (const auto& [name, bytes] : wanted.files)
      EXPECT_TRUE(found.files.contains(name) && found.files.at(name) == bytes)
          << test.what << ": " << name;
    EXPECT_EQ(found.files.size(), wanted.files.size()) << test.what;
    free_one_wd_object(test.tool.id);
  }
}

}  // namespace
}  // namespace torve
