// Text windows: framed, scrollable and resizable windows that show a file.
//
// The file is looked for in the working directory, then among the program's own files. It is read
// anew whenever the window is drawn.
#pragma once

#include <cstdint>
#include <cstdio>

#include "wm/command.hpp"
#include "wm/window_shape.hpp"

namespace torve {

/// Makes object `id` a window over the file `name` (31 characters at most). Nothing is drawn.
/// x and width go down to a multiple of 8. Colours: c1 background, c2 frame, c3 kept, c4 text.
/// `columns` and `lines` are the ranges of the scroll bars: how far the text may move to the left,
/// and the number of its lines; -1: worked out when the window is first drawn. Returns 0, or 1 for
/// an id outside 1 .. 128.
int make_file_window(int id, int x, int y, int width, int height, int c1, int c2, int c3, int c4,
                     const char* name, int columns, int lines);

/// Whether a window, once it is served, can only be scrolled and resized.
enum class Keep : std::uint8_t { no, yes };

/// Draws a window for the first time or anew (`mode` mode_put or mode_refresh); `over_text` draws
/// something over its text. The number of Command::put_down when it was drawn, of
/// Command::missing_file when there is no file to put, of Command::no_memory without memory.
[[nodiscard]] Command paint_text_window(int id, int mode, void (*over_text)() = nullptr);

/// Scrolls an uncovered window by some lines.
void scroll_text_window(int id, int lines);

/// Serves a press on a window. One whose file has gone is served all the same, so that it can be
/// closed; pressing into its text gives Command::missing_file.
[[nodiscard]] Served serve_text_window(int id, const PointerEvent& press, Keep keep = Keep::no);

/// Works out the ranges of the scroll bars, those of the record too where they are -1, and sets the
/// drawing limits to the text area. A null file leaves the record as it is.
void init_resizable(std::FILE* file, WdObject& window, ScrollState& scroll);

// Not used by the workbench itself.

/// Takes the window off the canvas and frees its slot. Returns 0, or 1 after illegal_pointer(6)
/// for an id below 1.
int free_file_window(int id);

/// Draws or serves the window (modes and results as for pop_up_menu; 1 when there is no file).
/// With `keep` nonzero it can only be scrolled and resized. resizable_window requires a text
/// window.
int file_window(int id, int mode, int keep);
int resizable_window(int id, int mode, int keep);

}  // namespace torve
