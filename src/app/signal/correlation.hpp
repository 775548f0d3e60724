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

/// Writes the autocorrelation of the sample file `path` to "autocor<suffix>.res". 0, or 1 if a
/// file cannot be opened or written.
int autocorrelation(const std::string& path, const std::string& suffix);

/// Writes the correlation of two sample files, for the lags of the second against the first, to
/// "corre<suffix>.res". 0, or 1 if a file cannot be opened or written.
int correlation(const std::string& path1, const std::string& path2, const std::string& suffix);

}  // namespace torve
