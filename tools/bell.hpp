// A bell, struck once, as two microphones record it.
//
// Only additions, multiplications and divisions are used, so the samples are the same bytes on
// every machine and with every mathematics library.
#pragma once

#include <vector>

namespace torve {

/// The second recorder is switched on this many samples (35 ms) after the first.
constexpr int second_start = 1544;

struct BellRecordings {
  std::vector<double> first;   // both within -1 .. 1, in steps of a 16-bit converter
  std::vector<double> second;  // sample i was taken together with sample second_start + i of first
};

[[nodiscard]] BellRecordings record_bell();

}  // namespace torve
