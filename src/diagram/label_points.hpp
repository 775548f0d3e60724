// What a label's text looks like.
#pragma once

#include <vector>

#include "diagram/model/figures.hpp"

namespace torve {

/// The set bits of a text in the second font whose upper left corner is the place's first point.
[[nodiscard]] std::vector<PixelPosition> label_points(const char* text, const FigurePlace& place);

}  // namespace torve
