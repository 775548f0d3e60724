// What the roundings of angles add to Fourier sums: an angle that is rounded by d adds -x d sin to
// the cosines and x d cos to the sines. d is 10^-11 at most, so that single precision serves.
//
// How far off, in terms of v = 2^-24, the largest error of a rounding in single precision: cosines
// and sines go on by c(n+1) = 2 cos(turn) c(n) - c(n-1). A product of up to 2, the difference and
// the rounding of 2 cos(turn) err by 4 v together; n steps later that is at most n + 1 times as
// much, because a sine of n + 1 turns is at most n + 1 times that of one. 64 steps make 4 v x 2016,
// the rounding of the first two 64 v; 8128 v. d, its product with x and with the phasor and up to
// 64 additions are rounded, 67 v. 2^-10 is 16384 v, relative to the sum of |x d|. What is beyond
// the first order is d / 2, far less. Products too small for single precision lose at most 2^-149
// each; `vanished_single` is more than 2^17 times that, six times over.
//
// It is done in parts, the last samples first: their angles are the largest, and so are their
// roundings, so that many bins are certain before all of their samples have been gone through.
//
// The same phasors give the partial sums every 16 samples, as well, from the estimate of all down:
// each is off by what the estimate was, and 16384 v of the sum of |x| since. In between no partial
// sum is larger than the larger one of its neighbours and half of the sum of |x|: that is how far
// it is from the nearer one, at most. Each stated addition errs by half a unit in the last place of
// that, at most.
//
// Blocks of samples so small that the roundings of their angles do next to nothing are left out, as
// long as that is no more than the estimates err by anyway; it goes into the bound.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "app/signal/fourier_sums.hpp"

namespace torve {

/// An estimate some of whose samples, the last ones, have been corrected.
struct CorrectedBin {
  explicit CorrectedBin(const FourierEstimate& proposed = {});

  FourierEstimate estimate;
  FourierSums before;  // the sums of the samples that have not
  double unsure;       // how far off they are at most
  double additions;    // what the stated additions err by in those that have
};

class FourierCorrections {
 public:
  /// For the sums of x, which must outlive it and holds at most 131072 finite values. Null if there
  /// is no memory.
  [[nodiscard]] static std::unique_ptr<FourierCorrections> make(std::span<const float> x);
  explicit FourierCorrections(std::span<const float> x);

  /// Corrections are made in so many parts; each bin takes them from 0 on.
  static constexpr int parts = 4;

  /// Puts the roundings of a part's angles into some bins, at most fourier_lanes; what is left of
  /// the bounds is closer.
  void correct(int part, std::span<const int> bins, std::span<CorrectedBin> corrected);

  static constexpr int group = 16;  // samples between two partial sums
  static constexpr int block = 64;  // samples between two settings of a phasor

 private:
  /// Blocks, from the first to before the last.
  struct Range {
    std::size_t first;
    std::size_t last;
  };
  [[nodiscard]] Range blocks_of(int part) const;
  /// What the roundings of the angles in the first `blocks` blocks do at most.
  [[nodiscard]] double angle_error(int bin, std::size_t blocks) const;
  /// Leaves out blocks, if that saves much. Returns a bound of what the roundings of their angles
  /// do, at most the budget.
  double leave_out(const Range& range, int largest_bin, double budget);

  std::span<const float> x_;
  std::vector<double> sizes_;          // sums of |x| of each group
  std::vector<double> block_sizes_;    // and of each block
  std::vector<std::size_t> lightest_;  // the blocks, about in the order of what their angles do
  std::vector<char> left_out_;         // of the part and the bins at hand
};

}  // namespace torve
