// A time signal rebuilt from some bins of a spectrum, several samples side by side.
//
// Sample t is an offset plus the sum, over the bins j of some ranges in order, of
//   2 (a(j) cos(angle) + b(j) sin(angle)) x 44100 / K,  angle = 2 x 3.14159 x t x j / K,
// each evaluated left to right in double.
#pragma once

#include <array>
#include <span>
#include <vector>

namespace torve {

/// Bins from first to last; empty if last < first.
struct BinRange {
  int first;
  int last;
};

class BandSums {
 public:
  /// a and b hold the coefficients of the bins 0 .. size - 1, and must outlive the object; the
  /// ranges lie within 1 .. size - 1; size is at most 131072.
  BandSums(std::span<const float> a, std::span<const float> b, int size, double offset,
           std::array<BinRange, 2> ranges);

  /// Sample t, literally, with the library's sine and cosine.
  [[nodiscard]] double plain_value(int t) const;

  /// How many samples quick_values takes at a time.
  static constexpr int lanes = 32;

  /// The samples first_t and up. Phasors are turned from bin to bin and set anew every 64 bins;
  /// what the rounding of each angle does is put in. Blocks of bins that are all zero are left out.
  void quick_values(int first_t, std::span<double, lanes> values) const;

  /// How far `value` of quick_values may be from the literal one: a unit in the last place of a sum
  /// of its size, times the square root of the number of additions (the roundings go either way).
  /// The worst difference seen is a fifth of it.
  [[nodiscard]] double tolerance(double value) const;

  /// The samples first_t and up with the text of the literal ones: where a rounding boundary lies
  /// within the tolerance, the literal sum decides.
  void values(int first_t, std::span<double, lanes> values) const;

 private:
  std::span<const float> a_;
  std::span<const float> b_;
  int size_;
  double offset_;
  std::array<BinRange, 2> ranges_;
  std::vector<double> scaled_a_;  // 2 a 44100 / K, 2 b 44100 / K
  std::vector<double> scaled_b_;
  double typical_;  // the size a sum of the terms with random signs has
  double terms_;
};

}  // namespace torve
