// Nodes, boxes and lines: servers and how they are chosen.

#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"

namespace torve {

namespace {

constexpr PropertyLine lines[] = {
    {.text = "Servers ",
     .fields = {{{.place = {.number = 0}, .integer = integer_of<&Vobj::servers>}}}},
    {.text = "PS-mode ",
     .fields =
         {{{.place = {.number = 1}, .integer = integer_of<&Vobj::ps_mode>, .words = ps_modes}}}},
    {.text = "Selection rule ",
     .fields = {{{.place = {.number = 2},
                  .integer = integer_of<&Vobj::selection_rule>,
                  .words = selection_rules}}}},
    {.text = "Exit filter ",
     .fields = {{{.place = {.number = 3},
                  .integer = integer_of<&Vobj::exit_filter>,
                  .words = exit_filters}}}},
    {.text = "Name ", .fields = {{{.place = {.number = 4}}}}},
    {.text = "Queue length ", .fields = {{{.place = {.number = 5}, .real = value_of<4>}}}},
};
// Boxes and lines have the first lines of a node's menu.
constexpr int lines_of_a_box = 5;
constexpr int lines_of_a_line = 3;

constexpr PropertyMenu node_menu = {
    .lines = lines,
    .action = node_menu_actions,
};

constexpr PropertyMenu vbox_menu = {
    .lines = PropertyLines(lines).first(lines_of_a_box),
    .action = vbox_menu_actions,
};

constexpr PropertyMenu vline_menu = {
    .lines = PropertyLines(lines).first(lines_of_a_line),
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
