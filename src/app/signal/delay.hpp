// The delay between two recordings of one sound, without a guess of it.
//
// With a and b the two signals less their means, the correlation at lag k is
//   c(k) = sum over i of a(i) b(i+k),
// where both have a value, for lags of either sign. Its largest value is the delay D; a parabola
// through c(D-1), c(D) and c(D+1) gives the fraction. The normalised correlation is c(k) divided by
// sqrt(A B), A and B the sums of squares of a and b over the samples that overlap at D: at D it is
// the correlation coefficient, however much longer one of the signals is. A peak is a lag where c
// is not less than at its neighbours; it lies apart from D if c falls below half of c(D) between
// both.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "app/signal/sample_file.hpp"
#include "base/outcome.hpp"

namespace torve {

struct Delay {
  double samples = 0;      // positive: the second signal is later
  double gain = 0;         // what a is multiplied by to come nearest to b (least squares)
  double peak = 0;         // normalised, 0 to 1
  double second_peak = 0;  // of the largest peak that lies apart; 0 for none
  bool is_at_end = false;  // the largest value lies at the greatest lag allowed: no peak at all
};

/// What speaks against a delay; null if nothing does.
[[nodiscard]] const char* doubt_about(const Delay& delay);

/// The delay of `two` against `one`, lags up to `most_lag` to either side (all, without one).
/// Nothing if one of them is silent: where they overlap all its values are equal to its mean.
[[nodiscard]] std::optional<Delay> find_delay(std::span<const float> one,
                                              std::span<const float> two,
                                              std::optional<std::size_t> most_lag = std::nullopt);

/// The same of the same part of two sample files of any length. Cause::silent for nothing.
Outcome find_delay_of_files(const std::string& one, const std::string& two,
                            std::optional<std::size_t> most_lag, const SampleRange& range,
                            Delay* delay);

}  // namespace torve
