// Sums of products at all lags, proposed by transforms, each with a bound.
//
// What is proposed: the sum over i of a(i) b(i+k), from convolutions of blocks of 2048 values of a
// with windows of 4096 of b; one group of four blocks after the other, so that the partial sums at
// the borders of groups are known, too.
//
// What bounds it (u = 2^-53): the stated sum is within u (sum of |s| + sum of |p|) of the true one,
// s its partial sums and p its products. Within half a group s is the sum at the group's border
// nearby and the products in between, so the sum of |s| is at most the half's terms times the size
// at the border, plus each |p| as often as it lies in between, which lag_squares.hpp bounds.
// The partial sums of signals that swing are small, and the bound with them: far fewer lags stay
// open than with |s| <= sum of all |p|. Added are the error of the transforms, and 1 % for the
// roundings of the bound itself.
#pragma once

#include <functional>
#include <span>

namespace torve::transforms {

/// Neighbouring lags.
struct LagTile {
  std::size_t first;
  std::span<const double> sums;
  std::span<const double> roundings;  // |stated sum - true sum| at most
  double error;                       // |sum - true sum| at most, of all
};

/// Proposes the sums of a(i) b(i+k) for the lags k = 0 .. n-1, n the size of both, and gives them
/// to `take`, ascending. False before the first if a value is not finite, n is so small that
/// proposals do not pay, or there is no memory.
[[nodiscard]] bool propose_lags(std::span<const double> a, std::span<const double> b,
                                const std::function<void(const LagTile&)>& take);

}  // namespace torve::transforms
