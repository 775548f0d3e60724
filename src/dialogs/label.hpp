// Labels: one line of text on a white box, moved by pressing them. The workbench itself makes none.
#pragma once

namespace torve {

/// Makes object `id` a label with a text of 31 characters at most, upper left corner (x, y).
/// Nothing is drawn. Returns 0; 1 for an id outside 1 .. 128, or, after no_memory(), without
/// memory for the background.
int make_label(int id, int x, int y, const char* text);

/// Draws the label, for the first time or anew (`mode` mode_put or mode_refresh). False without
/// memory. A press on a label moves it.
[[nodiscard]] bool paint_label(int id, int mode);

// Not used by the workbench itself.

/// Draws the label (mode_put, mode_refresh), or starts a move. Returns the number of a command of
/// the engine: Command::put_down after drawing, 2 without memory; 1 after illegal_pointer(9) for an
/// id outside 1 .. 128.
int draw_label(int id, int mode);

/// Takes the label off the canvas and frees its slot. Returns 0, or 1 for an id outside 1 .. 128.
int free_label(int id);

}  // namespace torve
