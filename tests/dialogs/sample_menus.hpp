// Menus for the tests and for the demonstration program.
#pragma once

#include <array>
#include <cstdio>
#include <span>

#include "dialogs/menu_structure.hpp"
#include "dialogs/popup_menu.hpp"
#include "text/fonts.hpp"

namespace torve {

struct SampleField {
  int line, column, width;
  const char* text;
  int fields_on_line;  // on the first field of a line
  ItemFlags flags = ItemFlags::none;
  int maxlen = field_length;
};

struct SampleMenu {
  int x, y, width, visible_lines;
  std::span<const char* const> lines;
  std::span<const SampleField> fields;
};

inline constexpr int sample_line_size = 80;

inline constexpr std::array<const char*, 4> analysis_lines = {
    "Autocorrelation of            to Plot   ",
    "Correlation of            and            to Plot   ",
    "Best match of            and            from       to       ",
    "Quit",
};
inline constexpr std::array<SampleField, 9> analysis_fields = {{
    {0, 19, 10, "bhld1.res", 2},
    {0, 38, 2, "1", 0},
    {1, 15, 10, "bhld1.res", 3},
    {1, 30, 10, "bhld2.res", 0},
    {1, 49, 2, "2", 0},
    {2, 14, 10, "bhld1.res", 4},
    {2, 29, 10, "bhld2.res", 0},
    {2, 45, 5, "0", 0, ItemFlags::use_maxlen, 5},
    {2, 54, 5, "1000", 0, ItemFlags::use_maxlen, 5},
}};
inline constexpr SampleMenu analysis_menu = {256, 520, 536, 4, analysis_lines, analysis_fields};

inline constexpr std::array<const char*, 9> queue_lines = {
    "work load distribution ",      "mean work load        t.u. ", "delay=       ,parameter=     ",
    "max message size (or 0) ",     "user impatience mean    s ",  "user impatience dev     s ",
    "arrival rate        calls/s ", "arrival distribution ",       "system time-out    s ",
};
inline constexpr std::array<SampleField, 5> queue_fields = {{
    {0, 23, 10, "\1uniform\2normal\3constant", 1, ItemFlags::selection},
    {1, 15, 6, "12", 1, ItemFlags::use_maxlen, 6},
    {2, 6, 6, "5", 2, ItemFlags::use_maxlen, 6},
    {2, 24, 5, "1", 0, ItemFlags::use_maxlen, 5},
    {6, 13, 6, "100", 1, ItemFlags::use_maxlen, 6},
}};
inline constexpr SampleMenu queue_menu = {120, 470, 320, 3, queue_lines, queue_fields};

inline constexpr std::array<const char*, 3> pen_lines = {"Pen: 1 point ", "Pen: 2 point ",
                                                         "Pen: 4 point "};
inline constexpr SampleMenu pen_menu = {360, 490, 136, 3, pen_lines, {}};

/// Fills object `id`; 0 on success.
inline int make_sample_menu(int id, const SampleMenu& menu) {
  MenuItem* items = nullptr;
  char** lines = nullptr;
  int* flags = nullptr;
  const int item_count = static_cast<int>(menu.fields.size());
  const int line_count = static_cast<int>(menu.lines.size());
  if (create_menustructure(&items, &lines, &flags, item_count, line_count, sample_line_size) != 0)
    return -1;
  for (int i = 0; i < line_count; ++i)
    std::snprintf(lines[i], sample_line_size, "%s", menu.lines[static_cast<std::size_t>(i)]);
  for (int i = 0; i < item_count; ++i) {
    const SampleField& field = menu.fields[static_cast<std::size_t>(i)];
    std::snprintf(items[i].text, field_room, "%s", field.text);
    items[i].x = field.column * cs;
    items[i].y = field.line * cr;
    items[i].width = field.width;
    items[i].maxlen = field.maxlen;
    items[i].nfields = field.fields_on_line;
    items[i].itemflags = field.flags;
  }
  return make_popup_menu(id, menu.x, menu.y, menu.width, 3 * cs + menu.visible_lines * cr, 16, 1, 3,
                         9, 0, items, lines, flags, item_count, line_count, menu.visible_lines,
                         sample_line_size);
}

}  // namespace torve
