#include "app/signal/matching.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "app/signal/clones.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr std::size_t lanes = 32;  // as for the correlations: each sum keeps its own order

/// sums[l] += |a[i + l] - b[i]| for i = 0 .. count - 1, for all lanes l.
TORVE_CLONES void add_offset_differences(const double* a, const double* b, std::size_t count,
                                         double* sums) {
  double sum[lanes];
  for (std::size_t l = 0; l < lanes; ++l)
    sum[l] = sums[l];
  for (std::size_t i = 0; i < count; ++i) {
    const double value = b[i];
    for (std::size_t l = 0; l < lanes; ++l)
      sum[l] += std::fabs(a[i + l] - value);
  }
  for (std::size_t l = 0; l < lanes; ++l)
    sums[l] = sum[l];
}

/// sums[l] += |a[i] - scales[l] b[i]| for i = 0 .. count - 1, for all lanes l.
TORVE_CLONES void add_scale_differences(const float* a, const float* b, std::size_t count,
                                        const double* scales, double* sums) {
  double scale[lanes];
  double sum[lanes];
  for (std::size_t l = 0; l < lanes; ++l) {
    scale[l] = scales[l];
    sum[l] = 0;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto value_a = static_cast<double>(a[i]);
    const auto value_b = static_cast<double>(b[i]);
    for (std::size_t l = 0; l < lanes; ++l)
      sum[l] += std::fabs(value_a - scale[l] * value_b);
  }
  for (std::size_t l = 0; l < lanes; ++l)
    sums[l] = sum[l];
}

/// The means at the scales start + k / scale_steps, computed as they are asked for.
class ScaleMeans {
 public:
  ScaleMeans(std::span<const float> a, std::span<const float> b, double start)
      : a_(a), b_(b), start_(start) {
    means_.fill(unknown);
  }

  double scale(int k) const { return start_ + k / scale_steps; }

  double at(int k) {
    if (std::isnan(mean(k))) compute(std::min(k, scale_reach - width + 1), 1);
    return mean(k);
  }

  /// Computes the means at first, first + step, and so on, as many as go side by side and are
  /// within the reach.
  void compute(int first, int step) {
    tell_alive();
    std::array<double, lanes> scales;
    std::array<double, lanes> sums;
    for (int l = 0; l < width; ++l)
      scales[static_cast<std::size_t>(l)] = scale(first + l * step);
    add_scale_differences(a_.data(), b_.data(), b_.size(), scales.data(), sums.data());
    for (int l = 0; l < width && first + l * step <= scale_reach; ++l) {
      mean(first + l * step) = sums[static_cast<std::size_t>(l)] / static_cast<double>(b_.size());
    }
  }

  /// How far rounding can move a mean.
  double slack(double mean) const {
    const double largest = std::fabs(start_) + scale_reach / scale_steps;
    const auto count = static_cast<double>(b_.size());
    return 4 * 0x1p-53 * (count * mean + mean + 2 * largest * mean_b_);
  }

  static constexpr int width = lanes;

 private:
  static constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

  double& mean(int k) { return means_[static_cast<std::size_t>(k + scale_reach)]; }

  static double mean_magnitude(std::span<const float> values) {
    double sum = 0;
    for (const float value : values)
      sum += std::fabs(static_cast<double>(value));
    return sum / static_cast<double>(values.size());
  }

  std::span<const float> a_;
  std::span<const float> b_;
  double start_;
  double mean_b_ = mean_magnitude(b_);
  std::array<double, 2 * scale_reach + 1> means_;
};

/// The offsets of one search and how many samples each has.
struct Offsets {
  std::int64_t first;
  std::int64_t end;
  std::int64_t size_a;
  std::int64_t size_b;

  std::size_t samples(std::int64_t j) const {
    return static_cast<std::size_t>(j + size_b <= size_a ? size_b : size_a - j);
  }
};

Offsets offsets_around(int start, std::size_t size_a, std::size_t size_b) {
  const auto a = static_cast<std::int64_t>(size_a);
  const std::int64_t first = std::max<std::int64_t>(0, std::int64_t{start} - offset_reach);
  // Beyond the end of the first signal no samples are left.
  return {first, std::min(std::int64_t{start} + offset_reach, a), a,
          static_cast<std::int64_t>(size_b)};
}

/// The means at the offsets j .. j + lanes - 1, as many as there are.
std::array<double, lanes> offset_means(const double* a, const double* b, const Offsets& offsets,
                                       std::int64_t j) {
  std::array<double, lanes> means = {};
  const auto count =
      static_cast<std::size_t>(std::min<std::int64_t>(offsets.end - j, std::int64_t{lanes}));
  // The lanes that are too many read within the first signal, too.
  const std::size_t longest = offsets.samples(j);
  const std::size_t common = longest > lanes ? longest - lanes + 1 : 0;
  add_offset_differences(a + j, b, common, means.data());
  for (std::size_t l = 0; l < count; ++l) {
    const std::size_t samples = offsets.samples(j + static_cast<std::int64_t>(l));
    const double* const at = a + j + l;
    for (std::size_t i = common; i < samples; ++i)
      means[l] += std::fabs(at[i] - b[i]);
    means[l] /= static_cast<double>(samples);
  }
  return means;
}

std::vector<double> scaled(std::span<const float> values, double scale) {
  std::vector<double> result(values.size());
  std::transform(values.begin(), values.end(), result.begin(),
                 [scale](float value) { return scale * static_cast<double>(value); });
  return result;
}

/// A k near the smallest mean. The mean is a convex function of the scale, so the smallest one
/// lies between the neighbours of the smallest of any selection.
int descend(ScaleMeans& means) {
  constexpr int intervals = ScaleMeans::width - 1;
  int low = -scale_reach;
  int high = scale_reach;
  for (;;) {
    const int step = (high - low + intervals - 1) / intervals;
    means.compute(low, step);
    int best = low;
    for (int k = low; k <= high; k += step) {
      if (means.at(k) < means.at(best)) best = k;
    }
    if (step == 1) return best;
    low = std::max(best - step, -scale_reach);
    high = std::min(best + step, scale_reach);
  }
}

}  // namespace

double normalise(std::span<float> values) {
  double sum = 0;
  for (const float value : values)
    sum += std::fabs(static_cast<double>(value));
  const double mean = sum / static_cast<double>(values.size());
  for (float& value : values)
    value = static_cast<float>(static_cast<double>(value) / mean);
  return mean;
}

std::optional<OffsetMatch> best_offset(std::span<const float> a, std::span<const float> b,
                                       double scale, int start) {
  const Offsets offsets = offsets_around(start, a.size(), b.size());
  if (offsets.first >= offsets.end) return std::nullopt;
  const std::vector<double> values_a = scaled(a, 1);
  const std::vector<double> values_b = scaled(b, scale);
  OffsetMatch best = {-1, worst_mean, offsets.samples(offsets.end - 1)};
  for (std::int64_t j = offsets.first; j < offsets.end; j += lanes) {
    tell_done(static_cast<double>(j - offsets.first) /
              static_cast<double>(offsets.end - offsets.first));
    const auto means = offset_means(values_a.data(), values_b.data(), offsets, j);
    for (std::int64_t l = 0; l < std::min<std::int64_t>(lanes, offsets.end - j); ++l) {
      const double mean = means[static_cast<std::size_t>(l)];
      if (mean < best.mean) {
        best.mean = mean;
        best.offset = static_cast<int>(j + l);
      }
    }
  }
  if (best.offset < 0) return std::nullopt;
  return best;
}

ScaleMatch best_scale(std::span<const float> a, std::span<const float> b, double start) {
  ScaleMeans means(a, b, start);
  int low = descend(means);
  int high = low;
  double smallest = means.at(low);
  // Rounding may hide where the smallest one is: look on while it could still be further away.
  for (bool moved = true; moved;) {
    moved = false;
    if (low > -scale_reach && means.at(low) <= smallest + means.slack(smallest)) {
      smallest = std::min(smallest, means.at(--low));
      moved = true;
    }
    if (high < scale_reach && means.at(high) <= smallest + means.slack(smallest)) {
      smallest = std::min(smallest, means.at(++high));
      moved = true;
    }
  }
  while (means.at(low) != smallest)
    ++low;
  return {means.scale(low), smallest};
}

}  // namespace torve
