// Diagrams as text: a line that names the format, then a line a figure, first to last.
//
//   torve-diagram 2
//   node x1=100 y1=80 x2=100 y2=300 colour=#000000 spare1=0 ... int2=0 label=2 name="cpu" text=""
//   id=1
//
// A line starts with the figure's kind; fields follow in any order, each once at most. x1, y1, x2
// and y2 (pixels, -32768 .. 32767) must be there; numbers that are not are 0, texts empty. `label`
// is the number of the figure's label among the figures, counted from 1. Values are
// decimal numbers, written with as many digits as it takes to read the same number again. In texts
// \" and \\ stand for themselves, \xHH for a byte; they are at most 20 characters long.
//
// `id` is the figure's identity; without one it gets the next that is free. Arcs, and texts that go
// along with a figure, have `from` and `to`: the identity of the figure that an end holds on to,
// with from_x=x2-5 and from_y=y1+40 for where, as it is counted from that figure's points. They say
// where such an end is; its own coordinates do not. Arcs have bends="10,20 30,40", probability and
// class, too. attr1 .. attr10 are the names of a node b's numbers.
//
// Keys that are none of these are kept as they stand, and written behind the others. Lines without
// anything, those that begin with #, what is behind a blank and #, and a carriage return at a
// line's end say nothing; none of that is written. Version 1 had no identities and nothing behind
// them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "diagram/model/kept_diagram.hpp"

namespace torve {

inline constexpr std::size_t most_figures = 10000;
inline constexpr int diagram_version = 2;
inline constexpr int highest_coordinate = 32767;

/// Fields that all figures have: whole numbers.
struct IntegerKey {
  const char* key;
  int& (*of)(FigureRecord&);
  int limit;  // of its magnitude; the lowest number is one below that
};
[[nodiscard]] std::span<const IntegerKey> integer_keys();
inline constexpr std::size_t point_keys = 4;  // the first ones
inline constexpr const char* value_keys[] = {"value1", "value2", "value3", "value4"};

/// The text of a diagram; the same diagram gives the same bytes.
[[nodiscard]] std::string diagram_to_text(const KeptDiagram& diagram);

/// The diagram that a text describes, with new serial numbers. Nothing when a line cannot be read:
/// `*bad_line` is its number then, counted from 1.
[[nodiscard]] std::optional<KeptDiagram> diagram_from_text(std::string_view text, int* bad_line);

}  // namespace torve
