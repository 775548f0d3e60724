// Drawings as files: texts stay texts in a PDF and an SVG.
#pragma once

#include <optional>
#include <string>

#include "figure/drawing.hpp"

namespace torve {

// The same drawing gives the same bytes. Nothing where there is no memory.

/// A page of the drawing's size.
[[nodiscard]] std::optional<std::string> pdf_of(const Drawing& drawing);

/// Its pixels, `scale` of them to a point, on white.
[[nodiscard]] std::optional<std::string> png_of(const Drawing& drawing, double scale);

[[nodiscard]] std::string svg_of(const Drawing& drawing);

}  // namespace torve
