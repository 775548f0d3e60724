// What the roundings of angles add to Fourier sums: an angle that is rounded by d adds -x d sin to
// the cosines and x d cos to the sines. d is 10^-11 at most, so that single precision serves.
//
// How far off, in terms of v = 2^-24, the largest error of a rounding in single precision: samples
// are taken in blocks, and their phasors relative to that of a block's first one, from a table:
// within 0.7 v in length. d is counted (angle_counters.hpp), within 16 v of what it is at most; its
// product with x and that with the phasor err by 2 v; 16 additions and 8 of their sums by 24 v. 43
// v a component are 61 v when the block's sum is turned to where it belongs. 2^-18 is 64 v,
// relative to the sum of |x d|, with the largest d that there may be. What is beyond the first
// order is d / 2, far less. Values are scaled so that the largest is about 1. Products too small
// for single precision lose at most 2^-149 each; `vanished_single` is more than 2^17 times that,
// six times over.
//
// It is done in parts, the last samples first: their angles are the largest, and so are their
// roundings, so that many bins are certain before all of their samples have been gone through.
//
// The same phasors give the partial sums, from the sums of all down: each is off by what these
// were, and by 3 v of each partial sum since and 4 v of each |x|, which is more than their
// roundings and those of the frames come to. Each stated addition errs by 2^-53 of the partial sum
// that it gives, at most; by Cauchy and Schwarz the sizes of a block's partial sums come to no more
// than the root of the sum of their squares times their number. And none is larger than the larger
// one of those before and behind the block and half of the sum of |x|: that is how far it is from
// the nearer one, at most; it errs by half a unit in the last place of that, at most. The lower
// bound is taken. A closer one is half a unit in the last place of each partial sum's component;
// that is worth the time when all else is known. (What the angles' roundings take from the sums as
// they go back is far below 1 v of |x|, which the 4 v have room for.)
//
// Of close sums these are all roundings there are, but for those of sines and products: the library
// is off by (1/2 + library_slack) 2^-53 |x|, a product by half a unit in the last place of x.
//
// Blocks of samples so small that the roundings of their angles do next to nothing are left out, as
// long as that is no more than the estimates err by anyway; it goes into the bound.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "app/signal/backward_sums.hpp"
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
  /// For the sums of x, at most 131072 finite values. Null if there is no memory.
  [[nodiscard]] static std::unique_ptr<FourierCorrections> make(std::span<const float> x);
  explicit FourierCorrections(std::span<const float> x);

  /// What to begin with if a bin's sums with true angles are known.
  [[nodiscard]] CorrectedBin begin(int bin, const TrueSums& sums);

  /// Corrections are made in so many parts; each bin takes them from 0 on.
  static constexpr int parts = 4;

  /// Puts the roundings of a part's angles into some bins, at most fourier_lanes; what is left of
  /// the bounds is closer.
  void correct(int part, std::span<const int> bins, std::span<CorrectedBin> corrected);
  /// Bounds what the additions of corrected bins err by once more, addition by addition.
  void refine(std::span<const int> bins, std::span<CorrectedBin> corrected);

 private:
  /// Blocks, from the first to before the last.
  struct Range {
    std::size_t first;
    std::size_t last;
  };
  [[nodiscard]] Range blocks_of(int part) const;
  [[nodiscard]] SampleBlock samples_of(std::size_t number) const;
  /// The bins as they are, side by side.
  [[nodiscard]] BackwardSums& tile_of(std::span<const int> bins,
                                      std::span<const CorrectedBin> corrected) const;
  /// What the roundings of the angles in the first `blocks` blocks do at most.
  [[nodiscard]] double angle_error(int bin, std::size_t blocks) const;
  /// Leaves out blocks, if that saves much. Returns a bound of what the roundings of their angles
  /// do, at most the budget.
  double leave_out(const Range& range, int largest_bin, double budget);

  std::vector<float> x_;               // scaled
  double scale_ = 1;                   // that x has been divided by
  std::vector<double> sizes_;          // sums of |x| of each block, scaled
  double size_ = 0;                    // of all
  int bins_of_error_ = -1;             // the group of bins for which there is
  double error_of_all_ = 0;            // what the roundings of all angles do at most
  double terms_error_ = 0;             // what stated sines and products err by, not scaled
  std::vector<std::size_t> lightest_;  // the blocks, about in the order of what their angles do
  std::vector<char> left_out_;         // of the part and the bins at hand
};

}  // namespace torve
