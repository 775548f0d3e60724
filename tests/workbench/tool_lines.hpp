// A person who uses the lines of the tools' menus, and everything that a use leaves: what is said,
// drawn and named, and all files.
#pragma once

#include <map>
#include <sstream>

#include "app/plot/pane_view.hpp"
#include "app/plot/plot_panes.hpp"
#include "app/signal/au_file.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/tools/tools.hpp"
#include "dialogs/player.hpp"
#include "gif/gif_writer.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

// A menu of the icon bar as a person sees it: where its text begins, cells and rows of the screen.
struct Tool {
  int (*open)(int, int, int);
  int id, x, y;
};
inline const Tool plots = {audio_ope, 12, 400, 520}, printer = {printeps_ope, 13, 400, 520},
                  reader = {read_au_ope, 14, 240, 520}, writer = {write_au_ope, 11, 400, 529},
                  correlations = {analysis_ope, 15, 256, 520},
                  spectra = {analysis2_ope, 16, 320, 520};

// A line, and what its menu is given first: "42=0.5 2:12=all" types 0.5 over the field at column 42
// of the line and all over the one at column 12 of line 2. Fields to the right come first: one that
// widens moves them.
struct Case {
  const char* what;
  const Tool& tool;
  int line;
  const char* typed;
  std::function<void()> means;
  const char* shows = "";    // what fields show afterwards
  const char* message = "";  // what the message window says, and the strip
  const char* strip = "";
  std::function<void()> before = [] {};  // to the files
};

struct Field {
  int line, column;
  std::string text;
};

inline std::vector<Field> fields_of(const Case& test, const char* text) {
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

struct Result {
  std::string said;
  Pixels canvas;
  std::map<std::string, std::string> files;
  std::string panes;
  std::string message, strip;
};

inline int noise(int i) {
  return static_cast<int>(static_cast<unsigned>(i) * 2654435761U >> 20);
}

// The file of a pane, 1 to 3.
inline std::string signal_of(int pane) {
  return {'p', static_cast<char>('0' + pane), '.', 'r', 'e', 's'};
}

class ToolLines : public DialogTest {
 protected:
  ToolLines() {
    EXPECT_TRUE(allocate_work_buffer());
    create_message_window();
  }
  ~ToolLines() override { release_work_buffer(); }

  static std::map<std::string, std::string> files_here() {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator("."))
      if (entry.is_regular_file()) files[entry.path().filename()] = read_file(entry.path());
    return files;
  }

  // Signals that tell panes, starts and steps apart: falling, from
  // 20000, 40000 and 60000 on, with one noise, which begins 100 samples later in each.
  static void make_signals() {
    for (int pane = 1; pane <= 3; ++pane) {
      std::string samples;
      for (int i = 0; i < 11000; ++i)
        samples += std::to_string(i) + ' ' +
                   std::to_string(pane * 20000 - i + noise(i + 100 * pane)) + '\n';
      write_file(signal_of(pane), samples);
    }
    make_au_file("p2.res", "t.au"), make_au_file("p1.res", "p1.au");
    power_spectrum("p1.res", "p1.spe", "10500");
  }

  void write_start_files(const Tool& tool) const {
    static const auto made = (make_signals(), files_here());
    for (const auto& [name, bytes] : made)
      write_file(name, bytes);
    write_file("font7.dat", font_);
    for (int pane = 1; pane <= 3; ++pane)
      set_pane_name(pane - 1, signal_of(pane));
    if (tool.id == spectra.id) power_spectrum("p1.res", "p1.spe", "10500");
  }

  template <typename Act>
  Result outcome(const Case& test, Act act) const {
    const TemporaryDirectory here;
    reset_screen_state();
    clearwin(0, 0, 800, 600, 15);
    Result all;
    printed_by([&] { write_start_files(test.tool); });
    for (int pane = 0; pane < 3; ++pane)
      note_shown_view(pane, {});
    test.before();
    all.said = printed_by(act);
    set_watcher(nullptr);
    all.message = message_text();
    all.strip = strip_text();
    hide_errormsg();
    clear_strip();
    all.canvas = base_without_windows();
    all.files = files_here();
    for (int pane = 0; pane < 3; ++pane)
      all.panes += std::string(pane_name(pane)) + ' ';
    return all;
  }

  static Pixels base_without_windows() {
    const CanvasPaint everything_off(whole_screen);
    return all_pixels();
  }

  // Both lines of the message window, without blanks around them; empty while it is hidden.
  static std::string message_text() {
    if (!message_is_shown()) return {};
    const WdObject& window = wd(message_window_id);
    std::string text;
    const int cells = window.width / 8 - 3;
    // The text's colour number is taken for a pixel, the detail is white.
    for (const auto& [row, ink] : {std::pair{0, 15U}, std::pair{11, colour_pixel(15)}}) {
      std::istringstream words(text_at(window.x + 16, window.y + 16 + row, cells, ink));
      for (std::string word; words >> word;)
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
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

  // What goes well does, but for a line without an action and a picture of what no line has drawn.
  static bool has_equal_command(const Case& test) {
    const bool goes_well = *test.strip == '\0' && *test.message == '\0';
    return goes_well && test.what != std::string("the names") &&
           test.what != std::string("Make a gif");
  }

  // The command that the strip shows does the same to files, and draws the pane as it is drawn.
  void expect_equal_command(const Case& test, const std::string& programs,
                            const std::string& command, const Result& line) {
    ASSERT_TRUE(command.starts_with("torve-batch ")) << test.what << ": " << command;
    const auto run = [&] {
      EXPECT_EQ(
          std::system(("PATH=" + programs + ":$PATH " + command + " </dev/null >said").c_str()), 0)
          << command;
    };
    const Result start = outcome(test, [] {});
    const Result done = outcome(test, run);
    const Result pictures = outcome(test, [&] {
      test.means();
      const CanvasPaint everything_off(whole_screen);
      for (int pane = 0; pane < 3; ++pane)
        writeGIF1("plot" + std::to_string(pane + 1) + ".gif", 0, pane * 176, 799, pane * 176 + 170);
    });
    int compared = 0;
    for (const auto& [name, bytes] : done.files) {
      if (start.files.contains(name) || name == "said") continue;
      const auto& files = line.files.contains(name) ? line.files : pictures.files;
      if (!files.contains(name)) continue;
      EXPECT_TRUE(files.at(name) == bytes) << command << ": " << name;
      ++compared;
    }
    EXPECT_GT(compared, 0) << command;
  }

  const std::string font_ = read_file("font7.dat");  // whose text can be read off the screen
};

}  // namespace torve
