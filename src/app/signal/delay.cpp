#include "app/signal/delay.hpp"

#include <algorithm>
#include <cmath>
#include <new>

#include "app/signal/transforms/lag_products.hpp"

namespace torve {

namespace {

constexpr double least_peak = 0.2;
constexpr double least_ratio = 1.2;  // of the largest peak to the second

double mean_of(std::span<const float> x) {
  double sum = 0;
  for (const float value : x)
    sum += static_cast<double>(value);
  return x.empty() ? 0 : sum / static_cast<double>(x.size());
}

double square_sum(std::span<const float> x, double mean) {
  double sum = 0;
  for (const float value : x) {
    const double deviation = static_cast<double>(value) - mean;
    sum += deviation * deviation;
  }
  return sum;
}

/// The mean of equal values is that value: of floats up to 2^29 the sum is exact.
bool is_silent(std::span<const float> x, double mean) {
  return square_sum(x, mean) == 0;
}

/// Where the parabola through three values, the middle one the largest, has its top, -1/2 to 1/2.
double top_between(double before, double at, double after) {
  const double curvature = before - 2 * at + after;
  return curvature < 0 ? (before - after) / (2 * curvature) : 0;
}

/// The largest peak that lies apart from that at `best`; 0 for none.
double second_peak(std::span<const double> c, std::size_t best) {
  const double half = c[best] / 2;
  std::size_t left = best;
  while (left > 0 && c[left] >= half)
    --left;
  std::size_t right = best;
  while (right + 1 < c.size() && c[right] >= half)
    ++right;
  double second = 0;
  for (std::size_t i = 1; i + 1 < c.size(); ++i) {
    if (i > left && i < right) continue;
    if (c[i] >= c[i - 1] && c[i] >= c[i + 1]) second = std::max(second, c[i]);
  }
  return second;
}

struct Overlap {
  std::span<const float> one, two;
};

Overlap overlap_at(std::span<const float> one, std::span<const float> two, std::ptrdiff_t lag) {
  const auto skipped_one = static_cast<std::size_t>(std::max<std::ptrdiff_t>(-lag, 0));
  const auto skipped_two = static_cast<std::size_t>(std::max<std::ptrdiff_t>(lag, 0));
  const std::size_t size = std::min(one.size() - skipped_one, two.size() - skipped_two);
  return {one.subspan(skipped_one, size), two.subspan(skipped_two, size)};
}

}  // namespace

const char* doubt_about(const Delay& delay) {
  if (delay.is_at_end) return "the correlation is largest at the end of the range";
  if (delay.peak < least_peak) return "the peak is below 0.2";
  if (delay.peak < least_ratio * delay.second_peak) {
    return "the peak is less than 1.2 times the second one";
  }
  return nullptr;
}

std::optional<Delay> find_delay(std::span<const float> one, std::span<const float> two,
                                std::optional<std::size_t> most_lag) {
  if (one.empty() || two.empty()) return std::nullopt;
  const std::size_t back = std::min(most_lag.value_or(one.size()), one.size() - 1);
  const std::size_t ahead = std::min(most_lag.value_or(two.size()), two.size() - 1);
  const double mean_one = mean_of(one);
  const double mean_two = mean_of(two);
  const std::vector<double> c =
      transforms::lag_products({one, mean_one}, {two, mean_two}, back, ahead);
  const auto best = static_cast<std::size_t>(std::ranges::max_element(c) - c.begin());
  const std::ptrdiff_t lag = static_cast<std::ptrdiff_t>(best) - static_cast<std::ptrdiff_t>(back);
  const Overlap overlap = overlap_at(one, two, lag);
  const double power_one = square_sum(overlap.one, mean_one);
  const double scale = std::sqrt(power_one * square_sum(overlap.two, mean_two));
  // Where nothing is alike at all, what the transforms round is larger than what there is.
  if (is_silent(overlap.one, mean_one) || is_silent(overlap.two, mean_two)) return std::nullopt;
  const bool has_both = best > 0 && best + 1 < c.size();
  const double fraction = has_both ? top_between(c[best - 1], c[best], c[best + 1]) : 0;
  return Delay{.samples = static_cast<double>(lag) + fraction,
               .gain = c[best] / power_one,
               .peak = std::clamp(c[best] / scale, 0.0, 1.0),
               .second_peak = second_peak(c, best) / scale,
               .is_at_end = (best == 0 && back + 1 < one.size()) ||
                            (best + 1 == c.size() && ahead + 1 < two.size())};
}

Outcome find_delay_of_files(const std::string& one, const std::string& two,
                            std::optional<std::size_t> most_lag, const SampleRange& range,
                            Delay* delay) try {
  const auto x = read_long_sample_file(one, range);
  if (!x) return input_failure(one);
  const auto y = read_long_sample_file(two, range);
  if (!y) return input_failure(two);
  const auto found = find_delay(*x, *y, most_lag);
  if (!found) return {.cause = Cause::silent, .name = is_silent(*x, mean_of(*x)) ? one : two};
  *delay = *found;
  return {};
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

}  // namespace torve
