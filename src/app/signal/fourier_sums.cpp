#include "app/signal/fourier_sums.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/signal/clones.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;
// Samples between two settings of a phasor: setting costs as much as eight turns, and the table of
// turns should stay in the nearest cache.
constexpr int block = 64;

// 31 bits of p times 22 of 3.14159 are exact.
constexpr SplitFactor turn = split_factor(short_pi, 31);

/// What the bins of one call have in common, and how far they are.
struct Bins {
  Divisor k;
  alignas(64) double step[lanes];  // 2 j
  alignas(64) double cosines[lanes];
  alignas(64) double sines[lanes];
  alignas(64) double turn_sines[block][lanes];    // of r steps
  alignas(64) double turn_cosines[block][lanes];  // of r steps
};

TORVE_CLONES void prepare(Bins& bins, int size, int first_bin) {
  bins.k = {static_cast<double>(size), 1.0 / size};
  const Divisor k = bins.k;
  for (int l = 0; l < lanes; ++l) {
    bins.step[l] = 2.0 * (first_bin + l);
    bins.cosines[l] = 0;
    bins.sines[l] = 0;
  }
  for (int r = 0; r < block; ++r) {
    for (int l = 0; l < lanes; ++l) {
      const SineCosine w = true_sine_cosine(r * bins.step[l], turn, k);
      bins.turn_sines[r][l] = w.sine;
      bins.turn_cosines[r][l] = w.cosine;
    }
  }
}

/// Adds `count` samples; p[l] is the first product of each bin and does not wrap among them.
TORVE_CLONES void add_turning(Bins& bins, const float* x, int count, const std::int32_t* p) {
  const Divisor k = bins.k;
  double product[lanes];
  double start_sine[lanes];
  double start_cosine[lanes];
  double cosines[lanes];
  double sines[lanes];
  for (int l = 0; l < lanes; ++l) {
    product[l] = p[l];
    const SineCosine z = true_sine_cosine(product[l], turn, k);
    start_sine[l] = z.sine;
    start_cosine[l] = z.cosine;
    cosines[l] = bins.cosines[l];
    sines[l] = bins.sines[l];
  }
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    for (int l = 0; l < lanes; ++l) {
      const SineCosine z = {start_sine[l], start_cosine[l]};
      const SineCosine w = {bins.turn_sines[r][l], bins.turn_cosines[r][l]};
      const SineCosine at = moved(turned(z, w), angle_excess(product[l], turn, k));
      cosines[l] += value * at.cosine;
      sines[l] += value * at.sine;
      product[l] += bins.step[l];
    }
  }
  for (int l = 0; l < lanes; ++l) {
    bins.cosines[l] = cosines[l];
    bins.sines[l] = sines[l];
  }
}

/// The same for products that may wrap.
TORVE_CLONES void add_wrapping(Bins& bins, const float* x, int count, const std::uint32_t* first,
                               const std::uint32_t* step) {
  const double k = bins.k.value;
  alignas(64) std::uint32_t p[lanes];
  for (int l = 0; l < lanes; ++l)
    p[l] = first[l];
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    for (int l = 0; l < lanes; ++l) {
      const SineCosine at = sine_cosine(static_cast<std::int32_t>(p[l]) * short_pi / k);
      bins.cosines[l] += value * at.cosine;
      bins.sines[l] += value * at.sine;
      p[l] += step[l];
    }
  }
}

}  // namespace

FourierSums plain_fourier_sums(std::span<const float> x, int bin) {
  const int size = static_cast<int>(x.size());
  FourierSums sums = {};
  for (int i = 0; i < size; ++i) {
    const double value = static_cast<double>(x[static_cast<std::size_t>(i)]);
    const double angle = wrapped_product(bin, i) * short_pi / size;
    sums.cosines += value * std::cos(angle);
    sums.sines += value * std::sin(angle);
  }
  return sums;
}

double fourier_sum_tolerance(std::span<const float> x) {
  double squares = 0;
  for (const float value : x)
    squares += static_cast<double>(value) * static_cast<double>(value);
  return 0x1p-53 * std::sqrt(static_cast<double>(x.size()) * squares);
}

void fourier_sums(std::span<const float> x, int first_bin, std::span<FourierSums> sums) {
  const int size = static_cast<int>(x.size());
  static thread_local Bins bins;
  prepare(bins, size, first_bin);
  std::uint32_t step[lanes];
  std::uint32_t p[lanes] = {};
  for (int l = 0; l < lanes; ++l)
    step[l] = 2U * static_cast<std::uint32_t>(first_bin + l);
  for (int i = 0; i < size; i += block) {
    const int count = std::min(block, size - i);
    std::int32_t signed_p[lanes];
    bool wraps = false;
    for (int l = 0; l < lanes; ++l) {
      signed_p[l] = static_cast<std::int32_t>(p[l]);
      const std::int64_t last =
          signed_p[l] + std::int64_t{count - 1} * static_cast<std::int64_t>(step[l]);
      wraps |= last > std::numeric_limits<std::int32_t>::max();
    }
    const float* const values = x.data() + i;
    if (wraps) {
      add_wrapping(bins, values, count, p, step);
    } else {
      add_turning(bins, values, count, signed_p);
    }
    for (int l = 0; l < lanes; ++l)
      p[l] += static_cast<std::uint32_t>(count) * step[l];
  }
  for (std::size_t l = 0; l < sums.size(); ++l)
    sums[l] = {bins.cosines[l], bins.sines[l]};
}

}  // namespace torve
