// Queues and telephones: how work arrives, how long it takes and how long users wait.

#include <string_view>

#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"

namespace torve {

namespace {

constexpr int work_load_bits = 4;  // of a queue's servers: the distribution; a number above them
constexpr int user_model_entry = 2;
static_assert(distributions[user_model_entry].word == std::string_view("user-model"));

constexpr MenuField field(int number, int column, int length, int covers = 0, int beyond = 0) {
  return {.number = number,
          .column = column,
          .width = length,
          .maxlen = length,
          .covers = covers,
          .beyond = beyond};
}

constexpr PropertyLine queue_lines[] = {
    {.text = "work load distribution ",
     .fields = {{{.place = {.number = 0},
                  .integer = integer_of<&Vobj::servers>,
                  .words = distributions,
                  .code_bits = work_load_bits}}}},
    {.text = "mean work load        t.u. ",
     .fields = {{{.place = field(1, 15, 5), .integer = integer_of<&Vobj::ps_mode>}}}},
    {.text = "delay=       ,parameter=     ",
     .fields = {{
         {.place = field(2, 6, 5), .integer = integer_of<&Vobj::selection_rule>},
         {.place = field(3, 24, 5), .integer = integer_of<&Vobj::exit_filter>},
     }}},
    {.text = "max message size (or 0) ",
     .fields = {{{.place = field(9, behind_the_line, 4), .integer = int_of<2>}}}},
    {.text = "user impatience mean    s ",
     .fields = {{{.place = field(5, 22, 8, 1, 4), .real = value_of<2>}}}},
    {.text = "user impatience dev     s ",
     .fields = {{{.place = field(6, 22, 5, 1, 1), .real = value_of<3>}}}},
    {.text = "arrival rate        calls/s ",
     .fields = {{{.place = field(7, 13, 4), .real = value_of<4>}}}},
    {.text = "arrival distribution ",
     .fields = {{{.place = {.number = 8},
                  .integer = int_of<1>,
                  .words = distributions,
                  .first_entry = user_model_entry}}}},
    {.text = "system time-out    s ",
     .fields = {{{.place = field(4, 17, 8, 1, 4), .real = value_of<1>}}}},
};

constexpr PropertyLine tel_lines[] = {
    {.text = "work load distribution ",
     .fields = {{{.place = {.number = 0},
                  .integer = integer_of<&Vobj::servers>,
                  .words = distributions}}}},
    {.text = "parameters      ,      ",
     .fields = {{
         {.place = field(1, 11, 5), .integer = integer_of<&Vobj::selection_rule>},
         {.place = field(2, 17, 5), .integer = integer_of<&Vobj::exit_filter>},
     }}},
    {.text = "modulation function       ",
     .fields = {{{.place = field(3, 20, 5), .integer = integer_of<&Vobj::ps_mode>}}}},
    {.text = "arrival rate        calls/s ",
     .fields = {{{.place = field(4, 13, 4), .real = value_of<4>}}}},
    {.text = "user impatience mean     s ",
     .fields = {{{.place = field(5, 22, 8, 1, 3), .real = value_of<2>}}}},
    {.text = "user impatience dev      s ",
     .fields = {{{.place = field(6, 22, 5, 1), .real = value_of<3>}}}},
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
