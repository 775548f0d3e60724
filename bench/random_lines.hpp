// Random signals of many kinds, every line of every analysis against the plain loops.
#pragma once

namespace torve {

/// Compares for so many seconds and tells on standard output how many lines there were, how many
/// were open at each step, and each line that differs. The number of lines that differ.
[[nodiscard]] long check_random_lines(unsigned seed, double seconds);

}  // namespace torve
