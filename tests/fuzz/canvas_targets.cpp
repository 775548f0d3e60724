// Any bytes as a file or as texts, for what shows them: a workbench without a window, in a
// directory of its own in which the files that a target asks for are files in memory.

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "app/plot/plot_panes.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/tools/tools.hpp"
#include "base/errors.hpp"
#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/labels.hpp"
#include "diagram/model/diagram_text.hpp"
#include "diagram/model/network_text.hpp"
#include "diagram/properties/property_menus.hpp"
#include "diagram/restore.hpp"
#include "dialogs/file_window.hpp"
#include "dialogs/install.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/tool_menu.hpp"
#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "memory_file.hpp"
#include "picture/fn2.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

namespace fs = std::filesystem;

constexpr int window = 20;

class Stage {
 public:
  Stage() {
    silence();
    answer({});
    std::string path = (fs::temp_directory_path() / "torve-fuzz.XXXXXX").string();
    root_ = mkdtemp(path.data());
    // No name of thirty characters leads out of a directory that lies this deep.
    const fs::path deep = root_ / "d/d/d/d/d/d/d/d/d/d/d/d/d/d/d/d";
    fs::create_directories(deep);
    fs::current_path(deep);
    defaultfont = 7;
    require(create_screen_image() && init_font(7) + init_font2(label_font) == 0);
    allocate_colours(allocate_true_colour);
    set_xcolor2();
    reset_screen_state();
    require(initPool(0, 0, 0, 0) == 0 && allocate_staging() && init_win(0, 0) == 0);
    install_dialogs();
    install_diagram();
    xxmax = 680;
    yymax = 599;
    require(init_engine(1) == 0 && allocate_work_buffer());
  }
  ~Stage() { fs::remove_all(root_); }
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

 private:
  fs::path root_;
};

// The stage, and files in memory under the names that the program asks for.
const MemoryFile& file_on_stage(const char* name, int number = 0) {
  static const Stage stage;
  static const MemoryFile files[2];
  std::error_code exists;
  if (name != nullptr) fs::create_symlink(files[number].name(), name, exists);
  return files[number];
}

// The planes as they lie in memory: pixels would take the fuzzers most of their time.
std::vector<std::uint8_t> canvas() {
  return {screen_block(), screen_block() + plane_bytes * screen_planes};
}

constexpr int (*openers[])(int, int, int) = {write_au_ope, audio_ope,    printeps_ope,
                                             read_au_ope,  analysis_ope, analysis2_ope};

// The menu's id.
int open_menu(unsigned choice) {
  if (choice < std::size(openers)) {
    require(openers[choice](1, 0, 0) == 0);
    return write_menu_id + static_cast<int>(choice);
  }
  constexpr FigureKind kinds[] = {FigureKind::node, FigureKind::queue, FigureKind::vline,
                                  FigureKind::vbox, FigureKind::tel,   FigureKind::nodeb,
                                  FigureKind::nodec};
  Vobj* figure = create_vector_obj(kinds[choice % std::size(kinds)]);
  figure->x1 = figure->y1 = 100;
  figure->x2 = figure->y2 = 200;
  figure->phase = phase_draw;
  require(fill_property_menu(figure, window, 200, 200) == 0);
  require(put_wd_objects(window, window) == 0);
  return window;
}

// What a field can hold after it has been edited; an absolute name would lead out of the directory.
void enter(MenuItem& item, std::string text) {
  std::ranges::replace(text, '\0', '\1');
  if (text.starts_with('/')) text[0] = '.';
  set_field(item, text);
}

void start_files() {
  for (const auto& old : fs::directory_iterator("."))
    fs::remove_all(old);
  std::ofstream("bhld1.res") << "1 2\n2 -3.5\n3 1e38\n4 nan\n5 7\n";
  std::ofstream("bhld2.res") << "1 -1\n2 2\n3 0.5\n4 -4\n5 7\n6 3\n";
  std::ofstream("compar3.res") << "";
  std::ofstream("a.spe") << "size=4\n0 1\n1 2\n2 3\n";
  set_pane_name(0, "bhld1.res");
  set_pane_name(1, "bhld2.res");
  set_pane_name(2, "compar3.res");
}

}  // namespace

// Any text is taken as a diagram. One that is read is drawn, written again as the same figures, and
// taken off the canvas without a trace.
void diagram(Bytes input) {
  file_on_stage(nullptr);
  int bad_line = 0;
  const auto read = diagram_from_text(text_of(input), &bad_line);
  if (!read) return require(bad_line > 0);
  const std::string text = diagram_to_text(*read);
  const auto again = diagram_from_text(text, &bad_line);
  require(again && diagram_to_text(*again) == text);
  const auto empty = canvas();
  const Network network = network_of(*read);
  require(!network_to_json(*read, network, findings_of(*read, network)).empty());
  restore_diagram(*read);
  free_vector_objects(VectorMode::clipped);
  require(canvas() == empty);
}

// Any bytes are taken as a picture: nothing beside it changes on the screen, and a buffer of the
// caller's is filled as far as it goes. The first bytes choose the place and the buffer.
void fn2(Bytes input) {
  const MemoryFile& file = file_on_stage(nullptr);
  if (input.size() < 4) return;
  file.fill(input.subspan(4));
  const int x = input[0] * 4 - 100, y = input[1] * 3 - 50;
  const auto before = canvas();
  int width = 0, height = 0;
  static_cast<void>(getpicture(file.name(), x, y, &width, &height));
  hide_errormsg();
  require(gplanes == screen_planes);
  const Rect area = intersection({x, y, x + width, y + height}, whole_screen);
  for (std::size_t line = 0; line < std::size_t{screen_planes} * screen_height; ++line) {
    const int row = static_cast<int>(line % screen_height);
    const bool meets = !area.empty() && row >= area.y1 && row < area.y2;
    // Of the rows that meet the picture, the bytes that hold no pixel of it.
    const auto same = [&](int first, int last) {
      const std::size_t start = line * plane_line_bytes + static_cast<std::size_t>(first);
      return std::memcmp(before.data() + start, screen_block() + start,
                         static_cast<std::size_t>(last - first)) == 0;
    };
    require(same(0, meets ? area.x1 / 8 : plane_line_bytes));
    require(same(meets ? (area.x2 + 7) / 8 : plane_line_bytes, plane_line_bytes));
  }
  int stride = input[3];
  std::vector<std::uint8_t> buffer(std::size_t{input[2]} * input[3]);
  width = height = input[2];
  static_cast<void>(loadbuf_fromfile(file.name(), &width, &height, &stride, buffer));
  hide_errormsg();
  gplanes = screen_planes;
}

// Any bytes are taken as a font with advances (as many as the first two bytes say); text is set in
// it at a place that the next two choose.
void fonts(Bytes input) {
  const MemoryFile& glyphs = file_on_stage("font6.dat");
  const MemoryFile& advances = file_on_stage("font6.dis", 1);
  if (input.size() < 4) return;
  const Bytes bytes = input.subspan(4);
  const std::size_t wanted = input[0] + std::size_t{256} * input[1];
  const std::size_t cut = std::min(wanted, bytes.size());
  advances.fill(bytes.first(cut));
  glyphs.fill(bytes.subspan(cut));
  std::string text;
  for (int code = 1; code < 256; ++code)
    text += static_cast<char>(code);
  require(init_font2(label_font) != 0 || fntlen2(text.c_str()) >= -256 * 128);
  if (init_font(label_font) != 0) return;
  xkoord = input[2] * 4 - 100;
  ykoord = input[3] * 3 - 50;
  textf(text.c_str(), 0, 15, label_font);
  otext(text.c_str(), 0, 15);
  int y = ykoord;
  textXY(xkoord, &y, text.c_str(), 0, 15);
}

// Any bytes are taken as the messages: they are shown and scrolled through in a text window and in
// the message window with a word of their own, and leave no trace.
void messages(Bytes input) {
  const MemoryFile& file = file_on_stage("messages.txt");
  if (input.size() < 4) return;
  file.fill(input.subspan(4));
  const auto before = canvas();
  make_file_window(window, input[0] * 4, input[1] * 3, 60 + input[2], 40 + input[3], 15, 1, 1, 0,
                   "messages.txt", -1, -1);
  keep_on_canvas(wd(window), true);
  require(put_wd_objects(window, window) == 0);
  for (const int column : {0, 3, 1000}) {
    wd(window).scroll_column = column;
    wd(window).scroll_line = column * 7;
    refresh_one_wd_object(window);
  }
  static_cast<void>(free_file_window(window));
  require(cannot_find_file(text_of(input).substr(0, 40).c_str()) == 0);
  hide_errormsg();
  use_bgeditor();
  hide_errormsg();
  require(canvas() == before && b_counter <= 1);
}

// Any bytes are taken as the names of the attributes: the menu that shows them comes and goes
// without a trace.
void nodeattrs(Bytes input) {
  file_on_stage("nodeattrs.dat").fill(input);
  const auto before = canvas();
  Vobj* figure = create_vector_obj(FigureKind::nodeb);
  require(fill_property_menu(figure, window, 500, 400) == 0);
  require(put_wd_objects(window, window) == 0);
  free_one_wd_object(window);
  free_vector_objects(VectorMode::clipped);
  require(canvas() == before);
}

// Any texts in the fields of a tool's menu or of a figure's property menu; then a line of it is
// run. The first two bytes choose the menu and the line, line ends separate the texts.
void fields(Bytes input) {
  file_on_stage(nullptr);
  if (input.size() < 2) return;
  start_files();
  silence();
  answer({});
  const int id = open_menu(input[0] % 16);
  WdObject& menu = wd(id);
  std::istringstream texts(text_of(input.subspan(2)));
  std::string text;
  for (int i = 0; i < menu.item_count && std::getline(texts, text); ++i)
    enter(menu.menu_items[i], text);
  refresh_menu(id);
  menu.line_flags[input[1] % menu.line_count] |= line_selected | (input[1] >= 128 ? 2 : 0);
  wd_actions[id - 1](id - 1, menu.line_flags, menu.menu_items, menu.menu_lines);
  hide_errormsg();
  free_one_wd_object(id);
  require(b_counter <= 1);
  free_vector_objects(VectorMode::clipped);
}

}  // namespace torve
