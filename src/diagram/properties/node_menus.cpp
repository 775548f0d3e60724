// Nodes, boxes and lines: servers and how they are chosen.

#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"

namespace torve {

namespace {

consteval PropertyField field(int number, std::string_view key) {
  return shown({.number = number}, FigureMenu::node, key);
}

constexpr PropertyLine lines[] = {
    {.text = "Servers ", .fields = {{field(0, "servers")}}},
    {.text = "PS-mode ", .fields = {{field(1, "ps_mode")}}},
    {.text = "Selection rule ", .fields = {{field(2, "selection_rule")}}},
    {.text = "Exit filter ", .fields = {{field(3, "exit_filter")}}},
    {.text = "Name ", .fields = {{field(4, "name")}}},
    {.text = "Queue length ", .fields = {{field(5, "value4")}}},
};

constexpr PropertyMenu node_menu = {
    .lines = lines,
    .action = node_menu_actions,
};

constexpr PropertyMenu vbox_menu = {
    .lines = PropertyLines(lines).first(properties_of_a_box),
    .action = vbox_menu_actions,
};

constexpr PropertyMenu vline_menu = {
    .lines = PropertyLines(lines).first(properties_of_a_line),
    .action = vline_menu_actions,
};

}  // namespace

int fill_nodemenu(Vobj* figure, int id, int x, int y) {
  return fill(node_menu, figure, id, x, y);
}

int fill_vboxmenu(Vobj* figure, int id, int x, int y) {
  return fill(vbox_menu, figure, id, x, y);
}

int fill_vlinemenu(Vobj* figure, int id, int x, int y) {
  return fill(vline_menu, figure, id, x, y);
}

int node_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_property_menu(node_menu, index, line_flags, items);
}

int vbox_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_property_menu(vbox_menu, index, line_flags, items);
}

int vline_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_property_menu(vline_menu, index, line_flags, items);
}

}  // namespace torve
