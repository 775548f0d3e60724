#include "text/menu_lines.hpp"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {

namespace {

int length(const char* text) {
  return text == nullptr ? 0 : static_cast<int>(std::strlen(text));
}

bool leads_choice(char character) {
  return static_cast<unsigned char>(character) < first_text_code;
}

// What a field shows: a selection field only its first choice, without the leading character.
std::string_view shown_text(const MenuItem& item) {
  const std::string_view text = item.text;
  if (!has(item.itemflags, ItemFlags::selection) || text.empty()) return text;
  std::size_t end = 1;
  while (end < text.size() && !leads_choice(text[end]))
    ++end;
  return text.substr(1, std::min<std::size_t>(end, field_length) - 1);
}

int column_of(const MenuItem& item) {
  return item.x / cs;
}

// The fields from `field` to the end of its line.
int fields_left(const MenuItem* items, int field) {
  const int first = first_field_of_line(items, field);
  return std::max(1, items[first].nfields - (field - first));
}

bool is_blank(const char* line, int column) {
  return line == nullptr || column >= length(line) || line[column] == ' ';
}

// The columns that a field's text may take: its width, and behind it the blanks of the line up to
// the next field or to the last blank before a label.
int text_room(const MenuItem& item, const MenuItem* next, const char* line) {
  const int start = column_of(item);
  const int limit = next != nullptr ? column_of(*next) - start : field_length;
  int room = item.width;
  while (room < limit && is_blank(line, start + room))
    ++room;
  return room < limit ? std::max(room - 1, item.width) : room;
}

void draw_field(const MenuItem& item, int room, int coloff, int y, int background) {
  const int left = item.x + X1_min - coloff * cs;
  const int right = std::min(left + item.width * cs, X1_max);
  clearwin(std::max(left, X1_min), y, right, y + ysize, background);
  const std::string_view text = shown_text(item).substr(0, static_cast<std::size_t>(room));
  draw_cells(left, y, std::string(text).c_str(), background);
}

void draw_fields(const MenuItem* items, int field, const char* line, int coloff, int y,
                 int background) {
  const int count = fields_left(items, field);
  for (int i = field; i < field + count; ++i) {
    const MenuItem* next = i + 1 < field + count ? &items[i + 1] : nullptr;
    draw_field(items[i], text_room(items[i], next, line), coloff, y, background);
  }
}

void move_boxes(MenuItem* items, int field, int delta) {
  const int count = fields_left(items, field);
  items[field].width += delta;
  for (int i = field + 1; i < field + count; ++i)
    items[i].x += delta * cs;
}

}  // namespace

int line_of_field(const MenuItem& item) {
  return item.y / cr;
}

int first_field_of_line(const MenuItem* items, int field) {
  const int line = line_of_field(items[field]);
  while (field > 0 && line_of_field(items[field - 1]) == line)
    --field;
  return field;
}

void draw_cells(int x, int y, const char* text, int background) {
  for (; x < X1_min && *text != 0; x += cs)
    ++text;
  const std::string visible(
      text, static_cast<std::size_t>(std::clamp((X1_max - x) / cs, 0, length(text))));
  xkoord = x;
  ykoord = y;
  textn(visible.c_str(), fgcol, background);
}

void draw_line_row(MenuItem* items, const char* text, int first_field, int y, int coloff,
                   int line_background, int field_background) {
  clearwin(X1_min, y, X1_max, std::min(y + cr, Y1_max), line_background);
  if (length(text) > coloff) draw_cells(X1_min, y, text + coloff, line_background);
  if (first_field >= 0) draw_fields(items, first_field, text, coloff, y, field_background);
}

void display_line(MenuItem* items, char** lines, int item_count, int line, int coloff,
                  int firstline, int line_background, int field_background) {
  const int y = (line - firstline) * cr + Y1_min;
  if (line < firstline || y + cr > Y1_max) return;
  int field = 0;
  while (field < item_count && line_of_field(items[field]) != line)
    ++field;
  draw_line_row(items, lines[line], field < item_count ? field : -1, y, coloff, line_background,
                field_background);
}

void modify_line(MenuItem* items, char** lines, int field, int line, int y, int coloff,
                 int line_background, int field_background, int direction) {
  MenuItem& item = items[field];
  if (direction < 0 && item.width <= 1) return;
  char* text = lines[line];
  const int size = length(text);
  const int k = column_of(item) + item.width - (direction < 0 ? 1 : 0);
  if (k < size) {
    // The line keeps its length: its last character drops off, or a blank comes up behind it.
    const auto moved = static_cast<std::size_t>(size - 1 - k);
    if (direction > 0) {
      std::memmove(text + k + 1, text + k, moved);
      text[k] = ' ';
    } else {
      std::memmove(text + k, text + k + 1, moved);
      text[size - 1] = ' ';
    }
  }
  move_boxes(items, field, direction);
  draw_line_row(items, text, first_field_of_line(items, field), y, coloff, line_background,
                field_background);
}

void modboxes(MenuItem* items, int field, int coloff, int y, int field_background, int delta) {
  move_boxes(items, field, delta);
  draw_fields(items, field, nullptr, coloff, y, field_background);
}

void next_selection(char* text) {
  const int size = length(text);
  int end = 1;
  while (end < size && end < field_length && !leads_choice(text[end]))
    ++end;
  if (end < size) std::rotate(text, text + end, text + size);
}

}  // namespace torve
