// Editing a field of a menu in place.
#pragma once

#include "text/menu_items.hpp"

namespace torve {

/// Lets the user edit the text of `items[field]`, whose first character stands at (x, y) on the
/// screen, until Return, a mouse press or `max_length` characters (30 at most) before the cursor.
/// A press stays for the next readmouse. Returns 1 when the text is not empty then, else 0; 0 at
/// once in terminal mode. The line is drawn without a cursor mark at the end; its colours are
/// those of the line and of its fields.
///
/// The cursor starts before the first character. Backspace there deletes the first character and
/// shows the mark one cell left of the field. A character that brings the cursor to the field's
/// width widens it; Backspace with the cursor still beyond `maxlen` narrows it. Other keys than
/// Return, Backspace and the arrows insert what they stand for.
int got_parstring(MenuItem* items, char** lines, int field, int coloff, int x, int y,
                  int max_length, int line_background, int field_background);

/// Whether a key came during the last edit.
[[nodiscard]] bool last_edit_had_a_key();

}  // namespace torve
