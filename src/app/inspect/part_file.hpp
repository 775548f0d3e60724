// A stretch of a signal as a sample file of its own.
#pragma once

#include <span>

#include "base/outcome.hpp"

namespace torve {

/// Writes the values to the first of part1.res, part2.res and so on that does not exist; its name
/// is the outcome's. Not done: not_created or not_written, and nothing is left behind.
Outcome write_part(std::span<const float> values);

}  // namespace torve
