// The program's own bitmap fonts.
//
// A font is a file "font<n>.dat" with its glyphs, eight pixels wide and all of one height, and
// perhaps a file "font<n>.dis" with the advance between each pair of letters; a font without one
// is set in fixed cells of eight pixels. Both are looked for in the working directory first.
//
//   font<n>.dat: glyph height in rows (a byte), number of glyphs (a byte), then the glyphs from
//                code 0 on: a byte for each row from the top, bit 7 leftmost
//   font<n>.dis: 60 x 60 signed bytes; entry [a * 60 + b] is the distance in pixels from the left
//                edge of a character of class a to that of a following one of class b
//
// One font is current; font 6 is kept beside it for measuring labels. All fonts have ten rows.
#pragma once

#include <cstdint>
#include <memory>

namespace torve {

using GlyphBlock = std::unique_ptr<std::uint8_t[]>;
using AdvanceTable = std::unique_ptr<signed char[]>;

inline constexpr int advance_classes = 60;
inline constexpr int menu_font = 7;     // menus, fields and messages of the workbench
inline constexpr int label_font = 6;    // titles and labels; also the second font
inline constexpr int number_font = 33;  // numbers along axes

// State.
extern int curfnt;           // number of the current font, 0 when there is none
extern int defaultfont;      // the font that menus, fields and messages use
extern GlyphBlock chlist;    // glyphs of the current font
extern AdvanceTable chdist;  // its pair advances, null when it has none
extern int ysize, fsize;     // its glyph height in rows and number of glyphs
extern int cs, cr;           // character cell: width (8) and line height (ysize + 1), pixels
extern GlyphBlock chlist2;   // the second font, kept for measuring labels
extern AdvanceTable chdist2;
extern int ysizeb, csb;

/// Makes font `number` current. Returns 0, or 1 after a line on standard output when it cannot be
/// loaded; the font that was current stays so then.
[[nodiscard]] int init_font(int number);

/// The same for the second font.
[[nodiscard]] int init_font2(int number);

/// Forgets the current font (the second font); returns 0.
int free_font();
int free_font2();

/// Loads the glyphs of a font; the outputs are written on success only. Returns 1 after
/// "can't open font file %s\n" (missing, without rows, or shorter than its header says) or "malloc
/// fails fsize=%d ysize=%d\n", else 0.
[[nodiscard]] int read_chlist(int number, int* height, int* count, GlyphBlock* glyphs);

/// Loads the pair advances of a font; a font without any gives a null table. Returns 1 after
/// "malloc fails allocating 3600 bytes\n", else 0.
[[nodiscard]] int read_chdist(int number, AdvanceTable* table);

/// The `ysize` rows of a character's glyph in the current font (the second font); a box for codes
/// the font does not have.
[[nodiscard]] const std::uint8_t* glyph_rows(char character);
[[nodiscard]] const std::uint8_t* glyph_rows2(char character);

/// The advance behind character i of a text, pixels: entry [class(text[i])][class(text[i + 1])].
/// Letters have classes of their own, every other character shares class 0 with 'a'.
[[nodiscard]] int get_xoff(const AdvanceTable& table, const char* text, int i);

/// Width of a text in the second font, pixels; 0 when it is not loaded.
[[nodiscard]] int fntlen2(const char* text);

}  // namespace torve
