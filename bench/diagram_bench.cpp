// What a diagram of 10,000 figures costs: nodes, their names, and arcs that hold on to them.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>

#include "diagram/diagram_file.hpp"
#include "diagram/diagram_state.hpp"
#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/history.hpp"
#include "diagram/model/diagram_text.hpp"
#include "diagram/model/network_text.hpp"
#include "dialogs/install.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"

namespace torve {
namespace {

constexpr const char* directory = "/tmp/torve_bench_diagram";
constexpr const char* file_name = "large.vob";
constexpr int nodes = 2500, names = 2500, arcs = 5000;

std::string node_line(int i) {
  const int x = 20 + i % 64 * 10, y = 20 + i / 64 * 13;
  return "node x1=" + std::to_string(x) + " y1=" + std::to_string(y) + " x2=" + std::to_string(x) +
         " y2=" + std::to_string(y + 40) + " servers=1 name=\"n" + std::to_string(i) +
         "\" label=" + std::to_string(nodes + i + 1) + " id=" + std::to_string(i + 1) + '\n';
}

std::string name_line(int i) {
  const int x = 10 + i % 64 * 10, y = i / 64 * 13;
  return "label x1=" + std::to_string(x) + " y1=" + std::to_string(y) +
         " x2=" + std::to_string(x + 24) + " y2=" + std::to_string(y + 10) + " text=\"n" +
         std::to_string(i) + "\"\n";
}

std::string arc_line(int i) {
  return "arc x1=1 y1=1 x2=2 y2=2 from=" + std::to_string(i % nodes + 1) +
         " from_y=y1+20 to=" + std::to_string(i * 37 % nodes + 1) + " to_y=y2-5\n";
}

void write_diagram() {
  std::filesystem::create_directories(directory);
  std::filesystem::current_path(directory);
  std::ofstream file(file_name);
  file << "torve-diagram 2\n";
  for (int i = 0; i < nodes; ++i)
    file << node_line(i);
  for (int i = 0; i < names; ++i)
    file << name_line(i);
  for (int i = 0; i < arcs; ++i)
    file << arc_line(i);
}
static_assert(nodes + names + arcs == most_figures);

// The canvas, with the diagram on it.
class Canvas {
 public:
  Canvas() {
    console_ = stdout;
    stdout = std::fopen("/dev/null", "w");
    static_cast<void>(create_screen_image());
    allocate_colours(allocate_true_colour);
    set_xcolor2();
    reset_screen_state();
    defaultfont = 7;
    static_cast<void>(init_font(7));
    static_cast<void>(init_font2(label_font));
    static_cast<void>(initPool(1, 1200 * cr, 0, 0));
    init_win(0, 15);
    static_cast<void>(allocate_staging());
    install_dialogs();
    install_diagram();
    static_cast<void>(init_engine(1));
    clearwin(0, 0, screen_width, screen_height, nocolor);
    xxmin = yymin = 0;
    xxmax = last_diagram_column + 1;
    yymax = screen_height - 1;
    write_diagram();
    read_diagram(file_name);
    exit_ope();
  }
  ~Canvas() {
    free_vector_objects(VectorMode::clipped);
    reset_history();
    std::fclose(stdout);
    stdout = console_;
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

 private:
  std::FILE* console_;
};

void measure(benchmark::State& state, void (*what)(int step)) {
  const Canvas canvas;
  if (keep_diagram().size() != most_figures) return state.SkipWithError("not all were read");
  int step = 0;
  for (auto _ : state)
    what(++step);
}

Vobj* node_in_hand() {
  cvobj = figure_of(firstvobj->serial);
  vobjmode = mode_moving;
  return cvobj;
}

// A press, which may be a change, and a motion of a node that arcs hold on to.
void press_and_move(int step) {
  Vobj* node = node_in_hand();
  const int x = 300 + step % 50;
  last_event.type = InputEvent::Type::press;
  vect_ed(1, x, 300);
  last_event.type = InputEvent::Type::motion;
  cvobj = node;
  vect_ed(1, x + 1, 301);
  show_diagram_state();
}

void move_and_undo(int step) {
  press_and_move(step);
  undo_ope();
}

void show_handles_and_hide_them(int) {
  pointer_ope();
  show_diagram_state();
  exit_ope();
  show_diagram_state();
}

void read_the_model(int) {
  const KeptDiagram diagram = keep_diagram();
  const Network network = network_of(diagram);
  benchmark::DoNotOptimize(network_to_json(diagram, network, findings_of(diagram, network)));
}

BENCHMARK_CAPTURE(measure, read, [](int) {
  read_diagram(file_name);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, save, [](int) {
  save_diagram("saved.vob");
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, press_and_move, press_and_move)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, press_move_and_undo, move_and_undo)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, handles, show_handles_and_hide_them)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(measure, model_as_json, read_the_model)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torve
