// The data behind a menu: fields, lines, line flags.
//
// Three blocks of memory. Whoever creates them owns them until they are handed to a menu, which
// gives them back with itself. The lines' characters lie in the block of the line pointers.
#pragma once

#include "text/menu_items.hpp"

namespace torve {

/// Bits of a line's flag word.
inline constexpr int line_selected = 1;
inline constexpr int line_double_clicked = 2;

/// Allocates `nitems` fields, which lie beyond the screen until they are placed, and `nlines`
/// lines of `linesize` zero bytes with their flags, zero. Counts below 1 leave an output alone;
/// with line size 0 the lines are null, for the caller to fill in. Returns 0, or 1 when there is
/// no memory; what had been allocated then is in the outputs.
[[nodiscard]] int create_menustructure(MenuItem** items, char*** lines, int** flags, int nitems,
                                       int nlines, int linesize);

/// Releases what create_menustructure has allocated for the same counts and empties the pointers.
/// Returns 1 as soon as one of them is null that should not be: what comes after it stays.
int free_menustructure(MenuItem** items, char*** lines, int** flags, int nitems, int nlines,
                       int linesize);

}  // namespace torve
