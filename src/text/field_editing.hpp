// Editing a field of a menu in place.
#pragma once

#include <functional>

#include "text/menu_items.hpp"

namespace torve {

/// A field that is to be edited, and where it is shown.
struct FieldEdit {
  MenuItem* items = nullptr;
  char** lines = nullptr;
  int field = 0;
  int coloff = 0;    // first column of the lines that is shown
  int x = 0, y = 0;  // of its first character on the screen, pixels
  int limit = 0;     // characters before the cursor that end the edit
  int line_background = 0, field_background = 0;
  // Told the first column that is shown, each time that the cursor would leave the text area, and
  // at the end, when it is the old one again. Without it the field's own line moves alone.
  std::function<void(int coloff)> scrolled = {};
};

/// Lets the user edit a field until Return, a mouse press or `limit` characters (30 at most) before
/// the cursor. The lines move, by whole columns, so that the cursor is seen. A press stays for
/// whoever reads next. Whether the text is not empty then; false at once in terminal mode. The line
/// is drawn without a cursor mark at the end; its colours are those of the line and of its fields.
///
/// The cursor starts before the first character. Backspace there deletes the first character and
/// shows the mark one cell left of the field. A character that brings the cursor to the field's
/// width widens it; Backspace with the cursor still beyond `maxlen` narrows it. Other keys than
/// Return, Backspace and the arrows insert what they stand for.
bool edit_field(const FieldEdit& place);

/// Whether a key came during the last edit.
[[nodiscard]] bool last_edit_had_a_key();

// Not used by the workbench itself.

/// edit_field for `items[field]`, whose first character stands at (x, y), without moving the other
/// lines. Returns 1 when the text is not empty then, else 0.
int got_parstring(MenuItem* items, char** lines, int field, int coloff, int x, int y,
                  int max_length, int line_background, int field_background);

}  // namespace torve
