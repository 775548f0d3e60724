// Nodes, boxes and lines: servers and how they are chosen.

#include <algorithm>
#include <span>
#include <string>

#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"

namespace torve {

namespace {

constexpr const char* lines[] = {
    "Servers ", "PS-mode ", "Selection rule ", "Exit filter ", "Name ", "Queue length ",
};
enum Line { servers_line, ps_mode_line, selection_line, filter_line, name_line, length_line };

constexpr PropertyField fields[] = {
    {.place = {.line = servers_line}, .integer = integer_of<&Vobj::servers>},
    {.place = {.line = ps_mode_line}, .integer = integer_of<&Vobj::ps_mode>, .words = ps_modes},
    {.place = {.line = selection_line},
     .integer = integer_of<&Vobj::selection_rule>,
     .words = selection_rules},
    {.place = {.line = filter_line},
     .integer = integer_of<&Vobj::exit_filter>,
     .words = exit_filters},
    {.place = {.line = name_line}},
    {.place = {.line = length_line}, .real = value_of<4>},
};

FigureLabel name_above_box(const Vobj& box) {
  constexpr int above = 12;  // of the upper edge, pixels
  return {std::min(box.x1, box.x2), std::min(box.y1, box.y2) - above, box.name};
}

FigureLabel servers_beside_middle(const Vobj& line) {
  constexpr int right = 4;  // of the middle, pixels
  constexpr int above = 14;
  return {(line.x1 + line.x2) / 2 + right, (line.y1 + line.y2) / 2 - above,
          std::to_string(line.servers)};
}

constexpr PropertyMenu node_menu = {
    .lines = lines,
    .fields = fields,
    .action = node_menu_actions,
    .label = name_above_head,
};

// Boxes and lines have the first lines of a node's menu.
constexpr PropertyMenu vbox_menu = {
    .lines = std::span(lines).first(name_line + 1),
    .fields = std::span(fields).first(name_line + 1),
    .action = vbox_menu_actions,
    .label = name_above_box,
};

constexpr PropertyMenu vline_menu = {
    .lines = std::span(lines).first(selection_line + 1),
    .fields = std::span(fields).first(selection_line + 1),
    .action = vline_menu_actions,
    .label = servers_beside_middle,
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
