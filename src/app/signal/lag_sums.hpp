// Sums of products at many lags.
//
// Transforms propose them; what these leave open is summed as it is stated. (A sum in any order
// with a bound, in between, costs as much: all of them wait for the values to come from the cache.)
#pragma once

#include <span>
#include <vector>

namespace torve {

/// For every lag k below n, the size of both: the sum over i = 0 .. n-k-1 of a(i) b(i+k), in index
/// order in double, divided by n - k. The text of every mean is that of the stated sum, though few
/// are summed so; all of them where a value is not finite.
[[nodiscard]] std::vector<float> lag_means(std::span<const double> a, std::span<const double> b);

}  // namespace torve
