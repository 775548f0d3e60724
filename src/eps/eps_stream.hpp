// The EPS file that is being written, and the lines that go into it.
//
// A template supplies everything but the drawing: its head (up to and including the line that
// starts with "%%End_Setup", and one line more) goes in front, its tail behind. The template
// defines `Or`, the page position of the plot's origin, and `CX`, screen pixels to page units.
// Screen rows grow downwards, the page upwards. Colours and line widths are the template's.
#pragma once

#include <cstdio>
#include <string>

#include "base/files.hpp"
#include "base/outcome.hpp"

namespace torve {

// State: set between open_eps and close_eps, null otherwise.
extern FilePtr outstream;

/// Opens the template (in the working directory, else in the data directory, else "psexampl.dat"
/// there), creates the output and copies the head. Returns the template, positioned behind its
/// head, or null when the template or the output cannot be opened; no output is left then. All of a
/// template without an end of set-up is head.
[[nodiscard]] FilePtr open_eps(const std::string& output, const std::string& template_name);

/// Copies the tail and puts the file in its place; an older file of the name lasts until then.
/// Returns 0, or 1 after "could not write NAME: REASON\n".
int close_eps(FilePtr template_file);

/// The same, as a value.
Outcome finish_eps(FilePtr template_file);

/// Forgets the open file: what was there stays.
void abandon_eps();

/// One segment between two screen positions, pixels; `area_height` is that of the drawing area
/// (Y1_max - Y1_min). Nothing when no output is open.
void write_eps_segment(int x1, int y1, int x2, int y2, int area_height);

/// A label whose upper left corner is the screen position (x, y), pixels, in a line `line_height`
/// pixels high. Font 6 is written in 12 pixels, any other in 10, font 35 in Greek letters.
/// The text goes in as it stands: parentheses and backslashes keep their meaning there.
void write_eps_label(int font, int x, int y, int area_height, int line_height, const char* text);

}  // namespace torve
