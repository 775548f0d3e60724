// The lines of a menu on the screen: a text of fixed cells with fields in it.
//
// Line i of a menu is shown at row Y1_min + (i - first line) * cr, from column `coloff` on, inside
// the drawing limits. Fields of a line lie one after another in the array; the first of them knows
// how many they are. Texts are drawn in `fgcol`, backgrounds are colour numbers.
//
// A line's whole row is cleared before it is drawn, in its colour from X1_min to X1_max; a field is
// then cleared in its own colour over its width and one row less, so that fields of lines one below
// the other stay apart.
#pragma once

#include "text/menu_items.hpp"

namespace torve {

/// Draws line `line` with its fields; nothing when it lies above `firstline` or below the limits.
void display_line(MenuItem* items, char** lines, int item_count, int line, int coloff,
                  int firstline, int line_background, int field_background);

/// Makes a field one character wider (direction 1) or narrower (-1): what follows it on the line
/// moves by one character, and the line, whose length stays the same, is drawn at row `y`.
/// A field keeps one character at least.
void modify_line(MenuItem* items, char** lines, int field, int line, int y, int coloff,
                 int line_background, int field_background, int direction);

/// The line that a field belongs to, and the first field of that line.
[[nodiscard]] int line_of_field(const MenuItem& item);
[[nodiscard]] int first_field_of_line(const MenuItem* items, int field);

/// Draws a line at row `y`, with the fields of its line from `first_field` on (-1: none).
void draw_line_row(MenuItem* items, const char* text, int first_field, int y, int coloff,
                   int line_background, int field_background);

/// Draws a text in fixed cells from column x, without the cells left of X1_min or beyond X1_max.
void draw_cells(int x, int y, const char* text, int background);

/// Rotates the choices of a selection field: the first of them goes to the end.
void next_selection(char* text);

// Not used by the workbench itself.

/// Makes a field `delta` characters wider, moves the fields behind it on its line as far, and
/// draws it and them at row `y`.
void modboxes(MenuItem* items, int field, int coloff, int y, int field_background, int delta);

}  // namespace torve
