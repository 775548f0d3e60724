// Fourier sums proposed by transforms, with a bound.
//
// What is proposed: the angles of sample i and bin j are those of a chirp (chirp.hpp), in blocks of
// samples and tiles of bins. Where the product 2ji wraps around as a 32-bit integer a block's part
// is turned back by as many 2^32; a block in which it wraps is cut, and what lies on the shorter
// side of the cut is summed by turning.
//
// What bounds the distance from the stated sums (u = 2^-53, each a worst case):
//   the stated argument's roundings, of p x 3.14159 and of the quotient: half a unit in the last
//     place of each at the largest |p| of a block, times the block's sum of |x|. This is nearly all
//     of it, and told apart, because it can be worked out (fourier_corrections);
//   the stated additions: u times the sum of the sizes of all partial sums; these are known behind
//     each block, and change by at most the sum of |x| in between;
//   the convolutions of the blocks;
//   the sines, per |x|: w(i) 1.9 u in length and x w(i) 0.8 u; w(j-i) 1.9 u; w(j) and the turn
//     for wraps 1.9 u each and 2.2 u for their products; the library's 1.5 u and the stated product
//     1.5 u. Together 15.8 u; 20 u leave room for sums of blocks;
//   a cut block: a phasor turned up to 2048 times errs by at most 4.1 u a turn; 5 u leave room for
//     taking that side out of the whole.
#pragma once

#include <memory>
#include <span>

#include "app/signal/fourier_sums.hpp"

namespace torve::transforms {

class FourierProposal {
 public:
  /// Bins that are proposed at a time.
  static constexpr int tile = 2048;

  /// For the sums of x, which must outlive it and has at most 131072 values. Null if a value is
  /// not finite, x is so short that proposals do not pay, or there is no memory.
  [[nodiscard]] static std::unique_ptr<FourierProposal> make(std::span<const float> x);

  virtual ~FourierProposal() = default;

  /// The sums of the bins first_bin, a multiple of `tile`, and up; bins beyond K/2 are left out.
  virtual void propose(int first_bin, std::span<FourierEstimate, tile> estimates) = 0;
};

}  // namespace torve::transforms
