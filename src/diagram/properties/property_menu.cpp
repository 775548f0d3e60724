#include "diagram/properties/property_menu.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diagram/editor.hpp"
#include "diagram/history.hpp"
#include "diagram/labels.hpp"
#include "diagram/properties/vocabulary.hpp"
#include "dialogs/menu_structure.hpp"

namespace torve {

namespace {

constexpr int line_size = 50;
constexpr int frame_cells = 3;  // of a menu's width, beside its text
constexpr WdFlags common_flags = WdFlags::close_puts_down | WdFlags::close_hides;

// The menu of each object that is one, by id.
std::array<const PropertyMenu*, wd_object_count + 1> menus = {};

// The lines of a menu with room for what their fields show of a figure.
struct FilledLines {
  std::vector<std::string> texts;
  std::vector<MenuLine> lines;
  int columns = 0;  // that it takes to see all of it

  // As typing makes room: the field grows, what is behind it moves right.
  void make_room(std::size_t line, std::size_t field, int length) {
    MenuField& place = lines[line].fields.at(field);
    if (place.column == behind_the_line || length <= place.width) return;
    const int more = length - place.width;
    texts[line].insert(static_cast<std::size_t>(std::min(place.column + place.width,
                                                         static_cast<int>(texts[line].size()))),
                       static_cast<std::size_t>(more), ' ');
    place.width = length;
    for (std::size_t next = field + 1; next < lines[line].fields.size(); ++next)
      lines[line].fields.at(next).column += more;
    columns = std::max(columns, static_cast<int>(texts[line].find_last_not_of(' ')) + 1);
  }
};

// Whether `columns` characters of what a field shows say what it is: a number has to be seen whole,
// a word as far as no other one begins like that.
bool is_told_by(int columns, const PropertyField& field, const std::string& text) {
  if (static_cast<int>(text.size()) <= columns) return true;
  const FigureProperty& property = field.property;
  if (property.words.empty()) return property.text != nullptr;
  if (property.code_bits != 0 && !text.ends_with(" 0")) return false;
  const std::string seen = text.substr(0, static_cast<std::size_t>(std::max(columns, 0)));
  return std::count_if(property.words.begin(), property.words.end(), [&seen](const auto& entry) {
           return std::string_view(entry.word).starts_with(seen);
         }) <= 1;
}

FilledLines lines_for(const PropertyMenu& menu, Vobj& figure, std::span<const char* const> texts) {
  FilledLines filled;
  for (const PropertyLine& line : menu.lines.all()) {
    const std::size_t number = filled.lines.size();
    filled.texts.emplace_back(texts.empty() ? line.text : texts[number]);
    filled.lines.push_back({.fields = line.places()});
    for (std::size_t i = 0; i < line.fields.size(); ++i) {
      const PropertyField& field = line.fields.at(i);
      if (field.place.number == no_field) break;
      const std::string text = property_text(field, figure);
      const int length = static_cast<int>(text.size());
      filled.make_room(number, i, length);
      const int column = filled.lines[number].fields.at(i).column;
      const int start =
          column == behind_the_line ? static_cast<int>(filled.texts[number].size()) : column;
      if (!is_told_by(menu.width_cells - frame_cells - start, field, text)) {
        filled.columns = std::max(filled.columns, start + length);
      }
    }
  }
  for (std::size_t i = 0; i < filled.lines.size(); ++i)
    filled.lines[i].text = filled.texts[i].c_str();
  return filled;
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
    if (field.property.words.empty() || (flags & line_double_clicked) == 0) return false;
    flags &= ~line_double_clicked;
    circulate(field.property.words, item.text);
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

std::vector<std::string> shown_texts(int id, Vobj& figure) {
  std::vector<std::string> texts;
  any_field(*menus.at(static_cast<std::size_t>(id)), wd(id).menu_items,
            [&](int, const PropertyField& field, const MenuItem&) {
              texts.push_back(property_text(field, figure));
              return false;
            });
  return texts;
}

}  // namespace

ShownProperties::ShownProperties() {
  for (int id = first_property_menu_id; id <= last_property_menu_id; ++id) {
    if (Vobj* figure = figure_of_menu(id)) texts_.emplace(id, shown_texts(id, *figure));
  }
}

void ShownProperties::follow() const {
  for (const auto& [id, before] : texts_) {
    Vobj* figure = figure_of_menu(id);
    if (figure == nullptr) continue;
    auto old_text = before.begin();
    bool changed = false;
    any_field(*menus.at(static_cast<std::size_t>(id)), wd(id).menu_items,
              [&](int, const PropertyField& field, MenuItem& item) {
                const std::string text = property_text(field, *figure);
                if (text != *old_text++) {
                  set_field(item, text);
                  changed = true;
                }
                return false;
              });
    if (changed) refresh_menu(id);
  }
}

int fill(const PropertyMenu& menu, Vobj* figure, int id, int x, int y, int visible_lines,
         std::span<const char* const> texts) {
  if (figure == nullptr) return 1;
  const FilledLines filled = lines_for(menu, *figure, texts);
  const MenuTable table = {.lines = MenuLines::made_now(filled.lines),
                           .action = menu.action,
                           .width_cells = std::max(menu.width_cells, filled.columns + frame_cells),
                           .visible_lines = visible_lines,
                           .line_size = line_size,
                           .flags = common_flags | menu.flags};
  const int failed = make_menu(table, id, x, y);
  if (failed != 0) return failed;
  WdObject& object = wd(id);
  object.kind_word = figure->serial;
  figure->menu_id = id;
  menus.at(static_cast<std::size_t>(id)) = &menu;
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
