// Menus as tables.
//
// A menu is a table of its lines. A line holds its text, its fields and what it runs, which is
// given the fields of the whole menu by their numbers. The compiler refuses a table in which a
// field does not lie where its line leaves room for it.
#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "text/menu_items.hpp"
#include "wm/wd_object.hpp"

namespace torve {

/// As a field's column: right behind its line's text.
inline constexpr int behind_the_line = -1;

inline constexpr int fields_of_a_line = 4;  // at most
inline constexpr int no_field = -1;

struct MenuField {
  int number = no_field;         // by which actions name it: its place among the menu's items
  int column = behind_the_line;  // cells from the left edge of the text
  int width = field_length;      // characters
  int maxlen = field_length;     // the width that Backspace stops at
  const char* text = "";         // at first
  const char* (*text_now)() = nullptr;  // says it instead when the menu is made
  int covers = 0;                       // characters of its line's text that it hides, on purpose
  int beyond = 0;                       // cells of it that lie behind its line's text, on purpose
};
using LineFields = std::array<MenuField, fields_of_a_line>;  // the first ones that have a number

/// The menu whose line is run.
struct MenuRun {
  int id = 0;                 // of its object
  int line = 0;               // that was chosen
  MenuItem* items = nullptr;  // its fields

  [[nodiscard]] MenuItem& field(int number) const { return items[number]; }
  [[nodiscard]] const char* text(int number) const { return items[number].text; }
};

struct MenuLine {
  const char* text = "";
  LineFields fields = {};  // from left to right; their numbers follow one another
  void (*run)(const MenuRun& menu) = nullptr;
  // The command that does the same without a window; empty when there is none.
  std::string (*command)(const MenuRun& menu) = nullptr;
};

/// How many of a line's fields there are.
[[nodiscard]] constexpr int count_of(const LineFields& fields) {
  int count = 0;
  while (count < fields_of_a_line && fields[static_cast<std::size_t>(count)].number != no_field)
    ++count;
  return count;
}

/// Whether a line's fields lie in the gaps of its text, side by side, in the order of their
/// numbers. A field that hides characters or reaches beyond the text has to say how many.
[[nodiscard]] constexpr bool fields_fit(std::string_view text, const LineFields& fields) {
  const int length = static_cast<int>(text.size());
  int end = 0;  // of the field before
  for (int i = 0; i < count_of(fields); ++i) {
    const MenuField& field = fields[static_cast<std::size_t>(i)];
    if (i > 0 && field.number != fields[static_cast<std::size_t>(i - 1)].number + 1) return false;
    if (field.column == behind_the_line) {
      if (count_of(fields) != 1) return false;
      continue;
    }
    if (field.column < end) return false;
    end = field.column + field.width;
    int hidden = 0;
    for (int column = field.column; column < end && column < length; ++column)
      hidden += text[static_cast<std::size_t>(column)] == ' ' ? 0 : 1;
    if (hidden != field.covers) return false;
    if (std::max(0, end - length) != field.beyond) return false;
  }
  return true;
}

/// The lines of a menu. A table that is known to the compiler is checked by it: every line's fields
/// fit, and the numbers of all fields are 0, 1 and so on.
class MenuLines {
 public:
  constexpr MenuLines() = default;

  template <std::size_t count>
  consteval MenuLines(const MenuLine (&lines)[count]) : lines_(lines) {
    check();
  }
  template <std::size_t count>
  consteval MenuLines(const std::array<MenuLine, count>& lines) : lines_(lines) {
    check();
  }
  /// Lines that are written while the program runs.
  [[nodiscard]] static MenuLines made_now(std::span<const MenuLine> lines) {
    MenuLines made;
    made.lines_ = lines;
    return made;
  }

  [[nodiscard]] constexpr std::span<const MenuLine> all() const { return lines_; }
  [[nodiscard]] constexpr int field_count() const {
    int count = 0;
    for (const MenuLine& line : lines_)
      count += count_of(line.fields);
    return count;
  }

 private:
  consteval void check() const {
    for (const MenuLine& line : lines_) {
      if (!fields_fit(line.text, line.fields)) throw "a field does not fit its line";
    }
    for (int number = 0; number < field_count(); ++number) {
      if (uses_of(number) != 1) throw "a field's number is missing, or there twice";
    }
  }
  [[nodiscard]] constexpr int uses_of(int number) const {
    int uses = 0;
    for (const MenuLine& line : lines_) {
      for (const MenuField& field : line.fields)
        uses += field.number == number ? 1 : 0;
    }
    return uses;
  }

  std::span<const MenuLine> lines_;
};

struct MenuTable {
  MenuLines lines;
  WdAction action = nullptr;
  int width_cells = 0;
  int visible_lines = 0;          // 0: all
  int least_rows = 0;             // rows of text that there is room for at least
  int line_size = 80;             // bytes of a line
  int spare_fields = 0;           // fields more that belong to no line
  WdFlags flags = WdFlags::none;  // beside those that every menu has
};

/// Makes object `id` a menu whose upper left corner is (x, y), pixels, or as near as the canvas
/// allows; nothing is drawn. Returns 0; 1 for an id outside 1 .. 128; -1 after "failed to allocate
/// menu" has been written on the canvas.
int make_menu(const MenuTable& table, int id, int x, int y);

/// Repaints a menu, above all others, if it lies on the canvas.
void refresh_menu(int id);

/// Repaints a menu that stays beneath what lies above it.
void refresh_menu_in_its_place(int id);

/// The line that was chosen: the first one whose flag says so, -1 for none.
[[nodiscard]] int chosen_line(const MenuTable& table, const int* line_flags);

/// Runs the line that was chosen, if one was. What has gone well and said nothing shows in the
/// strip the command that does the same. `index` is the object's id - 1, as an action gets it.
/// Returns 0, which lets the program go on.
int run_chosen_line(const MenuTable& table, int index, const int* line_flags, MenuItem* items);

/// Puts a text into a field, cut at the longest a field can hold.
void set_field(MenuItem& field, const std::string& text);

}  // namespace torve
