// The text of a file, line by line, in a text window.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>

namespace torve {

inline constexpr int longest_line = 132;  // characters; the rest of a line is the next one

/// A character of a file that takes two bytes, and the font's code for it.
struct StrangeCharacter {
  std::uint8_t first = 0, second = 0;
  char code = 0;
};

/// The national letters, as UTF-8 writes them.
inline constexpr int strangesize = 24;
extern const std::array<StrangeCharacter, strangesize> strangelist;

/// Replaces the special characters of a line in place. A byte beyond 127 that begins none is
/// reported on standard output and dropped. Returns 0.
int replace_strange_characters(char* line);

/// Writes a line (its end is stripped, special characters are replaced, the caller's string
/// changes) at the text cursor, in `fgcol` on `bgcol`, up to X1_max. Returns 0.
int show_one_line_of_text(char* line);

/// Fills the text area with the file's lines from `firstline` on, their characters from column
/// `coloff` on; rows without a line are cleared. A null file has no lines. move_text is the same
/// routine under the name for a text that has been scrolled: the same lines in the same colours,
/// without their ends, or scrolling there and back would not be the same picture.
void show_text(std::FILE* file, int coloff, int firstline);
void move_text(std::FILE* file, int coloff, int firstline);

/// Number of lines of a file and the length of the longest, after their ends are stripped.
struct TextExtent {
  int lines = 0, columns = 0;
};
[[nodiscard]] TextExtent measure_text(std::FILE* file);

}  // namespace torve
