// Samples of a band proposed by transforms, with a bound.
//
// What is proposed: a term is A cos + B sin, with A = 2 a 44100 / K and B likewise, so sample t is
// the offset and the real part of the sums over the bins j of (A - i B) exp(i angle); the angles,
// 2tj x 3.14159 / K, are those of a chirp (close_chirp.hpp), in blocks of bins and tiles of
// samples. No product wraps here.
//
// What bounds the distance from the stated sample (u = 2^-53, R = |(A, B)|, each a worst case):
//   the stated argument's roundings, of 2 x 3.14159 x t, of its product with j and of the quotient:
//     half a unit in the last place of each at the largest j of a block, times the block's sum of
//     R. This is nearly all of it, and told apart, because it can be worked out (band_corrections);
//   the stated additions: u times the sum of the sizes of all partial sums; these are known behind
//     each block, and change by at most the sum of R in between;
//   the convolutions and turns (close_chirp.hpp);
//   the rest, per R: A and B are rounded twice, 2 u; the library's sine and cosine 1.5 u; the
//     stated products, sum, product and quotient 4 u. Together 7.5 u; 10 u leave room for the
//     roundings of R.
#pragma once

#include <memory>
#include <span>

#include "app/signal/band_terms.hpp"

namespace torve::transforms {

class BandProposal {
 public:
  /// Samples that are proposed at a time.
  static constexpr int tile = 2048;

  /// For the samples 0 .. size - 1; what the terms refer to must outlive it, and size is at most
  /// 131072. Null if a term is not finite, the samples or the bins are so few that proposals do not
  /// pay, or there is no memory.
  [[nodiscard]] static std::unique_ptr<BandProposal> make(const BandTerms& terms);

  virtual ~BandProposal() = default;

  /// The samples first, a multiple of `tile`, and up; what stands for samples beyond is of no use.
  virtual void propose(int first, std::span<BandEstimate, tile> estimates) = 0;
};

}  // namespace torve::transforms
