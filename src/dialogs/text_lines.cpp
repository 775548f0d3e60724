#include "dialogs/text_lines.hpp"

#include <algorithm>
#include <cstring>
#include <string>

#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {

constexpr std::array<StrangeCharacter, strangesize> strangelist = {{
    {0xC5, 0x82, 1},   // l with stroke
    {0xC4, 0x85, 2},   // a with ogonek
    {0xC4, 0x99, 3},   // e with ogonek
    {0xC4, 0x87, 4},   // c with acute
    {0xC5, 0x9B, 5},   // s with acute
    {0xC5, 0xBA, 6},   // z with acute
    {0xC5, 0xBC, 7},   // z with dot
    {0xC3, 0xB3, 8},   // o with acute
    {0xC5, 0x81, 9},   // L with stroke
    {0xC4, 0x84, 10},  // A with ogonek
    {0xC4, 0x98, 11},  // E with ogonek
    {0xC4, 0x86, 12},  // C with acute
    {0xC5, 0x9A, 13},  // S with acute
    {0xC5, 0xB9, 14},  // Z with acute
    {0xC5, 0xBB, 15},  // Z with dot
    {0xC5, 0x84, 16},  // n with acute
    {0xC3, 0xA5, 17},  // a with ring
    {0xC3, 0xA4, 18},  // a with diaeresis
    {0xC3, 0xB6, 19},  // o with diaeresis
    {0xC3, 0x85, 20},  // A with ring
    {0xC3, 0x84, 21},  // A with diaeresis
    {0xC3, 0x96, 22},  // O with diaeresis
    {0xC3, 0x93, 23},  // O with acute
    {0xC5, 0x83, 24},  // N with acute
}};

namespace {

constexpr int last_national_code = 24;

const StrangeCharacter* find_strange(std::uint8_t first, std::uint8_t second) {
  for (const StrangeCharacter& entry : strangelist) {
    if (entry.first == first && entry.second == second) return &entry;
  }
  return nullptr;
}

void report_strange(const std::string& line, std::uint8_t first, std::uint8_t second) {
  std::printf("missing escape      %d %d\n", first, second);
  std::printf("strangesize=%d strangelist=%d\n", strangesize, 1);
  for (const char character : line) {
    const auto code = static_cast<unsigned char>(character);
    std::printf(code > last_national_code ? "%c" : "%d", code);
  }
  std::printf("\n");
}

// A line end has no glyph: both characters of one go, whoever writes the line.
void strip_line_end(char* line) {
  std::size_t size = std::strlen(line);
  if (size > 0 && line[size - 1] == '\n') line[--size] = 0;
  if (size > 0 && line[size - 1] == '\r') line[--size] = 0;
}

using LineBuffer = std::array<char, longest_line + 1>;

bool read_line(std::FILE* file, LineBuffer& line) {
  return file != nullptr && std::fgets(line.data(), static_cast<int>(line.size()), file) != nullptr;
}

void clear_rows(int from, int to) {
  clearwin(X1_min, from, X1_max, to, bgcol);
}

}  // namespace

int replace_strange_characters(char* line) {
  const std::string before = line;
  char* to = line;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const auto first = static_cast<std::uint8_t>(before[i]);
    if (first < 0x80) {
      *to++ = before[i];
      continue;
    }
    // The byte behind the last one is the terminator.
    const auto second = static_cast<std::uint8_t>(before.c_str()[i + 1]);
    const StrangeCharacter* found = find_strange(first, second);
    if (found == nullptr) {
      report_strange(before, first, second);
      continue;
    }
    *to++ = found->code;
    ++i;
  }
  *to = 0;
  return 0;
}

int show_one_line_of_text(char* line) {
  strip_line_end(line);
  replace_strange_characters(line);
  // The writer leaves the last cell free; the text area ends behind it.
  const Kept right(X1_max);
  X1_max += cs;
  textnb(line, fgcol, bgcol);
  return 0;
}

void show_text(std::FILE* file, int coloff, int firstline) {
  LineBuffer line;
  if (file != nullptr) std::rewind(file);
  for (int skipped = 0; skipped < firstline && read_line(file, line); ++skipped) {
  }
  int y = Y1_min;
  for (; y <= Y1_max - cr && read_line(file, line); y += cr) {
    clear_rows(y, y + cr);
    strip_line_end(line.data());
    replace_strange_characters(line.data());
    if (static_cast<int>(std::strlen(line.data())) <= coloff) continue;
    xkoord = X1_min;
    ykoord = y;
    show_one_line_of_text(line.data() + coloff);
  }
  clear_rows(y, Y1_max);
}

void move_text(std::FILE* file, int coloff, int firstline) {
  show_text(file, coloff, firstline);
}

TextExtent measure_text(std::FILE* file) {
  TextExtent extent;
  LineBuffer line;
  if (file != nullptr) std::rewind(file);
  while (read_line(file, line)) {
    strip_line_end(line.data());
    ++extent.lines;
    extent.columns = std::max(extent.columns, static_cast<int>(std::strlen(line.data())));
  }
  return extent;
}

}  // namespace torve
