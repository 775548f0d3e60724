// Diagrams as text: a line that names the format, then a line a figure, first to last.
//
//   torve-diagram 1
//   node x1=100 y1=80 x2=100 y2=300 colour=#000000 spare1=0 ... int2=0 label=2 name="cpu" text=""
//
// A line starts with the figure's kind; fields follow in any order, each once at most. x1, y1, x2
// and y2 (pixels, -32768 .. 32767) must be there; numbers that are not are 0, texts empty. `label`
// is the number of the line, counted from 1 behind the first one, of the figure's label. Values are
// decimal numbers, written with as many digits as it takes to read the same number again. In texts
// \" and \\ stand for themselves, \xHH for a byte; they are at most 20 characters long.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "diagram/model/kept_diagram.hpp"

namespace torve {

inline constexpr std::size_t most_figures = 10000;

/// The text of a diagram; the same diagram gives the same bytes.
[[nodiscard]] std::string diagram_to_text(const KeptDiagram& diagram);

/// The diagram that a text describes, with new serial numbers. Nothing when a line cannot be read:
/// `*bad_line` is its number then, counted from 1.
[[nodiscard]] std::optional<KeptDiagram> diagram_from_text(std::string_view text, int* bad_line);

}  // namespace torve
