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
#include "display/screen_state.hpp"
#include "wm/stacking.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr int searched_colours = 16;

std::string offered_colour;  // what the field showed when the menu was made

bool is_open() {
  return wd(figure_menu_id).kind != kind_free && wd_actions[figure_menu_id - 1] == msc_menu_actions;
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
  if (figure_is_in_hand() || is_typing()) vobjmode = mode_pointer;
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
  figure->bends = original.bends;
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

// Everything but what makes it this figure; what held on to something holds on to nothing.
void become_like(Vobj* figure, const FigureRecord& original) {
  const int serial = figure->serial, identity = figure->identity;
  static_cast<FigureRecord&>(*figure) = original;
  figure->serial = serial;
  figure->identity = identity;
  figure->from = figure->to = {};
  figure->phase = phase_draw;
}

// As far to the right and down as there is room, else to the other side.
void put_beside(Vobj* figure) {
  constexpr int distance = 20;
  const FigureAnchor centre = centre_of(*figure);
  const bool right = centre.x + distance <= last_diagram_column;
  const bool down = centre.y + distance <= Y2mouse;
  shift(figure, right ? distance : -distance, down ? distance : -distance);
}

// --- the menu -----------------------------------------------------------------------------------

constexpr int colour_field = 0;

// The menu goes before its line does anything, and the figure that it was made for is let go.
template <void (*change)(Vobj* figure, const std::string& colour)>
void run(const MenuRun& menu) {
  const std::string colour = menu.text(colour_field);
  Vobj* figure = figure_of(static_cast<int>(wd(menu.id).kind_word));
  hide_errormsg();
  close_figure_menu();
  if (figure == nullptr) return;
  let_go();
  change(figure, colour);
}

constexpr MenuLine lines[] = {
    {.text = "Cut ", .run = run<[](Vobj* figure, const std::string&) { cut(figure); }>},
    {.text = "Copy ", .run = run<[](Vobj* figure, const std::string&) { copy(*figure); }>},
    {.text = "Color ", .fields = {{{.number = colour_field}}}, .run = run<set_colour>},
};

constexpr MenuTable table = {
    .lines = lines,
    .action = msc_menu_actions,
    .width_cells = 10,
    .line_size = 50,
    .flags = WdFlags::right_close_puts_down,
};

}  // namespace

int fill_mscmenu(Vobj* figure, int id, int x, int y) {
  if (figure == nullptr) return 1;
  offered_colour = colour_of(*figure);
  MenuTable wide_enough = table;
  wide_enough.width_cells += static_cast<int>(offered_colour.size()) - 1;
  const int failed = make_menu(wide_enough, id, x, y);
  if (failed != 0) return failed;
  WdObject& menu = wd(id);
  menu.kind_word = figure->serial;
  set_field(menu.menu_items[colour_field], offered_colour);
  return 0;
}

void open_figure_menu(Vobj* figure, int x, int y) {
  close_figure_menu();
  if (wd(figure_menu_blocker_id).kind == kind_free && wd(figure_menu_id).kind == kind_free &&
      fill_mscmenu(figure, figure_menu_id, x, y) == 0) {
    raise_figure(figure);
    static_cast<void>(put_wd_objects(figure_menu_id, figure_menu_id));
  }
  flush_mouse();
}

void close_figure_menu() {
  if (is_open()) free_one_wd_object(figure_menu_id);
}

void cut_current_figure() {
  if (!figure_is_in_hand()) return;
  close_figure_menu();
  let_go();
  cut(cvobj);
}

void double_current_figure() {
  if (!figure_is_in_hand()) return;
  close_figure_menu();
  prepare_change();
  const Vobj* original = cvobj;
  Vobj* figure = create_vector_obj(original->kind);
  if (figure == nullptr) return;
  {
    const FigureChange drawn_at_the_end(figure);
    become_like(figure, *original);
    put_beside(figure);
  }
  if (const Vobj* label = original->label) {
    put_vlabel(VectorMode::clipped, label->x1 + figure->x1 - original->x1,
               label->y1 + figure->y1 - original->y1, label->text);
  }
  vobjmode = mode_moving;
  let_change_go_on();
}

int msc_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  if (chosen_line(table, line_flags) < 0) {
    hide_errormsg();
    close_figure_menu();
  }
  return run_chosen_line(table, index, line_flags, items);
}

}  // namespace torve
