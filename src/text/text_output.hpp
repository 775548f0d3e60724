// Text on the screen: at the text cursor, inside the drawing limits, in character cells.
//
// Text starts at a column only up to the last full cell left of X1_max. Beyond it, text wraps to
// the next line or, with truncate1, is cut off. Colours are colour numbers unless said otherwise.
#pragma once

#include <cstdint>

namespace torve {

// State.
extern int truncate1;    // nonzero: cut text off at the right limit instead of wrapping it
extern int lg, plg;      // language; transliteration: bits 0 and 1 Scandinavian, bit 2 Polish
extern char line1[132];  // work line of otext

/// The three variables above to their start values.
void reset_text_state();

/// Makes the default font current, if it is not.
void use_default_font();

/// While one lives another font may be made current; at its end the one of its start is again.
class KeptFont {
 public:
  KeptFont();
  ~KeptFont();
  KeptFont(const KeptFont&) = delete;
  KeptFont& operator=(const KeptFont&) = delete;

 private:
  int font_;
};

/// One glyph of `rows` rows at (x, y): set bits in colour fg, clear bits in colour bg, or left
/// alone when bg is `nocolor`. `line_length` is not used.
void displaychar(int x, int y, int rows, int fg, int bg, int line_length,
                 const std::uint8_t* glyph);

/// Text in fixed cells from column x and row *y; *y moves as the text wraps. Below the limits the
/// text starts again at the top (on a cleared area when bg is a colour).
void textXY(int x, int* y, const char* text, int fg, int bg);

/// Proportional text; its background is painted up to the last character, `nocolor` included.
void textXYf(int x, int* y, const char* text, int fg, int bg);

/// Proportional text on a cleared background, cut where it would not fit: the caller's string is
/// shortened. fg is used as the pixel value itself, so a colour number comes out nearly black.
/// The caller marks what changed.
void textXYb(int x, int* y, char* text, int fg, int bg);

/// textXY at the text cursor in the default font. With `term` 1 the text is a line
/// on standard output.
void textn(const char* text, int fg, int bg);

/// textXYf at the text cursor in `font`, which becomes current. When it cannot be loaded the text
/// is drawn in the font that is.
void textf(const char* text, int fg, int bg, int font);

/// textXYb at the text cursor, shown.
void textnb(char* text, int fg, int bg);

/// Draws at most 131 characters of a text, transliterated as `plg` says, with textnb.
void otext(const char* text, int fg, int bg);

/// Prints in the current colours at the text cursor, which then moves down to row y (x is not
/// used). With `term` 1: on standard output, and the cursor moves to (x, y) modulo 1024.
void osprints(const char* text, int x, int y);

/// A label at the text cursor: on the screen with textf for target 0, else into the EPS file.
void textn1(int font, int target, const char* text, int fg, int bg);

// Not used by the workbench itself.

/// textn with textXYf in place of textXY.
void textn2(const char* text, int fg, int bg);

/// A number in units of 10^-decimals as a fixed-point text (1234 with 2 decimals: 12.34), written
/// with textn1 in the number font.
void text1(int target, int value, int decimals, int fg, int bg);

}  // namespace torve
