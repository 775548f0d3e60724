#include "diagram/properties/property_menu.hpp"

#include <cstddef>
#include <vector>

#include "diagram/editor.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "dialogs/menu_structure.hpp"

namespace torve {

namespace {

constexpr int line_size = 50;
constexpr WdFlags common_flags = WdFlags::close_puts_down | WdFlags::close_hides;

std::vector<MenuField> places_of(const PropertyMenu& menu) {
  std::vector<MenuField> places;
  places.reserve(menu.fields.size());
  for (const PropertyField& field : menu.fields)
    places.push_back(field.place);
  return places;
}

void show_figure(const PropertyMenu& menu, Vobj& figure, MenuItem* items) {
  for (const PropertyField& field : menu.fields)
    set_field(*items++, property_text(field, figure));
}

// Moves the field of a double-pressed line on to its next word; whether it shows words at all.
bool rotate(const PropertyMenu& menu, int* line_flags, MenuItem* items) {
  for (std::size_t i = 0; i < menu.fields.size(); ++i) {
    const PropertyField& field = menu.fields[i];
    int& flags = line_flags[field.place.line];
    if (field.words.empty() || (flags & line_double_clicked) == 0) continue;
    flags &= ~line_double_clicked;
    circulate(field.words, items[i].text);
    return true;
  }
  return false;
}

// An armed tool is left: its figure, not placed yet, is current no more. That may take the menu's
// own figure with it, if nothing of it can be seen.
Vobj* make_current(int id) {
  if (cvobj != nullptr && cvobj->phase == 0) exit_ope();
  Vobj* figure = figure_of_menu(id);
  if (figure != nullptr) cvobj = figure;
  return figure;
}

void apply(const PropertyMenu& menu, Vobj* figure, const MenuItem* items) {
  prepare_change();
  note_change();
  for (const PropertyField& field : menu.fields)
    store_property(field, *figure, (items++)->text);
  vobjmode = mode_idle;
  if (menu.label == nullptr) {
    close_property_menu(figure);
    return;
  }
  const FigureLabel label = menu.label(*figure);
  put_vlabel(VectorMode::clipped, label.x, label.y, label.text.c_str());
}

}  // namespace

FigureLabel name_above_head(const Vobj& node) {
  constexpr int left = 10;  // of the first point, pixels
  constexpr int above = 20;
  return {node.x1 - left, node.y1 - above, node.name};
}

int fill(const PropertyMenu& menu, Vobj* figure, int id, int x, int y, int visible_lines) {
  if (figure == nullptr) return 1;
  const std::vector<MenuField> places = places_of(menu);
  const MenuTable table = {.lines = menu.lines,
                           .fields = places,
                           .action = menu.action,
                           .width_cells = menu.width_cells,
                           .visible_lines = visible_lines,
                           .line_size = line_size,
                           .flags = common_flags | menu.flags};
  const int failed = make_menu(table, id, x, y);
  if (failed != 0) return failed;
  WdObject& object = wd(id);
  object.kind_word = figure->serial;
  figure->menu_id = id;
  show_figure(menu, *figure, object.menu_items);
  return 0;
}

int run_property_menu(const PropertyMenu& menu, int index, int* line_flags, MenuItem* items) {
  const int id = index + 1;
  if (figure_of_menu(id) != nullptr && rotate(menu, line_flags, items)) {
    refresh_menu(id);
    return 0;
  }
  Vobj* figure = make_current(id);
  if (figure != nullptr) {
    apply(menu, figure, items);
  } else {
    hide_errormsg();
    free_one_wd_object(id);
  }
  return 0;
}

}  // namespace torve
