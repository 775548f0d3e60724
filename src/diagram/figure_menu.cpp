#include "diagram/figure_menu.hpp"

#include <algorithm>
#include <cstdint>
#include <string>

#include "base/number_text.hpp"
#include "diagram/drawing.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_change.hpp"
#include "diagram/figure_points.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/properties/vocabulary.hpp"
#include "dialogs/menu_table.hpp"
#include "display/colours.hpp"
#include "display/input.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr int menu_id = 14;         // the read tool's, too
constexpr int blocking_object = 3;  // while it is in use, the menu does not open
constexpr int searched_colours = 16;

constexpr const char* lines[] = {"Cut ", "Copy ", "Color "};
enum Line { cut_line, copy_line, color_line };

constexpr MenuField fields[] = {{.line = color_line}};

constexpr MenuTable table = {
    .lines = lines,
    .fields = fields,
    .action = msc_menu_actions,
    .width_cells = 10,
    .line_size = 50,
    .flags = WdFlags::right_close_puts_down,
};

std::string offered_colour;  // what the field showed when the menu was made

bool is_open() {
  return wd(menu_id).kind != kind_free && wd_actions[menu_id - 1] == msc_menu_actions;
}

// The first of the sixteen colours that looks like the figure's; 16 when none does.
std::string colour_of(const Vobj& figure) {
  int index = 0;
  if (figure.phase == 0) return "0";
  while (index < searched_colours && colour_pixel(index) != figure.colour)
    ++index;
  return std::to_string(index);
}

// --- actions ------------------------------------------------------------------------------------

// The menu's figure becomes the current one, and no press is meant for it.
void let_go() {
  if (figure_is_in_hand()) vobjmode = mode_pointer;
}

void cut(Vobj* figure) {
  prepare_change();
  note_change();
  cut_figure(figure);
}

// A figure of the same look with its middle at the pointer, in the hand.
void copy(const Vobj& original) {
  prepare_change();
  Vobj* figure = create_vector_obj(original.kind);
  if (figure == nullptr) {
    vobjmode = mode_idle;
    return;
  }
  const FigureChange drawn_at_the_end(figure);
  figure->x1 = original.x1;
  figure->y1 = original.y1;
  figure->x2 = original.x2;
  figure->y2 = original.y2;
  figure->colour = original.colour;
  if (original.kind == FigureKind::label) set_label_text(figure, original.text);
  const FigureAnchor centre = centre_of(*figure);
  shift(figure, std::min(X, last_diagram_column) - centre.x, Y - centre.y);
  figure->phase = phase_draw;
  vobjmode = mode_moving;
  let_change_go_on();
}

void set_colour(Vobj* figure, const std::string& text) {
  if (text == offered_colour) return;
  const int index = read_int(text).value_or(-1);
  if (index < 0 || index >= colour_count) {
    report_unknown(text);
    return;
  }
  prepare_change();
  const FigureChange redrawn(figure);
  figure->colour = colour_pixel(index);
  if (figure->label != nullptr) figure->label->colour = figure->colour;
}

}  // namespace

int fill_mscmenu(Vobj* figure, int id, int x, int y) {
  if (figure == nullptr) return 1;
  const int failed = make_menu(table, id, x, y);
  if (failed != 0) return failed;
  WdObject& menu = wd(id);
  menu.kind_word = figure->serial;
  offered_colour = colour_of(*figure);
  set_field(menu.menu_items[0], offered_colour);
  return 0;
}

void open_figure_menu(Vobj* figure, int x, int y) {
  close_figure_menu();
  if (wd(blocking_object).kind == kind_free && wd(menu_id).kind == kind_free &&
      fill_mscmenu(figure, menu_id, x, y) == 0) {
    raise_figure(figure);
    static_cast<void>(put_wd_objects(menu_id, menu_id));
  }
  flush_mouse();
}

void close_figure_menu() {
  if (is_open()) free_one_wd_object(menu_id);
}

void cut_current_figure() {
  if (!figure_is_in_hand()) return;
  close_figure_menu();
  let_go();
  cut(cvobj);
}

int msc_menu_actions(int, int* line_flags, MenuItem* items, char**) {
  const int line = chosen_line(line_flags, table);
  const std::string colour = items[0].text;
  Vobj* figure = figure_of(static_cast<int>(wd(menu_id).kind_word));
  hide_errormsg();
  close_figure_menu();
  if (figure == nullptr || line < 0) return 0;
  let_go();
  if (line == cut_line) cut(figure);
  if (line == copy_line) copy(*figure);
  if (line == color_line) set_colour(figure, colour);
  return 0;
}

}  // namespace torve
