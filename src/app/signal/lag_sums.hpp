// Sums of products at many lags.
//
// Transforms propose them (transforms/lag_proposal.hpp); for those that the bounds of these leave
// open closer ones are made (lag_narrowing.hpp); what is open then is summed as it is stated.
#pragma once

#include <span>
#include <vector>

namespace torve {

/// For every lag k below n, the size of both: the sum over i = 0 .. n-k-1 of a(i) b(i+k), in index
/// order in double, divided by n - k. The text of every mean is that of the stated sum, though few
/// are summed so; all of them where a value is not finite.
[[nodiscard]] std::vector<float> lag_means(std::span<const double> a, std::span<const double> b);

}  // namespace torve
