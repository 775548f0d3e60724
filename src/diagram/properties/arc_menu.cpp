// Arcs: with what probability which jobs go that way.

#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"

namespace torve {

namespace {

consteval PropertyField field(int number, std::string_view key) {
  return shown({.number = number}, FigureMenu::arc, key);
}

constexpr PropertyLine lines[] = {
    {.text = "Probability ", .fields = {{field(0, "probability")}}},
    {.text = "Class ", .fields = {{field(1, "class")}}},
    {.text = "Name ", .fields = {{field(2, "name")}}},
};

constexpr PropertyMenu arc_menu = {
    .lines = lines,
    .action = arc_menu_actions,
};

}  // namespace

int fill_arcmenu(Vobj* figure, int id, int x, int y) {
  return fill(arc_menu, figure, id, x, y);
}

int arc_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_property_menu(arc_menu, index, line_flags, items);
}

}  // namespace torve
