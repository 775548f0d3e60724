// Diagrams out of files.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "base/outcome.hpp"
#include "diagram/model/kept_diagram.hpp"

namespace torve {

/// What a file holds; nothing when it cannot be read to its end, or holds more than 8 MiB.
[[nodiscard]] std::optional<std::string> diagram_file_contents(std::FILE* file);

/// Reads a diagram. Where a line cannot be read the outcome's name says which.
[[nodiscard]] Outcome read_diagram_file(const std::string& name, KeptDiagram* diagram);

}  // namespace torve
