// Reading values under the pointer: the strip names the point, a cross marks it.
//
// Both come with the pointer and go without a trace. Whoever is about to change or export what is
// on the canvas calls take_reading_away first; the next motion brings it back.
#pragma once

namespace torve {

/// Reads the point of pane 0 .. 2 that is nearest to a position of the screen, pixels. Nothing is
/// shown where there is nothing to read.
void show_reading(int pane, int x, int y);

[[nodiscard]] bool reading_is_shown();

/// The strip says again what it said before, and nothing marks a point.
void take_reading_away();

/// The point that is read becomes the mark, from which on distances are told.
void keep_mark();

/// Whether there was a mark.
bool forget_mark();

/// Hands the line that the strip shows to other programs; nothing when it is empty.
void copy_line();

/// Writes the samples from the mark to the point that is read, both included, to a file of their
/// own, and says so in the strip.
void write_stretch();

}  // namespace torve
