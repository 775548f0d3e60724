// Sums of weighted squares, which bound the products of a group of terms.
//
// Within half a group a partial sum is the one at the group's border nearby and the products in
// between. In the first half a product is part of all partial sums from its own on, so that its
// weight falls from half a group to 1, in the second of all before its own; one more for its own
// rounding. By Cauchy and Schwarz the sum of w |a b| is at most the root of the sum of w a^2 times
// that of w b^2. Both come from prefix sums, P(m) of the first m squares, and Q(m) = P(0) + .. +
// P(m-1), which are kept for every 32nd m: that serves for 32 neighbouring lags, whose values begin
// up to 31 further, so weights are 32 more than needed and more values are looked at.
#pragma once

#include <span>
#include <vector>

#include "app/signal/transforms/transform.hpp"

namespace torve::transforms {

class LagSquares {
 public:
  static constexpr int run = 32;               // lags, and values, that are bounded together
  static constexpr int half_group = 2 * half;  // terms
  /// How many values are looked at from one on.
  static constexpr int reach = 2 * (half_group + run);

  /// The roots for the runs from some value on.
  struct Roots {
    const double* falling;
    const double* rising;
  };

  /// Of values, and zeros up to `known` of them, a multiple of 32.
  LagSquares(std::span<const double> values, int known);

  /// The sum of all squares, not finite if a value is not.
  [[nodiscard]] double all() const { return p_.back(); }
  /// At least the root of the sum of `size` squares; multiples of 32.
  [[nodiscard]] double norm(int first, int size) const;
  /// `first` is a multiple of 32, and `reach` values from it on are known.
  [[nodiscard]] Roots roots_from(int first) const {
    return {falling_.data() + first / run, rising_.data() + first / run};
  }

 private:
  void add_prefixes(std::span<const double> values);
  [[nodiscard]] double falling(int r) const;
  [[nodiscard]] double rising(int r) const;

  std::vector<double> p_;
  std::vector<double> q_;
  double slack_ = 0;           // what rounding may have taken from P
  double weighted_slack_ = 0;  // and from Q, and as many P
  std::vector<double> falling_;
  std::vector<double> rising_;
};

}  // namespace torve::transforms
