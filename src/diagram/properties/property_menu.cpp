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

std::vector<MenuLine> lines_of(const PropertyMenu& menu, std::span<const char* const> texts) {
  std::vector<MenuLine> lines;
  for (const PropertyLine& line : menu.lines.all()) {
    const char* text = texts.empty() ? line.text : texts[lines.size()];
    lines.push_back({.text = text, .fields = line.places()});
  }
  return lines;
}

// For each field: what `use` does with its line's number, the field and its item, until it is true.
template <typename Use>
bool any_field(const PropertyMenu& menu, MenuItem* items, Use use) {
  int number = 0;
  for (const PropertyLine& line : menu.lines.all()) {
    for (const PropertyField& field : line.fields) {
      if (field.place.number != no_field && use(number, field, items[field.place.number]))
        return true;
    }
    ++number;
  }
  return false;
}

void show_figure(const PropertyMenu& menu, Vobj& figure, MenuItem* items) {
  any_field(menu, items, [&](int, const PropertyField& field, MenuItem& item) {
    set_field(item, property_text(field, figure));
    return false;
  });
}

// Moves the field of a double-pressed line on to its next word; whether it shows words at all.
bool rotate(const PropertyMenu& menu, int* line_flags, MenuItem* items) {
  return any_field(menu, items, [&](int line, const PropertyField& field, MenuItem& item) {
    int& flags = line_flags[line];
    if (field.words.empty() || (flags & line_double_clicked) == 0) return false;
    flags &= ~line_double_clicked;
    circulate(field.words, item.text);
    return true;
  });
}

// An armed tool is left: its figure, not placed yet, is current no more. That may take the menu's
// own figure with it, if nothing of it can be seen.
Vobj* make_current(int id) {
  if (cvobj != nullptr && cvobj->phase == 0) exit_ope();
  Vobj* figure = figure_of_menu(id);
  if (figure != nullptr) cvobj = figure;
  return figure;
}

void apply(const PropertyMenu& menu, Vobj* figure, MenuItem* items) {
  prepare_change();
  note_change();
  any_field(menu, items, [&](int, const PropertyField& field, const MenuItem& item) {
    store_property(field, *figure, item.text);
    return false;
  });
  vobjmode = mode_idle;
  const auto label_of = row_of(figure->kind).label;
  if (label_of == nullptr) {  // applying leaves the label alone
    close_property_menu(figure);
    return;
  }
  const FigureLabel label = label_of(*figure);
  put_vlabel(VectorMode::clipped, label.x, label.y, label.text.c_str());
}

}  // namespace

int fill(const PropertyMenu& menu, Vobj* figure, int id, int x, int y, int visible_lines,
         std::span<const char* const> texts) {
  if (figure == nullptr) return 1;
  const std::vector<MenuLine> lines = lines_of(menu, texts);
  const MenuTable table = {.lines = MenuLines::made_now(lines),
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
