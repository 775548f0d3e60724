// Any texts in the fields of a tool's menu or of a figure's property menu; then a line of it is
// run. The first two bytes choose the menu and the line, line ends separate the texts.

#include <algorithm>
#include <fstream>
#include <sstream>

#include "app/plot/plot_panes.hpp"
#include "app/signal/work_buffer.hpp"
#include "app/tools/tools.hpp"
#include "diagram/drawing.hpp"
#include "diagram/labels.hpp"
#include "diagram/properties/property_menus.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/tool_menu.hpp"
#include "stage.hpp"

namespace {

using namespace torve;

constexpr int property_id = 20;
constexpr int (*openers[])(int, int, int) = {write_au_ope, audio_ope,    printeps_ope,
                                             read_au_ope,  analysis_ope, analysis2_ope};

// The menu's id.
int open_menu(unsigned choice) {
  if (choice < std::size(openers)) {
    if (openers[choice](1, 0, 0) != 0) std::abort();
    return write_menu_id + static_cast<int>(choice);
  }
  constexpr FigureKind kinds[] = {FigureKind::node, FigureKind::queue, FigureKind::vline,
                                  FigureKind::vbox, FigureKind::tel,   FigureKind::nodeb,
                                  FigureKind::nodec};
  Vobj* figure = create_vector_obj(kinds[choice % std::size(kinds)]);
  figure->x1 = figure->y1 = 100;
  figure->x2 = figure->y2 = 200;
  figure->phase = phase_draw;
  if (fill_property_menu(figure, property_id, 200, 200) != 0) std::abort();
  if (put_wd_objects(property_id, property_id) != 0) std::abort();
  return property_id;
}

// What a field can hold after it has been edited; an absolute name would lead out of the directory.
void enter(MenuItem& item, std::string text) {
  std::replace(text.begin(), text.end(), '\0', '\1');
  if (text.starts_with('/')) text[0] = '.';
  set_field(item, text);
}

void start_files() {
  for (const auto& old : std::filesystem::directory_iterator("."))
    std::filesystem::remove_all(old);
  std::ofstream("bhld1.res") << "1 2\n2 -3.5\n3 1e38\n4 nan\n5 7\n";
  std::ofstream("bhld2.res") << "1 -1\n2 2\n3 0.5\n4 -4\n5 7\n6 3\n";
  std::ofstream("compar3.res") << "";
  std::ofstream("a.spe") << "size=4\n0 1\n1 2\n2 3\n";
  set_pane_name(0, "bhld1.res");
  set_pane_name(1, "bhld2.res");
  set_pane_name(2, "compar3.res");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Stage stage;
  static const bool ready = allocate_work_buffer();
  if (size < 2 || !ready) return 0;
  start_files();
  answer({});
  const int id = open_menu(data[0] % 16);
  WdObject& menu = wd(id);
  std::istringstream texts(std::string(reinterpret_cast<const char*>(data) + 2, size - 2));
  std::string text;
  for (int i = 0; i < menu.item_count && std::getline(texts, text); ++i)
    enter(menu.menu_items[i], text);
  refresh_menu(id);
  menu.line_flags[data[1] % menu.line_count] |= line_selected | (data[1] >= 128 ? 2 : 0);
  wd_actions[id - 1](id - 1, menu.line_flags, menu.menu_items, menu.menu_lines);
  hide_errormsg();
  free_one_wd_object(id);
  if (b_counter > 1) std::abort();
  free_vector_objects(VectorMode::clipped);
  return 0;
}
