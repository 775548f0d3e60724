// A bell, struck once, as two microphones record it.
//
// Only additions, multiplications and divisions are used, so the samples are the same bytes on
// every machine and with every mathematics library.
#pragma once

#include <string>
#include <vector>

namespace torve {

constexpr int sampling_rate = 44100;
/// The second recorder is switched on this many samples (35 ms) after the first.
constexpr int second_start = 1544;

struct BellRecordings {
  std::vector<double> first;   // both within -1 .. 1, in steps of a 16-bit converter
  std::vector<double> second;  // sample i was taken together with sample second_start + i of first
};

[[nodiscard]] BellRecordings record_bell();

/// A sample file: one line "index value" a sample, the value with six decimals.
[[nodiscard]] std::string sample_text(const std::vector<double>& values);

/// What remains of `first` when the best-fitting multiple of `second` has been taken away, both
/// scaled to a mean absolute value of 1: without its mean, and scaled to a largest value of 1.
[[nodiscard]] std::vector<double> match_residual(const std::vector<double>& first,
                                                 const std::vector<double>& second, int offset);

}  // namespace torve
