// What torve-figure hands over: a picture, or why there is none.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/outcome.hpp"

namespace torve {

struct DrawnFigure {
  Outcome outcome = {};
  std::string bytes = {};  // the picture, where there is one
};

/// What the program ends with, and what it writes to standard output: the bytes, or a line with the
/// cause, the system's reason, the name and, behind a zero byte, the reason in words.
inline constexpr int figure_drawn = 0;
inline constexpr int figure_misused = 1;
inline constexpr int figure_failed = 2;
[[nodiscard]] int figure_status(const DrawnFigure& figure);
[[nodiscard]] std::string figure_output(const DrawnFigure& figure);

/// The same read again; nothing if the program has not come to its end.
[[nodiscard]] std::optional<DrawnFigure> drawn_figure_of(int status, std::string_view output);

}  // namespace torve
