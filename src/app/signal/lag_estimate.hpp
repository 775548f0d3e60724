// What is known of a stated sum of products before it is summed as it is stated.
//
// Two things lie between a computed value and the stated sum: how far the value may be from the
// true sum, and how far the stated sum may be from it. The second (u = 2^-53): the stated sum goes
// from partial sum s to s, each addition wrong by half a unit in the last place of s, u |s| at
// most, and each product p by u |p|.
#pragma once

#include <algorithm>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"

namespace torve {

struct LagEstimate {
  double sum;
  double error;      // |sum - true sum| at most
  double roundings;  // |stated sum - true sum| at most
};

/// Between which the stated sum lies, the roundings of these ends included.
struct LagEnds {
  double low;
  double high;
};

[[nodiscard]] TORVE_INLINE LagEnds ends_of(const LagEstimate& estimate) {
  const double bound = estimate.error + estimate.roundings + 0x1p-51 * std::fabs(estimate.sum);
  return {estimate.sum - bound, estimate.sum + bound};
}

/// What both say. Each is right by itself, so they overlap.
[[nodiscard]] TORVE_INLINE LagEnds ends_of(const LagEstimate& one, const LagEstimate& other) {
  const double roundings = std::min(one.roundings, other.roundings);
  const LagEnds first = ends_of(LagEstimate{one.sum, one.error, roundings});
  const LagEnds second = ends_of(LagEstimate{other.sum, other.error, roundings});
  return {std::max(first.low, second.low), std::min(first.high, second.high)};
}

/// Makes `mean` that of so many terms; whether all that lies between the ends has its text.
[[nodiscard]] TORVE_INLINE bool settle_mean(const LagEnds& ends, double terms, float& mean) {
  const auto low = static_cast<float>(ends.low / terms);
  mean = static_cast<float>(ends.high / terms);
  return same_text(low, mean);
}

}  // namespace torve
