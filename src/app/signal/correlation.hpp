// Autocorrelation of a signal, and correlation of two signals by lag.
//
// All sums are double, in index order; the results pass through a float before they are printed.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "app/signal/sample_file.hpp"
#include "base/outcome.hpp"

namespace torve {

/// Sum of the values divided by `count`; values beyond the end count as 0.
[[nodiscard]] double mean_over(std::span<const float> values, std::size_t count);

/// The mean of (value - mean)^2.
[[nodiscard]] double variance(std::span<const float> values, double mean);

/// values - mean, each in double.
[[nodiscard]] std::vector<double> deviations(std::span<const float> values, double mean);

/// Writes the autocorrelation of a part of a sample file.
Outcome autocorrelate_file(const std::string& path, const std::string& output,
                           const SampleRange& range = {});

/// Where a correlation is largest: the lag k whose sum of d1(i) d2(i+k), not divided by the number
/// of its terms, is the largest, so that a few samples at the end do not win.
struct CorrelationPeak {
  int lag = 0;            // samples that the second signal is later
  double normalised = 0;  // that sum by the root of both sums of squares: 1 for equal signals
};

/// Writes the correlation of the same part of two sample files, for the lags of the second against
/// the first; `peak` becomes its largest.
Outcome correlate_files(const std::string& path1, const std::string& path2,
                        const std::string& output, const SampleRange& range = {},
                        CorrelationPeak* peak = nullptr);

/// "autocor<suffix>.res" and "corre<suffix>.res".
[[nodiscard]] std::string autocorrelation_name(const std::string& suffix);
[[nodiscard]] std::string correlation_name(const std::string& suffix);

/// The same of whole files, into the files of these names; 0, or 1 if it is not done.
int autocorrelation(const std::string& path, const std::string& suffix);
int correlation(const std::string& path1, const std::string& path2, const std::string& suffix);

}  // namespace torve
