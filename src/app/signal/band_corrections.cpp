#include "app/signal/band_corrections.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "app/signal/angle_counters.hpp"
#include "app/signal/clones.hpp"
#include "app/signal/frames.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = BandCorrections::lanes;
constexpr double slack = 0x1p-16;
constexpr double vanished_single = 0x1p-129;
constexpr double margin = 1.01;  // for the roundings of the bound
// A thousandth of what text shows.
constexpr double negligible = 1e-9;

/// The samples of one call and how far they are.
struct Samples {
  Divisor k;
  alignas(64) double turn[lanes];           // 2 x 3.14159 x t
  alignas(64) double turn_excess[lanes];    // what its rounding added
  alignas(64) double step_quotient[lanes];  // the angle of one bin
  alignas(64) double step_excess[lanes];    // what it exceeds the true one by
  Frames frames;
  AngleCounters<lanes> counters;                 // at a block's first bin
  alignas(64) float counted_turn_excess[lanes];  // in their units
  alignas(64) double corrections[lanes];         // times K
  alignas(64) double sums[lanes];
  alignas(64) double additions[lanes];  // what the stated additions err by
};

using Bins = BandCorrections::Bins;

template <bool fused>
TORVE_INLINE double scaled_excess(double bin, double turn, const Divisor& k) {
  if constexpr (fused) return fused_angle_excess(bin, turn, k);
  // 36 bits of the factor times 17 of a bin number are exact.
  return angle_excess(bin, split_factor(turn, 17), k) * k.value;
}

void prepare(Samples& samples, int size, std::span<const int> times, double offset) {
  constexpr SplitFactor two_pi = split_factor(2 * short_pi, 17);
  samples.k = divisor(size);
  for (std::size_t l = 0; l < lanes; ++l) {
    const double t = times[std::min(l, times.size() - 1)];
    samples.turn[l] = two_pi.whole * t;
    samples.turn_excess[l] = (samples.turn[l] - two_pi.upper * t) - two_pi.lower * t;
    samples.step_quotient[l] = samples.turn[l] / size;
    samples.step_excess[l] = scaled_excess<false>(1, samples.turn[l], samples.k) / size;
    samples.corrections[l] = samples.additions[l] = 0;
    samples.sums[l] = offset;
  }
  make_turns(samples.frames, samples.step_quotient);
}

/// Sets the counters for a block; not 0 if a product or a quotient changes its exponent.
template <bool fused>
TORVE_INLINE std::uint64_t find_counters(Samples& samples, const Bins& bins) {
  const Divisor k = samples.k;
  const double first = bins.first;
  const double last = bins.first + bins.count - 1;
  AngleCounters<lanes>& to = samples.counters;
  std::uint64_t change = 0;
  for (int l = 0; l < lanes; ++l) {
    const double turn = samples.turn[l];
    const double product = first * turn;
    const double last_product = last * turn;
    const double angle = quotient_of<fused>(product, k);
    change |= exponents_differ(product, last_product) |
              exponents_differ(angle, quotient_of<fused>(last_product, k));
    const auto lost = static_cast<std::uint32_t>((std::bit_cast<std::uint64_t>(product) >> 52) -
                                                 (std::bit_cast<std::uint64_t>(turn) >> 52));
    const std::uint32_t shift = (31 - lost) & 31;
    const auto turn_bits = static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(turn));
    to.product[l] = (static_cast<std::uint32_t>(bins.first) * turn_bits) << shift;
    to.product_step[l] = turn_bits << shift;
    set_angles(to, l, {angle, scaled_excess<fused>(first, turn, k) * k.reciprocal},
               {samples.step_quotient[l], samples.step_excess[l]}, power_below(product), k);
    const double counted = samples.turn_excess[l] / to.scale[l];
    samples.counted_turn_excess[l] = turn == 0 ? 0 : static_cast<float>(counted);
  }
  return change;
}

TORVE_CLONES bool set_counters(Samples& samples, const Bins& bins) {
  return find_counters<false>(samples, bins) == 0;
}

TORVE_FUSED_CLONES bool set_counters_fused(Samples& samples, const Bins& bins) {
  return find_counters<true>(samples, bins) == 0;
}

/// Adds a block's sums; unsure: how far off those before are at most.
TORVE_INLINE void add_sums(Samples& samples, const Bins& bins, const double* sums, double unsure) {
  for (int l = 0; l < lanes; ++l) {
    const double before = samples.sums[l];
    const double behind = before + sums[l];
    const double largest = std::max(std::fabs(before), std::fabs(behind)) + 0.5 * bins.sum + unsure;
    samples.additions[l] += bins.count * half_ulp(largest * margin);
    samples.sums[l] = behind;
  }
}

/// Passes a block over.
TORVE_CLONES void leave_out(Samples& samples, const Bins& bins, double unsure) {
  constexpr double nothing[lanes] = {};
  add_sums(samples, bins, nothing, unsure);
}

/// Complex sums, in the frame of a block.
struct FrameSums {
  float re[lanes];
  float im[lanes];
};

/// Adds a block; counted: the roundings of its angles are.
template <bool fused, bool counted>
TORVE_INLINE void turn_and_add(Samples& samples, const Bins& bins, double unsure) {
  const Divisor k = samples.k;
  std::uint32_t product[lanes];
  std::uint32_t angle[lanes];
  FrameSums corrections = {};
  FrameSums sums = {};
  for (int l = 0; l < lanes; ++l) {
    product[l] = samples.counters.product[l];
    angle[l] = samples.counters.angle[l];
  }
  for (int r = 0; r < bins.count; ++r) {
    const double bin = bins.first + r;
    const float a = bins.a[r];
    const float b = bins.b[r];
    float excess[lanes];
    for (int l = 0; l < lanes; ++l) {
      if constexpr (counted) {
        const float of_roundings =
            counted_excess<fused>(rounded_to_even(product[l]), angle[l], samples.counters.ratio[l]);
        excess[l] = product_sum<fused>(samples.counted_turn_excess[l], static_cast<float>(bin),
                                       of_roundings);
        product[l] += samples.counters.product_step[l];
        angle[l] += samples.counters.angle_step[l];
      } else {
        excess[l] = static_cast<float>(product_sum<fused>(
            samples.turn_excess[l], bin, scaled_excess<fused>(bin, samples.turn[l], k)));
      }
    }
    for (int l = 0; l < lanes; ++l) {
      const float c = samples.frames.cosines[r][l];
      const float s = samples.frames.sines[r][l];
      const float re = product_sum<fused>(a, c, b * s);
      const float im = product_sum<fused>(a, s, -(b * c));
      sums.re[l] += re;
      sums.im[l] += im;
      corrections.re[l] = product_sum<fused>(excess[l], re, corrections.re[l]);
      corrections.im[l] = product_sum<fused>(excess[l], im, corrections.im[l]);
    }
  }
  double real_sums[lanes];
  for (int l = 0; l < lanes; ++l) {
    const double c = samples.frames.cosine[l];
    const double s = samples.frames.sine[l];
    real_sums[l] = c * static_cast<double>(sums.re[l]) - s * static_cast<double>(sums.im[l]);
    samples.corrections[l] -=
        (c * static_cast<double>(corrections.im[l]) + s * static_cast<double>(corrections.re[l])) *
        (counted ? samples.counters.scale[l] : 1);
  }
  add_sums(samples, bins, real_sums, unsure);
}

TORVE_CLONES void add_turning(Samples& samples, const Bins& bins, double unsure) {
  turn_and_add<false, false>(samples, bins, unsure);
}

TORVE_FUSED_CLONES void add_turning_fused(Samples& samples, const Bins& bins, double unsure) {
  turn_and_add<true, false>(samples, bins, unsure);
}

TORVE_CLONES void add_counting(Samples& samples, const Bins& bins, double unsure) {
  turn_and_add<false, true>(samples, bins, unsure);
}

TORVE_FUSED_CLONES void add_counting_fused(Samples& samples, const Bins& bins, double unsure) {
  turn_and_add<true, true>(samples, bins, unsure);
}

/// Sets the frames to a bin.
void set_frames(Samples& samples, int bin) {
  double angles[lanes];
  for (int l = 0; l < lanes; ++l)
    angles[l] = bin * samples.turn[l] / samples.k.value;
  set_frames(samples.frames, angles);
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
  const bool fused = fused_operations();
  prepare(samples, size_, times, offset_);
  double unsure = 0;
  int next = -1;  // the bin that the frames can be turned on to
  for (const Bins& bins : bins_) {
    unsure += (bins.left_out ? 1 : slack) * bins.sum;
    if (bins.left_out) {
      leave_out(samples, bins, unsure);
      continue;
    }
    if (bins.first == next) {
      turn_on(samples.frames);
    } else {
      set_frames(samples, bins.first);
    }
    next = bins.first + block;
    const bool counted = (fused ? set_counters_fused : set_counters)(samples, bins);
    const auto add = counted ? (fused ? add_counting_fused : add_counting)
                             : (fused ? add_turning_fused : add_turning);
    add(samples, bins, unsure);
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
