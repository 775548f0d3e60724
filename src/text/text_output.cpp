#include "text/text_output.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "draw/pixels.hpp"
#include "draw/plane_copy.hpp"
#include "draw/rectangles.hpp"
#include "eps/eps_stream.hpp"
#include "text/fonts.hpp"
#include "text/transliteration.hpp"

namespace torve {

int truncate1 = 0;
int lg = 0, plg = 0;
char line1[132];

namespace {

constexpr int glyph_width = 8;          // pixels
constexpr int terminal_modulus = 1024;  // of the cursor in terminal mode

// The last column at which a character may start.
int line_limit() {
  return (X1_max - 1) / 8 * 8;
}

int length(const char* text) {
  return static_cast<int>(std::strlen(text));
}

void clear_area(int colour) {
  clearwin(X1_min, Y1_min, X1_max, Y1_max, colour);
}

void keep_row_inside(int* y) {
  if (*y > Y1_max) {
    clear_area(bgcol);
    *y = Y1_min;
  }
  *y = std::max(*y, Y1_min);
}

// Draws the set bits of a glyph of the current font.
template <typename Draw>
void for_glyph_bits(char character, int x, int y, Draw draw) {
  const std::uint8_t* rows = glyph_rows(character);
  for (int row = 0; row < ysize; ++row) {
    for (int column = 0; column < glyph_width; ++column) {
      if ((rows[row] & (0x80U >> column)) != 0) draw(x + column, y + row);
    }
  }
}

// Clears from the cursor to (length of the text, glyph height) as seen from the screen's corner:
// a box behind the text for text in that corner only.
void clear_behind_corner_text(const char* text) {
  clearwin(xkoord, ykoord, length(text) * cs, ysize, white_colour);
}

bool printed_on_terminal(const char* text) {
  if (term != text_console) return false;
  std::printf("%s\n", text);
  return true;
}

}  // namespace

void reset_text_state() {
  truncate1 = 0;
  lg = plg = 0;
  std::memset(line1, 0, sizeof line1);
}

void use_default_font() {
  // One that cannot be had leaves the current one: its message says so.
  if (curfnt != defaultfont) static_cast<void>(init_font(defaultfont));
}

KeptFont::KeptFont() : font_(curfnt) {}

// Without memory for it the other font stays, until the next text asks for its own.
KeptFont::~KeptFont() {
  try {
    if (font_ != 0 && curfnt != font_) static_cast<void>(init_font(font_));
  } catch (const std::bad_alloc&) {
    std::printf("no memory for a font\n");
  }
}

void displaychar(int x, int y, int rows, int fg, int bg, int, const std::uint8_t* glyph) {
  if (!have_screen_image()) return;
  const std::uint32_t ink = colour_pixel(fg);
  const std::uint32_t paper = colour_pixel(bg);
  for (int row = std::max(0, -y); row < rows && y + row < screen_height; ++row) {
    const unsigned bits = reversed_8_bits(glyph[row]);
    const unsigned cover = bg == nocolor ? bits : 0xFFU;
    std::uint8_t* target = screen_block() + (y + row) * plane_line_bytes;
    for (int bit = screen_planes - 1; bit >= 0; --bit, target += plane_bytes) {
      const unsigned value =
          ((ink >> bit & 1U) != 0 ? bits : 0) | ((paper >> bit & 1U) != 0 ? ~bits & 0xFFU : 0);
      put_8_bits(target, x, value, cover);
    }
  }
  mark_dirty({x, y, x + glyph_width, y + rows});
}

void textXY(int x, int* y, const char* text, int fg, int bg) {
  for (; *text != 0; ++text) {
    if (x > line_limit()) {
      if (truncate1 != 0) return;
      x = X1_min;
      *y += cr;
    }
    x = std::max(x, X1_min);
    if (*y > Y1_max && bg != nocolor) clear_area(white_colour);
    if (*y < Y1_min || *y > Y1_max) *y = Y1_min;
    displaychar(x, *y, ysize, fg, bg, lineLen, glyph_rows(*text));
    x += cs;
  }
}

void textXYf(int x, int* y, const char* text, int fg, int bg) {
  keep_row_inside(y);
  int advance = cs;
  for (int i = 0; text[i] != 0; ++i) {
    if (x > line_limit()) {
      if (truncate1 != 0) return;
      x = X1_min;
      *y += cr;
      keep_row_inside(y);
    }
    x = std::max(x, X1_min);
    if (text[i + 1] != 0) {
      advance = chdist ? get_xoff(chdist, text, i) : cs;
      fillbox2(x, *y, advance, ysize, colour_pixel(bg));
    }
    for_glyph_bits(text[i], x, *y, [fg](int px, int py) { drawpixel(px, py, fg); });
    x += advance;
  }
}

void textXYb(int x, int* y, char* text, int fg, int bg) {
  const int limit = line_limit();
  if (length(text) * cs + x > limit) {
    const int room = std::max(0, (limit - x) / std::max(cs, 1));
    if (room < length(text)) text[room] = 0;
  }
  keep_row_inside(y);
  clearwin(x, *y, x + cs * length(text), *y + ysize, bg);
  const std::uint32_t pixel = static_cast<std::uint32_t>(fg);
  for (int i = 0; text[i] != 0; ++i) {
    for_glyph_bits(text[i], x, *y, [pixel](int px, int py) { drawpixel2c(px, py, pixel); });
    x += chdist ? get_xoff(chdist, text, i) : cs;
  }
}

void textn(const char* text, int fg, int bg) {
  if (printed_on_terminal(text)) return;
  use_default_font();
  if (bg != nocolor) clear_behind_corner_text(text);
  textXY(xkoord, &ykoord, text, fg, bg);
}

void textn2(const char* text, int fg, int bg) {
  if (printed_on_terminal(text)) return;
  use_default_font();
  clear_behind_corner_text(text);
  textXYf(xkoord, &ykoord, text, fg, bg);
}

void textf(const char* text, int fg, int bg, int font) {
  if (curfnt != font && init_font(font) != 0 && !chlist) return;
  textXYf(xkoord, &ykoord, text, fg, bg);
}

void textnb(char* text, int fg, int bg) {
  textXYb(xkoord, &ykoord, text, fg, bg);
  mark_dirty({xkoord, ykoord, xkoord + length(text) * cs, ykoord + cr});
}

void otext(const char* text, int fg, int bg) {
  std::snprintf(line1, sizeof line1, "%s", text);
  if ((plg & 4) != 0) insertPolishChars(line1);
  if ((plg & 3) != 0) {
    for (char* character = line1; *character != 0; ++character)
      insertScandiChars(character);
  }
  textnb(line1, fg, bg);
}

void osprints(const char* text, int x, int y) {
  if (term == text_console) {
    std::printf("%s%s", text, y != ykoord ? "\n" : "");
    xkoord = x % terminal_modulus;
    ykoord = y % terminal_modulus;
    return;
  }
  const int down = y - ykoord;
  otext(text, fgcol, bgcol);
  if (ykoord < Y1_min) {
    clear_area(bgcol);
    ykoord = Y1_min + cr;
  } else {
    ykoord += down;
  }
}

void textn1(int font, int target, const char* text, int fg, int bg) {
  if (target == target_screen) {
    textf(text, fg, bg, font);
  } else {
    write_eps_label(font, xkoord, ykoord, Y1_max - Y1_min, cr, text);
  }
}

void text1(int target, int value, int decimals, int fg, int bg) {
  const std::string digits = std::to_string(value);
  std::string text;
  auto next = digits.rbegin();
  for (int k = decimals; next != digits.rend() || k >= 0; --k) {
    if (k == 0 && decimals != 0) text.insert(text.begin(), '.');
    text.insert(text.begin(), next != digits.rend() ? *next++ : '0');
  }
  textn1(number_font, target, text.c_str(), fg, bg);
}

}  // namespace torve
