// Sums whose terms are known only between two ends: both ends are carried along.
#pragma once

#include "app/signal/ordered_sums.hpp"

namespace torve {

/// Adds the terms 0 .. count - 1 to the ends of sum_lanes sums.
void add_ends(double* low, double* high, const TermEnds& ends, int count);

}  // namespace torve
