// The terms of Fourier sums between ends, x(i) times a cosine or sine, several bins side by side.
//
// Phasors of true angles are turned from sample to sample, a component in two parts: whole numbers
// of 2^-26, and the rest. A product of two phasors has exact products of whole numbers; what is
// left of it is small. Moved by what rounding did to the stated angle it is, but for 2^-61, the
// true cosine and sine of that angle, and the library's value is within library_slack of these,
// then rounded. Both ends of that are rounded as well; where they are the same, the term is known.
//
// Errors. Of a product of phasors, in units of 2^-79: rests are at most 2^-27, so the sums of one
// to four products with them are at most 2^-27, 2^-26, 2^-25.4, 2^-25 and rounded by 1/4, 1/2, 1
// and 1; without fused operations the products are rounded by 1/4 each; a factor that is not split
// was rounded by u/2, u = 2^-53, which makes 1/2 of two: 4.25 a component, 6.1 in length. Splitting
// the product anew rounds its rest by 1/4.
//
// The phasor of the first sample of a block is the one before times that of a block, which is
// within 2^-80 and 2^-86, the exact one's rounding and error: 7 in length. 131072 samples have
// 2^13 blocks: 7/8 x 2^-63. An exact phasor after a wrap is within 2^-78, the turns of a block are
// far closer, 16 products. The angle's roundings are up to 2^-35 and known within 2^-70; the square
// of them, which is left out, makes 2^-71. Together less than 2^-63.
//
// Where the true value lies a little above a power of two and ours below, the unit in the last
// place is taken half as large as it is. Within 2^-63 that happens below 2^-9 only: above, ours is
// rounded to the power itself. 3/8 units there are less than 2^-62. So 2^-61 is more than enough.
#pragma once

#include <cstdint>
#include <span>

#include "app/signal/fourier_lanes.hpp"
#include "app/signal/ordered_sums.hpp"

namespace torve {

inline constexpr double phasor_slack = 0x1p-61;

/// Phasors of the bins, split.
struct SplitPhasors {
  alignas(64) double sines[fourier_lanes];
  alignas(64) double cosines[fourier_lanes];
  alignas(64) double sine_rests[fourier_lanes];
  alignas(64) double cosine_rests[fourier_lanes];

  void set(int lane, const SplitSineCosine& at);
};

/// The terms of some bins of x, a block of samples at a time from the first one on. Large: not for
/// the stack.
struct FourierTerms {
  /// At most 131072 samples; they must outlive the terms.
  void begin(std::span<const float> samples, std::span<const int> bins);
  /// Makes the terms of the next samples; how many there are, 0 after the last.
  int next();

  TermEnds cosines;
  TermEnds sines;

  std::span<const float> x;
  int first;  // of the samples whose terms are next
  Divisor k;
  alignas(64) std::uint32_t step[fourier_lanes];     // 2 j
  alignas(64) std::uint32_t product[fourier_lanes];  // 2 j x first, wrapped
  SplitPhasors start;                                // of sample `first`
  SplitPhasors turns[terms_at_once];                 // of so many steps
  SplitPhasors block_turn;                           // of all of them
};

}  // namespace torve
