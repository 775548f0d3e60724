// Where the products 2ji of a block of samples wrap, as 32-bit integers do, and the part of the
// block's Fourier sums that lies on one side of that cut, for bins that are cut at different
// places.
#pragma once

#include <cstdint>
#include <span>

#include "app/signal/double_double.hpp"
#include "app/signal/transforms/transform.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

/// The samples of a block, from the first to the last.
struct SampleRange {
  std::int64_t first;
  std::int64_t last;
};

/// How often 2^32 has been taken from a product to make it a 32-bit integer.
constexpr std::int64_t wraps(std::int64_t product) {
  return (product + (std::int64_t{1} << 31)) >> 32;
}
/// That is less than this.
inline constexpr std::uint64_t most_wraps = 8;

inline constexpr int cut_lanes = 16;

/// What is summed: the shorter side.
struct CutPlan {
  bool before;           // the cut; if not, from the last sample backwards
  std::int64_t from;     // the first of them
  int count[cut_lanes];  // at most 2048
  int largest_count;
};

/// For at most cut_lanes bins, ascending, each of whose products wraps once in the block.
[[nodiscard]] CutPlan plan_cuts(const SampleRange& block, std::span<const int> bins);

/// Phasors that begin at `start` and are turned by `turn` from sample to sample; re and im: the
/// sums.
struct Cuts {
  SineCosine start[cut_lanes];
  SineCosine turn[cut_lanes];
  double re[cut_lanes];
  double im[cut_lanes];
};

/// x: all samples.
void sum_to_cut(const float* x, const CutPlan& plan, Cuts& cuts);

/// The same, within close_cut_slack of the sum of |x|, in length: a phasor is set every 16 samples,
/// within 2^-52, 2 u, after 128 turns close to 2^-59 each; turning it 3.7 u, the product with x
/// 1 u, the additions of 16 samples 15 u; their sums, in one part at last, 1 u.
struct CloseCuts {
  SplitSineCosine start[cut_lanes];
  SplitSineCosine turn[cut_lanes];
  SplitSineCosine block_turn[cut_lanes];  // of close_cut_block samples
  double re[cut_lanes];
  double im[cut_lanes];
};
inline constexpr int close_cut_block = 16;
inline constexpr double close_cut_slack = 24 * unit;
void sum_closely_to_cut(const float* x, const CutPlan& plan, CloseCuts& cuts);

}  // namespace torve::transforms
