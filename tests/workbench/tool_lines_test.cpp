// Every line of every tool, pressed and typed as a person would, with fields that differ from their
// defaults and from each other. What it prints, draws, names and writes must be what the procedures
// that it stands for do with just these values.

#include <map>
#include <sstream>

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

// A line, and what its menu is given first: "42=0.5 2:12=all" types 0.5 over the field at column 42
// of the line and all over the one at column 12 of line 2. Fields to the right come first: one that
// widens moves them.
struct Case {
  const char* what;
  const Tool& tool;
  int line;
  const char* typed;
  std::function<void()> means;
  const char* shows = "";  // what fields show afterwards
};

struct Field {
  int line, column;
  std::string text;
};

std::vector<Field> fields_of(const Case& test, const char* text) {
  std::vector<Field> fields;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    int first = 0, second = 0;
    const bool with_line = std::sscanf(word.c_str(), "%d:%d", &first, &second) == 2;
    fields.push_back({with_line ? first : test.line, with_line ? second : first,
                      word.substr(word.find('=') + 1)});
  }
  return fields;
}

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

void draw(int pane, const std::string& name, int start, int step, double xsc, double ysc) {
  set_pane_name(pane, name);
  clear_band(pane);
  plot_anew(name.c_str(), pane * 176, start, step, xsc, ysc, target_screen);
}

void draw_spectrum(int pane, const std::string& name, const char* samples) {
  set_pane_name(pane, name);
  clear_band(pane);
  plot_spectrum_anew(name.c_str(), pane * 176, 0, 1, 0.4, 1, target_screen, samples);
}

void make_spectrum(int pane, const char* of, const char* samples) {
  const std::string name = "spectr" + std::to_string(pane + 1) + ".spe";
  static_cast<void>(power_spectrum(of, name, samples));
  draw_spectrum(pane, name, samples);
}

void filter(const char* band, const char* rest, int low, int high, FilterMode sort) {
  if (sort == filter_band_pass) std::printf("going to filter_spectrum low=%d high=%d\n", low, high);
  static_cast<void>(filter_spectrum(band, rest, low, high, sort));
}

void print(int pane, const char* file) {
  FilePtr end = open_eps(file, "psexampl.dat");
  plot_anew(pane_name(pane), pane * 176, 0, 1, 0.02, 1, target_eps);
  close_eps(std::move(end));
}

void convert(const char* signal, const char* au) {
  make_au_file(signal, au);
  std::printf("done\n");
}

struct Match {
  int offset = 0;
  float scale = 1;
};

Match match(const char* a, const char* b, const char* out, int start, const char* samples,
            Match found = {}) {
  float mean = 0;
  if (my_correlation(a, b, out, &mean, &found.offset, &found.scale, 1, start, samples) != 0)
    std::printf("sample too small\n");
  return found;
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
    for (const auto& [line, column, text] : fields_of(test, test.typed)) {
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
    for (auto [line, column, text] : fields_of(test, test.shows)) {
      std::ranges::replace(text, '_', ' ');
      const int cells = static_cast<int>(text.size());
      EXPECT_EQ(text_at(text_x(tool, column), text_y(tool, line), cells), text) << test.what;
    }
  }

  std::string font_;  // whose text can be read off the screen
};

const Case cases[] = {
    {"Plot1", plots, 0, "42=0.5 33=2 23=3 12=5", [] { draw(0, "p1.res", 5, 3, 2, 0.5); }},
    {"Plot2", plots, 1, "42=0.7 33=3 23=2 12=-40", [] { draw(1, "p2.res", -40, 2, 3, 0.7F); }},
    {"Plot3", plots, 2, "42=2 33=0.1 23=5 12=11", [] { draw(2, "p3.res", 11, 5, 0.1F, 2); }},
    {"no numbers", plots, 1, "42=x 33=x 23=x 12=x", [] { draw(1, "p2.res", 0, 1, 1, 1); }},
    {"Find a match", plots, 3, "44=out.res 27=3 2:12=10500 0:33=0.5 0:23=4",
     [] {
       const auto [offset, scale] = match("p1.res", "p2.res", "out.res", 3, "10500");
       draw(0, "p1.res", offset, 4, 0.5, static_cast<double>(scale));
       draw(1, "p2.res", 0, 4, 0.5, 1);
       draw(2, "out.res", 0, 4, 0.5, 1);
     },
     "0:12=0 0:42=0.98 1:12=710 1:23=4_ 1:33=0.5 1:42=1.0 2:12=710"},
    {"Save Plot1", printer, 0, "24=a.eps", [] { print(0, "a.eps"); }},
    {"Save Plot2", printer, 1, "24=b.eps", [] { print(1, "plot1.eps"); }},
    {"Save Plot3", printer, 2, "0:24=c.eps", [] { print(2, "c.eps"); }},
    {"Get a signal", reader, 0, "54=3 33=b.res 18=p2.res", [] { draw(2, "p2.res", 0, 1, 0.02, 1); },
     "33=p2.res"},
    {"Get a spectrum", reader, 0, "54=2 18=p1.spe", [] { draw_spectrum(1, "p1.spe", "20000"); }},
    {"Get into no pane", reader, 0, "54=4 18=p1.spe", [] {}},
    {"Analyze", reader, 1, "16=p3.res", [] { analyse("p3.res"); }},
    {"Make a gif", reader, 2, "41=2 16=b.gif", [] { writeGIF1("b.gif", 0, 176, 799, 346); }},
    {"Convert", writer, 0, "2:24=new.au 2:4=p3.res", [] { convert("p3.res", "new.au"); }},
    {"Cut", writer, 1, "2:24=t.au 2:4=cut.res 40=.006 25=.002",
     [] {
       std::printf("at write_au_menu_actions\nu1[0].name=cut.res\nu1[1].name=t.au\n");
       std::printf("u1[2].name=.002\nu1[3].name=.006\n");
       cut_part("t.au", "cut.res", .002F, .006F);
       std::printf("done\n");
     }},
    {"the names", writer, 2, "4=p3.res", [] {}},
    {"Autocorrelation", correlations, 0, "41=2 19=p3.res",
     [] { autocorrelation("p3.res", "2"), draw(1, "autocor2.res", 0, 1, 1, 1); }},
    {"Correlation", correlations, 1, "47=1 29=p1.res 15=p3.res",
     [] { correlation("p3.res", "p1.res", "1"), draw(0, "corre1.res", 0, 1, 1, 1); }},
    {"Comparison", correlations, 2, "57=10500 47=1 29=p3.res 15=p2.res",
     [] {
       const Match found = match("p2.res", "p3.res", "compar1.res", 0, "10500");
       draw(0, "compar1.res", found.offset, 1, 0.02, 1);
     }},
    {"Comparison, refused", correlations, 2, "57=2 47=2",
     [] {
       match("p1.res", "p2.res", "compar2.res", 0, "2");
       draw(1, "compar2.res", 0, 1, 0.02, 1);
     }},
    {"Out-of-band", spectra, 0, "2:45=999 2:31=99 2:12=b.res 45=4000 31=3000 15=o.res",
     [] { filter("b.res", "o.res", 3000, 4000, filter_out_of_band); }},
    {"Powerspectrum", spectra, 1, "47=200 37=1 17=p2.res",
     [] { make_spectrum(0, "p2.res", "200"); }},
    {"Bandpass", spectra, 2, "45=4000 31=3000 12=b.res 0:45=999 0:31=99 0:15=o.res",
     [] { filter("b.res", "o.res", 3000, 4000, filter_band_pass); }},
    // As they open.
    {"autocorrelation", correlations, 0, "",
     [] { autocorrelation("p1.res", "1"), draw(0, "autocor1.res", 0, 1, 1, 1); }},
    {"correlation", correlations, 1, "",
     [] { correlation("p1.res", "p2.res", "3"), draw(2, "corre3.res", 0, 1, 1, 1); }},
    {"comparison", correlations, 2, "",
     [] {
       const auto [offset, scale] =
           match("p1.res", "p2.res", "compar3.res", 1544, "all", {0, 0.7F});
       draw(1, "p2.res", offset, 1, 0.02, static_cast<double>(scale));
       draw(2, "compar3.res", offset, 1, 0.02, 1);
     }},
    {"spectrum", spectra, 1, "", [] { make_spectrum(2, "p3.res", "all"); }},
    {"band", spectra, 2, "", [] { filter("mid.res", "rest.res", 2200, 5000, filter_band_pass); }},
    {"plot", plots, 1, "", [] { draw(1, "p2.res", 0, 44, 1, 1); }},
    {"eps", printer, 1, "", [] { print(1, "plot1.eps"); }},
    {"au", writer, 0, "", [] { convert("checknew.res", "checkts.au"); }},
};

TEST_F(ToolLines, DoWhatTheirFieldsSay) {
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
