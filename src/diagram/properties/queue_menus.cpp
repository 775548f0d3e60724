// Queues and telephones: how work arrives, how long it takes and how long users wait.

#include <string_view>

#include "diagram/properties/property_menu.hpp"
#include "diagram/properties/property_menus.hpp"

namespace torve {

namespace {

constexpr int work_load_bits = 4;  // of a queue's servers: the distribution; a number above them
constexpr int user_model_entry = 2;
static_assert(distributions[user_model_entry].word == std::string_view("user-model"));

constexpr MenuField field_of(int line, int column, int length) {
  return {.line = line, .column = column, .width = length, .maxlen = length};
}

constexpr const char* queue_lines[] = {
    "work load distribution ",      "mean work load        t.u. ", "delay=       ,parameter=     ",
    "max message size (or 0) ",     "user impatience mean    s ",  "user impatience dev     s ",
    "arrival rate        calls/s ", "arrival distribution ",       "system time-out    s ",
};

constexpr PropertyField queue_fields[] = {
    {.place = {.line = 0},
     .integer = integer_of<&Vobj::servers>,
     .words = distributions,
     .code_bits = work_load_bits},
    {.place = field_of(1, 15, 5), .integer = integer_of<&Vobj::ps_mode>},
    {.place = field_of(2, 6, 5), .integer = integer_of<&Vobj::selection_rule>},
    {.place = field_of(2, 24, 5), .integer = integer_of<&Vobj::exit_filter>},
    {.place = field_of(8, 17, 8), .real = value_of<1>},
    {.place = field_of(4, 22, 8), .real = value_of<2>},
    {.place = field_of(5, 22, 5), .real = value_of<3>},
    {.place = field_of(6, 13, 4), .real = value_of<4>},
    {.place = {.line = 7},
     .integer = int_of<1>,
     .words = distributions,
     .first_entry = user_model_entry},
    {.place = field_of(3, behind_the_line, 4), .integer = int_of<2>},
};

constexpr const char* tel_lines[] = {
    "work load distribution ",      "parameters      ,      ",     "modulation function       ",
    "arrival rate        calls/s ", "user impatience mean     s ", "user impatience dev      s ",
};

constexpr PropertyField tel_fields[] = {
    {.place = {.line = 0}, .integer = integer_of<&Vobj::servers>, .words = distributions},
    {.place = field_of(1, 11, 5), .integer = integer_of<&Vobj::selection_rule>},
    {.place = field_of(1, 17, 5), .integer = integer_of<&Vobj::exit_filter>},
    {.place = field_of(2, 20, 5), .integer = integer_of<&Vobj::ps_mode>},
    {.place = field_of(3, 13, 4), .real = value_of<4>},
    {.place = field_of(4, 22, 8), .real = value_of<2>},
    {.place = field_of(5, 22, 5), .real = value_of<3>},
};

// A right press on the close box leaves these open. Neither kind has a name.
constexpr PropertyMenu queue_menu = {
    .lines = queue_lines,
    .fields = queue_fields,
    .action = queue_menu_actions,
    .width_cells = 40,
    .flags = WdFlags::right_close_puts_down,
};

constexpr PropertyMenu tel_menu = {
    .lines = tel_lines,
    .fields = tel_fields,
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
