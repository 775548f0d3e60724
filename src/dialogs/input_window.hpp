// Input windows: framed, scrollable and resizable windows whose inside their creator draws.
//
// The workbench itself makes none.
//
// The frame, the scroll bars and the scroll position are kept here; the creator's function draws
// the inside and is told of presses there. Figures show, above what the creator draws, in what a
// window has grown by since it was put, scrolled or moved.
//
// The record holds no background. What an input window covers is kept here instead: it may be as
// large as the canvas, and a block of that size would stay in the pool for good and be lent for
// every small menu. It cannot be done without: plots and pictures on the canvas are stored nowhere
// else, and what has lain beneath a window must come back when it goes.
//
// Colours: c1 background, c2 frame, c3 the creator's, c4 text.
#pragma once

#include <cstdint>
#include <vector>

#include "wm/window_shape.hpp"

namespace torve {

/// Makes object `id` an input window. Nothing is drawn. `value` is the creator's, in the record's
/// kind_word. `columns` and `lines` are how far the inside can be scrolled; -1: not at all.
/// Returns 0, or 1 for an id outside 1 .. 128.
///
/// `draw` is called with the id and a mode. mode_refresh: the inside is to be drawn as the
/// record's scroll position says; it has been cleared, or what is new of it after resizing. The
/// record's flags say `fresh` meanwhile; the function draws inside the window and touches no window
/// object. mode_serve: a button is down, pressed inside or on a scroll bar (buttons, X and Y hold
/// the press or its latest motion); it may draw, change the scroll position, and free the window.
/// What it draws stays until the inside is cleared. In both modes the drawing limits are the text
/// area, the figures' limits the inside, and the text cursor is in the upper left corner; what the
/// function changes of the limits, the colours and the font does not outlast it.
int make_input_window(int id, int x, int y, int width, int height, int c1, int c2, int c3, int c4,
                      const char* name, int value, int columns, int lines, InputDraw draw);

/// Draws a window, for the first time or anew, also one that has been served. False without memory.
[[nodiscard]] bool paint_input_window(int id);

/// Serves a press on a window.
[[nodiscard]] Served serve_input_window(int id, const PointerEvent& press);

/// For the kind's entry: where the pixels under a window are kept, whether it shows figures and is
/// not being drawn, and the end of a window.
[[nodiscard]] std::vector<std::uint8_t>& covered_by_input_window(int id);
[[nodiscard]] bool input_window_shows_figures(int id);
void end_input_window(int id);

// Not used by the workbench itself.

/// Draws the window (mode_put, mode_refresh) until it has been served once, and serves it then as
/// mode_serve does: what presses have made of the inside is not cleared. Returns the number of a
/// command of the engine: Command::put_down after drawing, 2 without memory; 1 for an id that is no
/// input window.
int input_window(int id, int mode);
int resizable_input_window(int id, int mode);

/// Repaints a window that has been served, too, as raising it does. Returns as input_window.
int redraw_input_window(int id);

/// Works out the ranges of the scroll bars (a negative one comes out as 2 less the window's size
/// in cells, which scrolls nothing), the drawing limits and the thumbs.
void init_input_resizable(const WdObject& window, ScrollState& scroll);

/// Moves a window, above all others if it lies on the canvas; what it has covered comes back.
/// Returns 0, or 1 for an id that is no input window.
int move_input1(int id, int x, int y);

/// Takes the window off the canvas and frees its slot. Returns 0, or 1 for an id outside 1 .. 128.
int free_input_window(int id);

}  // namespace torve
