// Lag means proposed by transforms and proved by a bound.
//
// What is proposed: the sum over i of a(i) b(i+k), from convolutions of blocks of 2048 values of a
// with windows of 4096 of b; one group of four blocks after the other, so that the partial sums at
// the borders of groups are known, too.
//
// What is proved (u = 2^-53): the stated sum goes from partial sum s to s, each addition wrong by
// at most u |s|, each product p by u |p|. So it is within
//   u (sum of |s| + sum of |p|) of the true sum.
// Within half a group s is the sum at the group's border nearby and the products in between, so the
// sum of |s| is at most the half's terms times the size at the border, plus each |p| as often as it
// lies in between; and by Cauchy and Schwarz the sum of w |a b| is at most the root of the sum of
// w a^2 times the sum of w b^2, which prefix sums give. The partial sums of signals that swing are
// small, and the bound with them: far fewer lags stay open than with |s| <= sum of all |p|. Added
// are the error of the transforms, and 1 % for the roundings of the bound itself.
#pragma once

#include <optional>
#include <span>
#include <vector>

namespace torve::transforms {

/// Proposes the means of the sums of a(i) b(i+k) for the lags k = 0 .. n-1, n the size of all
/// three, and returns the lags where the text of means[k] is not proved, ascending. Nothing if a
/// value is not finite, n is so small that proposals do not pay, or there is no memory.
[[nodiscard]] std::optional<std::vector<std::size_t>> propose_lag_means(std::span<const double> a,
                                                                        std::span<const double> b,
                                                                        std::span<float> means);

}  // namespace torve::transforms
