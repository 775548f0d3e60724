// Autocorrelation of a signal, and correlation of two signals by lag.
//
// All sums are double, in index order; the results pass through a float before they are printed.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace torve {

/// Sum of the values divided by `count`; values beyond the end count as 0.
[[nodiscard]] double mean_over(std::span<const float> values, std::size_t count);

/// The mean of (value - mean)^2.
[[nodiscard]] double variance(std::span<const float> values, double mean);

/// values - mean, each in double.
[[nodiscard]] std::vector<double> deviations(std::span<const float> values, double mean);

/// For every lag k below n, the size of both: the sum over i = 0 .. n-k-1 of a(i) b(i+k), divided
/// by n - k. Costs n^2 / 2 multiplications.
[[nodiscard]] std::vector<float> lag_means(std::span<const double> a, std::span<const double> b);

/// Writes the autocorrelation of the sample file `path` to "autocor<suffix>.res". 0, or 1 if a
/// file cannot be opened or written.
int autocorrelation(const std::string& path, const std::string& suffix);

/// Writes the correlation of two sample files, for the lags of the second against the first, to
/// "corre<suffix>.res". 0, or 1 if a file cannot be opened or written.
int correlation(const std::string& path1, const std::string& path2, const std::string& suffix);

}  // namespace torve
