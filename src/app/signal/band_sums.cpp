#include "app/signal/band_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/clones.hpp"
#include "app/signal/trigonometry.hpp"
#include "base/number_text.hpp"

namespace torve {

namespace {

constexpr double sampling_rate = 44100;
constexpr int lanes = BandSums::lanes;
constexpr int block = 64;       // bins between two settings of a phasor
constexpr int direct_step = 8;  // turns in between are the product of two

/// The samples of one call and how far they are.
struct Samples {
  Divisor k;
  alignas(64) SplitFactor turn[lanes];  // 2 x 3.14159 x t
  alignas(64) double sums[lanes];
  alignas(64) double turn_sines[block][lanes];  // of r bins
  alignas(64) double turn_cosines[block][lanes];
};

TORVE_CLONES void set_turns(Samples& samples, int r) {
  for (int l = 0; l < lanes; ++l) {
    const SineCosine w = true_sine_cosine(r, samples.turn[l], samples.k);
    samples.turn_sines[r][l] = w.sine;
    samples.turn_cosines[r][l] = w.cosine;
  }
}

TORVE_CLONES void combine_turns(Samples& samples, int r) {
  const int large = r / direct_step * direct_step;
  const int small = r % direct_step;
  for (int l = 0; l < lanes; ++l) {
    const SineCosine w = turned({samples.turn_sines[large][l], samples.turn_cosines[large][l]},
                                {samples.turn_sines[small][l], samples.turn_cosines[small][l]});
    samples.turn_sines[r][l] = w.sine;
    samples.turn_cosines[r][l] = w.cosine;
  }
}

void prepare(Samples& samples, int size, int first_t, double offset) {
  samples.k = {static_cast<double>(size), 1.0 / size};
  for (int l = 0; l < lanes; ++l) {
    // 36 bits of the factor times 17 of a bin number are exact.
    samples.turn[l] = split_factor(2 * short_pi * (first_t + l), 17);
    samples.sums[l] = offset;
  }
  for (int r = 0; r < block; ++r) {
    if (r < direct_step || r % direct_step == 0) {
      set_turns(samples, r);
    } else {
      combine_turns(samples, r);
    }
  }
}

/// Adds the bins first .. first + count - 1, at most a block.
TORVE_CLONES void add_bins(Samples& samples, const double* a, const double* b, int first,
                           int count) {
  const Divisor k = samples.k;
  SplitFactor turn[lanes];
  double start_sine[lanes];
  double start_cosine[lanes];
  double sums[lanes];
  for (int l = 0; l < lanes; ++l) {
    turn[l] = samples.turn[l];
    sums[l] = samples.sums[l];
    const SineCosine z = true_sine_cosine(first, turn[l], k);
    start_sine[l] = z.sine;
    start_cosine[l] = z.cosine;
  }
  for (int r = 0; r < count; ++r) {
    const double bin = first + r;
    const double factor_a = a[first + r];
    const double factor_b = b[first + r];
    for (int l = 0; l < lanes; ++l) {
      const SineCosine z = {start_sine[l], start_cosine[l]};
      const SineCosine w = {samples.turn_sines[r][l], samples.turn_cosines[r][l]};
      const SineCosine at = moved(turned(z, w), angle_excess(bin, turn[l], k));
      sums[l] += factor_a * at.cosine + factor_b * at.sine;
    }
  }
  for (int l = 0; l < lanes; ++l)
    samples.sums[l] = sums[l];
}

bool all_zero(const double* values, int count) {
  return std::all_of(values, values + count, [](double value) { return value == 0; });
}

}  // namespace

BandSums::BandSums(std::span<const float> a, std::span<const float> b, int size, double offset,
                   std::array<BinRange, 2> ranges)
    : a_(a), b_(b), size_(size), offset_(offset), ranges_(ranges) {
  const auto scaled = [size](float value) {
    return 2 * static_cast<double>(value) * sampling_rate / size;
  };
  std::transform(a.begin(), a.end(), std::back_inserter(scaled_a_), scaled);
  std::transform(b.begin(), b.end(), std::back_inserter(scaled_b_), scaled);
  double squares = offset * offset;
  terms_ = 1;
  for (const BinRange& range : ranges) {
    for (int j = range.first; j <= range.last; ++j) {
      const auto i = static_cast<std::size_t>(j);
      const double square = scaled_a_[i] * scaled_a_[i] + scaled_b_[i] * scaled_b_[i];
      squares += square;
      if (square != 0) terms_ += 1;
    }
  }
  typical_ = std::sqrt(squares);
}

double BandSums::plain_value(int t) const {
  double sum = offset_;
  for (const BinRange& range : ranges_) {
    for (int j = range.first; j <= range.last; ++j) {
      const auto i = static_cast<std::size_t>(j);
      const double angle = 2 * short_pi * t * j / size_;
      sum += 2 *
             (static_cast<double>(a_[i]) * std::cos(angle) +
              static_cast<double>(b_[i]) * std::sin(angle)) *
             sampling_rate / size_;
    }
  }
  return sum;
}

void BandSums::quick_values(int first_t, std::span<double, lanes> values) const {
  static thread_local Samples samples;
  prepare(samples, size_, first_t, offset_);
  for (const BinRange& range : ranges_) {
    for (int j = range.first; j <= range.last; j += block) {
      const int count = std::min(block, range.last - j + 1);
      if (all_zero(&scaled_a_[static_cast<std::size_t>(j)], count) &&
          all_zero(&scaled_b_[static_cast<std::size_t>(j)], count)) {
        continue;
      }
      add_bins(samples, scaled_a_.data(), scaled_b_.data(), j, count);
    }
  }
  std::copy(std::begin(samples.sums), std::end(samples.sums), values.begin());
}

double BandSums::tolerance(double value) const {
  return 0x1p-52 * std::sqrt(terms_) * (typical_ + std::fabs(value));
}

void BandSums::values(int first_t, std::span<double, lanes> values) const {
  quick_values(first_t, values);
  int t = first_t;
  for (double& value : values) {
    const double error = tolerance(value);
    if (!same_fixed6(value - error, value + error)) value = plain_value(t);
    ++t;
  }
}

}  // namespace torve
