#include "text/field_editing.hpp"

#include <algorithm>
#include <cstring>

#include "display/backend.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/menu_lines.hpp"
#include "text/text_output.hpp"
#include "text/transliteration.hpp"

namespace torve {

namespace {

constexpr int key_return = 13;
constexpr int key_backspace = 8;
constexpr unsigned long left_arrow = 0xFF51;
constexpr unsigned long right_arrow = 0xFF53;
constexpr int mark_colour = 14;
constexpr int mark_height = 2;  // pixels, at the bottom of a cell

bool key_came = false;

struct Edit : FieldEdit {
  int p = 0;  // the cursor, -1 .. length of the text

  [[nodiscard]] MenuItem& item() const { return items[field]; }
  [[nodiscard]] int size() const { return static_cast<int>(std::strlen(item().text)); }
};

void draw_line(const Edit& edit) {
  const int line = line_of_field(edit.item());
  draw_line_row(edit.items, edit.lines[line], first_field_of_line(edit.items, edit.field), edit.y,
                edit.coloff, edit.line_background, edit.field_background);
}

void scroll_to(Edit& edit, int coloff) {
  if (coloff == edit.coloff) return;
  edit.x -= (coloff - edit.coloff) * cs;
  edit.coloff = coloff;
  if (edit.scrolled) edit.scrolled(coloff);
}

// Moves the lines as little as shows the cursor's cell.
void follow_cursor(Edit& edit) {
  const int mark = edit.x + edit.p * cs;
  const int hidden_right = std::max(0, mark + cs - X1_max);
  const int hidden_left = std::max(0, X1_min - mark);
  const int columns = (hidden_right + cs - 1) / cs - (hidden_left + cs - 1) / cs;
  scroll_to(edit, std::max(0, edit.coloff + columns));
}

// The whole line each time: the mark may have stood on a label, the text on the next field.
void show(const Edit& edit) {
  draw_line(edit);
  draw_cells(edit.x, edit.y, edit.item().text, edit.field_background);
  const int mark = edit.x + edit.p * cs;
  if (mark >= X1_min && mark + cs <= X1_max) {
    drawcursor(mark, edit.y + ysize - mark_height, mark_colour, 1, mark_height);
  }
}

void change_width(const Edit& edit, int direction) {
  modify_line(edit.items, edit.lines, edit.field, line_of_field(edit.item()), edit.y, edit.coloff,
              edit.line_background, edit.field_background, direction);
}

void delete_before_cursor(Edit& edit) {
  edit.p = std::max(edit.p - 1, -1);
  char* text = edit.item().text;
  const int at = std::max(edit.p, 0);
  const int size = edit.size();
  if (at < size) std::memmove(text + at, text + at + 1, static_cast<std::size_t>(size - at));
  if (edit.p > edit.item().maxlen) change_width(edit, -1);
}

void insert(Edit& edit, char character) {
  char* text = edit.item().text;
  edit.p = std::max(edit.p, 0);
  const int kept = std::min(edit.size(), edit.limit - 1);
  std::memmove(text + edit.p + 1, text + edit.p, static_cast<std::size_t>(kept - edit.p));
  text[kept + 1] = 0;
  text[edit.p] = character;
  if ((plg & 3) != 0) insertScandiChars(text + edit.p);
  if ((plg & 4) != 0 && insertPolishChars(text) != 0) --edit.p;
  edit.p = std::min(edit.p + 1, edit.size());
  if (edit.p >= edit.item().width) change_width(edit, 1);
}

void move_cursor(Edit& edit) {
  if (keysym == left_arrow && edit.p > 0) --edit.p;
  if (keysym == right_arrow && edit.p < edit.size()) ++edit.p;
}

void edit_text(Edit& edit) {
  while (edit.p < edit.limit) {
    follow_cursor(edit);
    show(edit);
    const int key = getch_or_press();
    if (key == press_instead_of_key) return;
    key_came = true;
    if (key == key_return) return;
    if (key == key_backspace) {
      delete_before_cursor(edit);
    } else if (key != 0) {
      insert(edit, static_cast<char>(key));
    } else if (display_backend() != nullptr) {
      move_cursor(edit);
    } else {
      return;  // the end of standard input
    }
  }
}

}  // namespace

bool edit_field(const FieldEdit& place) {
  if (term != text_screen) return false;
  key_came = false;
  Edit edit = {place};
  edit.limit = std::min(edit.limit, field_length);
  edit_text(edit);
  scroll_to(edit, place.coloff);
  draw_line(edit);
  return edit.size() > 0;
}

int got_parstring(MenuItem* items, char** lines, int field, int coloff, int x, int y,
                  int max_length, int line_background, int field_background) {
  return edit_field({.items = items,
                     .lines = lines,
                     .field = field,
                     .coloff = coloff,
                     .x = x,
                     .y = y,
                     .limit = max_length,
                     .line_background = line_background,
                     .field_background = field_background})
             ? 1
             : 0;
}

bool last_edit_had_a_key() {
  return key_came;
}

}  // namespace torve
