// A time signal rebuilt from some bins of a spectrum, several samples side by side.
//
// Sample t is an offset plus the sum, over the bins j of some ranges in order, of
//   2 (a(j) cos(angle) + b(j) sin(angle)) x 44100 / K,  angle = 2 x 3.14159 x t x j / K,
// each evaluated left to right in double.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "app/signal/band_terms.hpp"
#include "app/signal/ordered_sums.hpp"

namespace torve {

class BandSums {
 public:
  /// a and b hold the coefficients of the bins 0 .. size - 1, and must outlive the object; the
  /// ranges lie within 1 .. size - 1; size is at most 131072.
  BandSums(std::span<const float> a, std::span<const float> b, int size, double offset,
           std::array<BinRange, 2> ranges);

  /// What is added, scaled; as long as the object lives.
  [[nodiscard]] BandTerms terms() const { return {scaled_a_, scaled_b_, size_, offset_, ranges_}; }

  /// Sample t, literally, with the library's sine and cosine.
  [[nodiscard]] double plain_value(int t) const;

  /// How many samples the others take at a time.
  static constexpr int lanes = sum_lanes;

  /// What a sample lies between, ends included.
  struct Ends {
    double low;
    double high;
  };

  /// The ends of some samples, at most `lanes`, in any order. Phasors are turned from bin to bin
  /// and set anew every 64 bins; what the rounding of each angle does is put in.
  void ends(std::span<const int> times, std::span<Ends> ends) const;

  /// The same a tenth as far apart, in seven times the time: each angle has its own sine.
  void close_ends(std::span<const int> times, std::span<Ends> ends) const;

  /// Some samples, at most `lanes`, to the bit, in four to thirty times the time of their ends.
  /// plainly: all terms are worked out, which takes less time where nearly all would have to be.
  /// Returns whether that was so, or was seen soon.
  bool literal_values(std::span<const int> times, std::span<double> values, bool plainly) const;

 private:
  [[nodiscard]] double term(int t, int bin) const;
  /// Calls `add(first, count)` for up to `most` bins at a time, in order, but for those all zero.
  template <typename Add>
  void for_bins(int most, Add add) const;

  std::span<const float> a_;
  std::span<const float> b_;
  int size_;
  double offset_;
  std::array<BinRange, 2> ranges_;
  bool zeros_count_;              // whether adding zeros could change a sum
  std::vector<double> scaled_a_;  // 2 a 44100 / K, 2 b 44100 / K
  std::vector<double> scaled_b_;
};

}  // namespace torve
