#include "app/signal/correlation.hpp"

#include <algorithm>
#include <new>
#include <optional>

#include "app/signal/lag_sums.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/say.hpp"

namespace torve {

namespace {

int write_result(const std::string& name, std::span<const float> values) {
  OutputFile file(name);
  if (!file) return 1;
  write_samples(file, values);
  if (!file.finish()) return 1;
  say("done\n");
  return 0;
}

int correlate(const std::string& path1, const std::string& path2, const std::string& suffix) {
  const auto x1 = read_sample_file(path1);
  const auto x2 = read_sample_file(path2);
  if (!x1 || !x2) return 1;
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
  const std::vector<float> means = lag_means(std::span(d1).first(lags), std::span(d2).first(lags));
  return write_result("corre" + suffix + ".res", means);
}

int autocorrelate(const std::string& path, const std::string& suffix) {
  const auto x = read_sample_file(path);
  if (!x) return 1;
  const std::vector<double> d = deviations(*x, mean_over(*x, x->size()));
  say("got ave and variance\n");
  return write_result("autocor" + suffix + ".res", lag_means(d, d));
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

int autocorrelation(const std::string& path, const std::string& suffix) try {
  say("in autocorrelation\n");
  return autocorrelate(path, suffix);
} catch (const std::bad_alloc&) {
  return 1;
}

int correlation(const std::string& path1, const std::string& path2, const std::string& suffix) try {
  say("in correlation\n");
  return correlate(path1, path2, suffix);
} catch (const std::bad_alloc&) {
  return 1;
}

}  // namespace torve
