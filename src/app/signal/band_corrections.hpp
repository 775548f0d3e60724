// What the roundings of angles add to the samples of a band: an angle that is rounded by d adds
// d (B cos - A sin). d is 10^-11 at most, so that single precision serves.
//
// How far off, in terms of v = 2^-24, the largest error of a rounding in single precision: bins are
// taken in blocks, and their phasors relative to that of a block's first one, from a table: within
// 0.7 v in length. A and B, the products with them and their sum err by 4 v in length; d is counted
// (angle_counters.hpp), within 16 v of what it is at most, and with what the rounding of 2
// x 3.14159 x t adds within 3 v more; its product and 128 additions by 129 v. 153 v a component are
// 216 v when the block's sum is turned to where it belongs. 2^-16 is 256 v, relative to the sum of
// |d| R, R =
// |(A, B)|, with the largest d that there may be. Products too small for single precision lose at
// most 2^-149 each; `vanished_single` is more than 2^17 times that, six times over.
//
// The same phasors give the partial sums behind each block: each is within 256 v of the sum of R so
// far. In between no partial sum is larger than the larger one of its neighbours and half of the
// sum of R: that is how far it is from the nearer one, at most. Each stated addition errs by half a
// unit in the last place of that, at most.
//
// Bins so small that the roundings of their angles do next to nothing are left out, as long as
// that is less than `negligible` in all; it goes into the bound.
#pragma once

#include <span>
#include <vector>

#include "app/signal/band_terms.hpp"
#include "app/signal/frames.hpp"
#include "app/signal/ordered_sums.hpp"

namespace torve {

class BandCorrections {
 public:
  /// Copies what it needs; all terms must be finite.
  explicit BandCorrections(const BandTerms& terms);

  /// How many samples are corrected at a time.
  static constexpr int lanes = sum_lanes;

  /// Puts the roundings of angles into the estimates of some samples, at most `lanes`, in any
  /// order; what is left of their bounds is closer.
  void correct(std::span<const int> times, std::span<BandEstimate> estimates) const;

  static constexpr int block = Frames::block;
  struct Bins {
    int first;
    int count;
    double sum = 0;  // of R
    bool left_out = false;
    float a[block] = {};
    float b[block] = {};
  };

 private:
  int size_;
  double offset_;
  std::vector<Bins> bins_;
  double left_out_ = 0;  // what the roundings of the angles left out do at most
};

}  // namespace torve
