// Popup menus: framed windows of text lines, some of which carry fields.
//
// A press selects a line; on a field it edits it, or goes on to the next choice. A double press on
// the selected line, a drag to its right or a press on the box in the upper left corner asks the
// engine to call the menu's action, which reads the line flags and the fields' texts.
//
// Colours: c1 text area and lines, c2 frame, c3 selected line, c4 fields, c5 all text.
#pragma once

#include <string>

#include "text/menu_items.hpp"
#include "wm/command.hpp"

namespace torve {

/// Modes of the kinds' procedures.
inline constexpr int mode_put = 0;
inline constexpr int mode_serve = 1;
inline constexpr int mode_refresh = 3;

/// Makes object `id` a menu of a menu structure (menu_structure.hpp), which it owns from now on.
/// Nothing is drawn. x and width go down to a multiple of 8; lines are filled up with blanks to
/// their size. Returns 0, or 1 for an id outside 1 .. 128; the structure stays the caller's then.
int make_popup_menu(int id, int x, int y, int width, int height, int c1, int c2, int c3, int c4,
                    int c5, MenuItem* items, char** lines, int* flags, int nitems, int nlines,
                    int nvisible, int linesize);

/// Draws a menu, for the first time or anew (`mode` mode_put or mode_refresh). False without memory
/// for its background.
[[nodiscard]] bool paint_menu(int id, int mode);

/// Scrolls an uncovered menu by some lines.
void scroll_menu(int id, int lines);

/// Serves a press on a menu.
[[nodiscard]] Served serve_menu(int id, const PointerEvent& press);

/// What the strip says while a menu is served, in front of anything else; empty: nothing of its
/// own.
void set_menu_note(std::string (*note_of)(int id));

/// Ranges of the scroll bars: the lines that do not show, and the columns (0 at least).
void init_popupmenu(int nlines, int nvisible, int linesize, int width, int* column_range,
                    int* line_range);

// Not used by the workbench itself.

/// Draws the menu (mode_put, mode_refresh) or serves the press that is going on (mode_serve).
/// Returns the number of a command of the engine: Command::put_down after drawing, 2 without memory
/// for the background, and pop_up_menu 1 for an id that is no menu. popUpMenu requires a menu.
int pop_up_menu(int id, int mode);
int popUpMenu(int id, int mode);

/// Takes the menu off the canvas and releases it. Returns 0, or 1 after illegal_pointer(7) for an
/// id below 1.
int free_pop_up_menu(int id);

/// Draws the menu and serves it once. Returns 1 when one of both failed or was positive, else 0.
int pull_down(int id);

}  // namespace torve
