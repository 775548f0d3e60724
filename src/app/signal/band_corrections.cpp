#include "app/signal/band_corrections.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = BandCorrections::lanes;
constexpr double slack = 0x1p-12;
constexpr double vanished_single = 0x1p-129;
constexpr double margin = 1.01;  // for the roundings of the bound
// A thousandth of what text shows.
constexpr double negligible = 1e-9;

/// The samples of one call and how far they are.
struct Samples {
  Divisor k;
  alignas(64) double turn[lanes];         // 2 x 3.14159 x t
  alignas(64) double turn_excess[lanes];  // what its rounding added
  alignas(64) double one_sine[lanes];     // the phasor of one bin
  alignas(64) double one_cosine[lanes];
  alignas(64) double corrections[lanes];  // times K
  alignas(64) double sums[lanes];
  alignas(64) double additions[lanes];  // what the stated additions err by
};

using Bins = BandCorrections::Bins;

TORVE_CLONES void set_phasors(Samples& samples) {
  for (int l = 0; l < lanes; ++l) {
    const SineCosine w = sine_cosine(samples.turn[l] / samples.k.value);
    samples.one_sine[l] = w.sine;
    samples.one_cosine[l] = w.cosine;
  }
}

void prepare(Samples& samples, int size, std::span<const int> times, double offset) {
  constexpr SplitFactor two_pi = split_factor(2 * short_pi, 17);
  samples.k = divisor(size);
  for (std::size_t l = 0; l < lanes; ++l) {
    const double t = times[std::min(l, times.size() - 1)];
    samples.turn[l] = two_pi.whole * t;
    samples.turn_excess[l] = (samples.turn[l] - two_pi.upper * t) - two_pi.lower * t;
    samples.corrections[l] = samples.additions[l] = 0;
    samples.sums[l] = offset;
  }
  set_phasors(samples);
}

template <bool fused>
TORVE_INLINE double scaled_excess(double bin, double turn, const Divisor& k) {
  if constexpr (fused) return fused_angle_excess(bin, turn, k);
  // 36 bits of the factor times 17 of a bin number are exact.
  return angle_excess(bin, split_factor(turn, 17), k) * k.value;
}

/// Adds a block's sums; unsure: how far off those before are at most.
TORVE_INLINE void add_sums(Samples& samples, const Bins& bins, const float* sums, double unsure) {
  for (int l = 0; l < lanes; ++l) {
    const double before = samples.sums[l];
    const double behind = before + static_cast<double>(sums[l]);
    const double largest = std::max(std::fabs(before), std::fabs(behind)) + 0.5 * bins.sum + unsure;
    samples.additions[l] += bins.count * half_ulp(largest * margin);
    samples.sums[l] = behind;
  }
}

/// Passes a block over.
TORVE_CLONES void leave_out(Samples& samples, const Bins& bins, double unsure) {
  constexpr float nothing[lanes] = {};
  add_sums(samples, bins, nothing, unsure);
}

/// Adds a block.
template <bool fused>
TORVE_INLINE void turn_and_add(Samples& samples, const Bins& bins, double unsure) {
  const Divisor k = samples.k;
  double turn_excess[lanes];
  double turn[lanes];
  float twice[lanes];
  float sine[lanes];
  float cosine[lanes];
  float last_sine[lanes];
  float last_cosine[lanes];
  float corrections[lanes] = {};
  float sums[lanes] = {};
  for (int l = 0; l < lanes; ++l) {
    turn[l] = samples.turn[l];
    turn_excess[l] = samples.turn_excess[l];
    const SineCosine one = {samples.one_sine[l], samples.one_cosine[l]};
    const SineCosine now = sine_cosine(bins.first * turn[l] / k.value);
    const SineCosine last = turned(now, {-one.sine, one.cosine});
    twice[l] = static_cast<float>(2 * one.cosine);
    sine[l] = static_cast<float>(now.sine);
    cosine[l] = static_cast<float>(now.cosine);
    last_sine[l] = static_cast<float>(last.sine);
    last_cosine[l] = static_cast<float>(last.cosine);
  }
  for (int r = 0; r < bins.count; ++r) {
    const double bin = bins.first + r;
    const float a = bins.a[r];
    const float b = bins.b[r];
    float excess[lanes];
    for (int l = 0; l < lanes; ++l) {
      excess[l] = static_cast<float>(
          product_sum<fused>(turn_excess[l], bin, scaled_excess<fused>(bin, turn[l], k)));
    }
    for (int l = 0; l < lanes; ++l) {
      const float c = cosine[l];
      const float s = sine[l];
      const float change = product_sum<fused>(b, c, -(a * s));
      corrections[l] = product_sum<fused>(excess[l], change, corrections[l]);
      sums[l] = product_sum<fused>(b, s, product_sum<fused>(a, c, sums[l]));
      cosine[l] = product_sum<fused>(twice[l], c, -last_cosine[l]);
      sine[l] = product_sum<fused>(twice[l], s, -last_sine[l]);
      last_cosine[l] = c;
      last_sine[l] = s;
    }
  }
  for (int l = 0; l < lanes; ++l) {
    samples.corrections[l] += static_cast<double>(corrections[l]);
  }
  add_sums(samples, bins, sums, unsure);
}

TORVE_CLONES void add_turning(Samples& samples, const Bins& bins, double unsure) {
  turn_and_add<false>(samples, bins, unsure);
}

TORVE_FUSED_CLONES void add_turning_fused(Samples& samples, const Bins& bins, double unsure) {
  turn_and_add<true>(samples, bins, unsure);
}

/// At most what the roundings of a bin's angles are, for the samples 0 .. size.
double angle_rounding(int bin, int size) {
  constexpr double slightly = 1 + 0x1p-50;
  const double turn = 2 * short_pi * size * slightly;
  const double product = turn * bin * slightly;
  return ((half_ulp(turn) * bin + half_ulp(product)) / size + half_ulp(product / size * slightly)) *
         slightly;
}

}  // namespace

BandCorrections::BandCorrections(const BandTerms& terms)
    : size_(terms.size), offset_(terms.offset) {
  std::vector<double> angle_errors;
  for (const BinRange& range : terms.ranges) {
    for (int first = range.first; first <= range.last; first += block) {
      Bins bins = {.first = first, .count = std::min(block, range.last - first + 1)};
      for (int r = 0; r < bins.count; ++r) {
        const auto i = static_cast<std::size_t>(first + r);
        bins.sum += std::hypot(terms.a[i], terms.b[i]);
        bins.a[r] = static_cast<float>(terms.a[i]);
        bins.b[r] = static_cast<float>(terms.b[i]);
      }
      if (bins.sum == 0) continue;
      angle_errors.push_back(bins.sum * angle_rounding(first + block, size_));
      bins_.push_back(bins);
    }
  }
  std::vector<std::size_t> lightest(bins_.size());
  std::iota(lightest.begin(), lightest.end(), 0U);
  std::ranges::sort(lightest, {}, [&](std::size_t i) { return angle_errors[i]; });
  for (const std::size_t i : lightest) {
    if (left_out_ + angle_errors[i] > negligible) break;
    left_out_ += angle_errors[i];
    bins_[i].left_out = true;
  }
}

void BandCorrections::correct(std::span<const int> times, std::span<BandEstimate> estimates) const {
  static Samples samples;
  const auto add = fused_operations() ? add_turning_fused : add_turning;
  prepare(samples, size_, times, offset_);
  double unsure = 0;
  for (const Bins& bins : bins_) {
    unsure += (bins.left_out ? 1 : slack) * bins.sum;
    (bins.left_out ? leave_out : add)(samples, bins, unsure);
  }
  for (std::size_t l = 0; l < estimates.size(); ++l) {
    BandEstimate& estimate = estimates[l];
    estimate.value += samples.corrections[l] / size_;
    estimate.error += margin * (slack * estimate.angle_error + left_out_) + vanished_single +
                      0x1p-52 * std::fabs(estimate.value);
    estimate.angle_error = 0;
    estimate.addition_error = margin * samples.additions[l];
  }
}

}  // namespace torve
