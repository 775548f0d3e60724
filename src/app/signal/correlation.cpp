#include "app/signal/correlation.hpp"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

#include "app/signal/lag_sums.hpp"
#include "app/signal/say.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

Outcome write_result(const std::string& name, std::span<const float> values) {
  OutputFile file(name);
  if (!file) return file.outcome();
  write_samples(file, values);
  if (file.finish()) say("done\n");
  return file.outcome();
}

double square_sum(std::span<const double> d) {
  double sum = 0;
  for (const double value : d)
    sum += value * value;
  return sum;
}

CorrelationPeak largest(std::span<const double> d1, std::span<const double> d2,
                        std::span<const float> means) {
  const double scale = std::sqrt(square_sum(d1) * square_sum(d2));
  CorrelationPeak peak;
  for (std::size_t k = 0; scale > 0 && k < means.size(); ++k) {
    const double sum = static_cast<double>(means[k]) * static_cast<double>(means.size() - k);
    if (k > 0 && !(sum / scale > peak.normalised)) continue;
    peak = {.lag = static_cast<int>(k), .normalised = sum / scale};
  }
  return peak;
}

Outcome correlate(const std::string& path1, const std::string& path2, const std::string& output,
                  const SampleRange& range, CorrelationPeak* peak) {
  const auto x1 = read_sample_file(path1, most_samples, range);
  const auto x2 = read_sample_file(path2, most_samples, range);
  if (!x1 || !x2) return input_failure(!x1 ? path1 : path2);
  const double mean1 = mean_over(*x1, x1->size());
  say("got ave1=%f and var1=%f counter1=%d\n", mean1, variance(*x1, mean1),
      static_cast<int>(x1->size()));
  // The mean of the second signal is taken over the values of the first.
  const double mean2 = mean_over(*x1, x2->size());
  say("got ave2=%f and var2=%f counter2=%d\n", mean2, variance(*x2, mean2),
      static_cast<int>(x2->size()));
  const std::size_t lags = std::min(x1->size(), x2->size());
  const std::vector<double> d1 = deviations(*x1, mean1);
  const std::vector<double> d2 = deviations(*x2, mean2);
  const auto first = std::span(d1).first(lags);
  const auto second = std::span(d2).first(lags);
  const std::vector<float> means = lag_means(first, second);
  if (peak != nullptr) *peak = largest(first, second, means);
  return write_result(output, means);
}

Outcome autocorrelate(const std::string& path, const std::string& output,
                      const SampleRange& range) {
  const auto x = read_sample_file(path, most_samples, range);
  if (!x) return input_failure(path);
  const std::vector<double> d = deviations(*x, mean_over(*x, x->size()));
  say("got ave and variance\n");
  return write_result(output, lag_means(d, d));
}

}  // namespace

double mean_over(std::span<const float> values, std::size_t count) {
  double sum = 0;
  for (const float value : values.first(std::min(count, values.size()))) {
    sum += static_cast<double>(value);
  }
  return sum / static_cast<double>(count);
}

double variance(std::span<const float> values, double mean) {
  double sum = 0;
  for (const float value : values) {
    const double deviation = static_cast<double>(value) - mean;
    sum += deviation * deviation;
  }
  return sum / static_cast<double>(values.size());
}

std::vector<double> deviations(std::span<const float> values, double mean) {
  std::vector<double> result(values.size());
  std::transform(values.begin(), values.end(), result.begin(),
                 [mean](float value) { return static_cast<double>(value) - mean; });
  return result;
}

Outcome autocorrelate_file(const std::string& path, const std::string& output,
                           const SampleRange& range) try {
  say("in autocorrelation\n");
  return watched(output, [&] { return autocorrelate(path, output, range); });
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

Outcome correlate_files(const std::string& path1, const std::string& path2,
                        const std::string& output, const SampleRange& range,
                        CorrelationPeak* peak) try {
  say("in correlation\n");
  return watched(output, [&] { return correlate(path1, path2, output, range, peak); });
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

std::string autocorrelation_name(const std::string& suffix) {
  return "autocor" + suffix + ".res";
}

std::string correlation_name(const std::string& suffix) {
  return "corre" + suffix + ".res";
}

int autocorrelation(const std::string& path, const std::string& suffix) {
  return autocorrelate_file(path, autocorrelation_name(suffix)).is_done() ? 0 : 1;
}

int correlation(const std::string& path1, const std::string& path2, const std::string& suffix) {
  return correlate_files(path1, path2, correlation_name(suffix)).is_done() ? 0 : 1;
}

}  // namespace torve
