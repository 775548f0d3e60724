// Queues and telephones: how work arrives, how long it takes and how long users wait.

#include <string_view>

#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"

namespace torve {

namespace {

constexpr MenuField field(int number, int column, int length, int covers = 0, int beyond = 0) {
  return {.number = number,
          .column = column,
          .width = length,
          .maxlen = length,
          .covers = covers,
          .beyond = beyond};
}

consteval PropertyField of_queue(const MenuField& place, std::string_view key) {
  return shown(place, FigureMenu::queue, key);
}

consteval PropertyField of_tel(const MenuField& place, std::string_view key) {
  return shown(place, FigureMenu::tel, key);
}

constexpr PropertyLine queue_lines[] = {
    {.text = "work load distribution ", .fields = {{of_queue({.number = 0}, "servers")}}},
    {.text = "mean work load        t.u. ", .fields = {{of_queue(field(1, 15, 5), "ps_mode")}}},
    {.text = "delay=       ,parameter=     ",
     .fields = {{of_queue(field(2, 6, 5), "selection_rule"),
                 of_queue(field(3, 24, 5), "exit_filter")}}},
    {.text = "max message size (or 0) ",
     .fields = {{of_queue(field(9, behind_the_line, 4), "int2")}}},
    {.text = "user impatience mean    s ", .fields = {{of_queue(field(5, 22, 8, 1, 4), "value2")}}},
    {.text = "user impatience dev     s ", .fields = {{of_queue(field(6, 22, 5, 1, 1), "value3")}}},
    {.text = "arrival rate        calls/s ", .fields = {{of_queue(field(7, 13, 4), "value4")}}},
    {.text = "arrival distribution ", .fields = {{of_queue({.number = 8}, "int1")}}},
    {.text = "system time-out    s ", .fields = {{of_queue(field(4, 17, 8, 1, 4), "value1")}}},
};

constexpr PropertyLine tel_lines[] = {
    {.text = "work load distribution ", .fields = {{of_tel({.number = 0}, "servers")}}},
    {.text = "parameters      ,      ",
     .fields = {{of_tel(field(1, 11, 5), "selection_rule"),
                 of_tel(field(2, 17, 5), "exit_filter")}}},
    {.text = "modulation function       ", .fields = {{of_tel(field(3, 20, 5), "ps_mode")}}},
    {.text = "arrival rate        calls/s ", .fields = {{of_tel(field(4, 13, 4), "value4")}}},
    {.text = "user impatience mean     s ", .fields = {{of_tel(field(5, 22, 8, 1, 3), "value2")}}},
    {.text = "user impatience dev      s ", .fields = {{of_tel(field(6, 22, 5, 1), "value3")}}},
};

// A right press on the close box leaves these open. Neither kind has a name.
constexpr PropertyMenu queue_menu = {
    .lines = queue_lines,
    .action = queue_menu_actions,
    .width_cells = 40,
    .flags = WdFlags::right_close_puts_down,
};

constexpr PropertyMenu tel_menu = {
    .lines = tel_lines,
    .action = tel_menu_actions,
    .flags = WdFlags::right_close_puts_down,
};

constexpr int lines_of_small_queue_menu = 3;

}  // namespace

int fill_queuemenu(Vobj* figure, int id, int x, int y) {
  const bool small = figure != nullptr && figure->spare[1] != 0;
  return fill(queue_menu, figure, id, x, y, small ? lines_of_small_queue_menu : 0);
}

int fill_telmenu(Vobj* figure, int id, int x, int y) {
  return fill(tel_menu, figure, id, x, y);
}

int queue_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_property_menu(queue_menu, index, line_flags, items);
}

int tel_menu_actions(int index, int* line_flags, MenuItem* items, char**) {
  return run_property_menu(tel_menu, index, line_flags, items);
}

}  // namespace torve
