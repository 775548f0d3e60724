// The ends of band sums. An addend is A c + B s with a cosine and a sine that are not the
// library's, A = 2 a 44100 / K and B likewise; both ends of the sum are carried along, the addend
// less something and the addend plus something.
//
// How much (u = 2^-53, the largest error of a rounding to nearest, relative to the result; where
// the result is at most 1 that is u/2 below 1), in units of R = |(A, B)|: phasors of sine_cosine
// are within 0.8 u a component, moved ones within 1.3 u, 1.9 u in length. A turn is the product of
// two, which adds 1.5 u a component, 2.2 u in length: 6 u. The product of a start and a turn,
// moved: 1.9 u
// + 6 u + 2.2 u + 0.8 u = 10.9 u. The library's sine and cosine: u each, 1.5 u in length. A and B
// are rounded twice, their products once, the sum once: 4 u. The stated term: products, sum,
// product and quotient, 4 u. The subtraction: u. Together 21.4 u.
#include <algorithm>
#include <cmath>

#include "app/signal/band_bins.hpp"
#include "app/signal/clones.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = BandSums::lanes;
constexpr double slack = 22 * 0x1p-53;
constexpr int block = 64;       // bins between two settings of a phasor
constexpr int direct_step = 8;  // turns in between are the product of two

/// The samples of one call and how far they are.
struct Samples {
  Divisor k;
  alignas(64) SplitFactor turn[lanes];  // 2 x 3.14159 x t
  alignas(64) double low[lanes];
  alignas(64) double high[lanes];
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

void prepare(Samples& samples, int size, std::span<const int> times, double offset) {
  samples.k = divisor(size);
  for (std::size_t l = 0; l < lanes; ++l) {
    // 36 bits of the factor times 17 of a bin number are exact.
    samples.turn[l] = split_factor(2 * short_pi * times[std::min(l, times.size() - 1)], 17);
    samples.low[l] = samples.high[l] = offset;
  }
  for (int r = 0; r < block; ++r) {
    if (r < direct_step || r % direct_step == 0) {
      set_turns(samples, r);
    } else {
      combine_turns(samples, r);
    }
  }
}

/// The scaled coefficients of a band.
struct Bins {
  const double* a;
  const double* b;
};

/// Adds the bins first .. first + count - 1, at most a block.
template <bool fused>
TORVE_INLINE void turn_and_add(Samples& samples, const Bins& bins, int first, int count) {
  const Divisor k = samples.k;
  SplitFactor turn[lanes];
  double start_sine[lanes];
  double start_cosine[lanes];
  double low[lanes];
  double high[lanes];
  for (int l = 0; l < lanes; ++l) {
    turn[l] = samples.turn[l];
    low[l] = samples.low[l];
    high[l] = samples.high[l];
    const SineCosine z = true_sine_cosine(first, turn[l], k);
    start_sine[l] = z.sine;
    start_cosine[l] = z.cosine;
  }
  for (int r = 0; r < count; ++r) {
    const double bin = first + r;
    const double factor_a = bins.a[first + r];
    const double factor_b = bins.b[first + r];
    const double less = slack * std::sqrt(factor_a * factor_a + factor_b * factor_b);
    for (int l = 0; l < lanes; ++l) {
      const SineCosine z = {start_sine[l], start_cosine[l]};
      const SineCosine w = {samples.turn_sines[r][l], samples.turn_cosines[r][l]};
      const SineCosine at = moved<fused>(turned<fused>(z, w), excess_of<fused>(bin, turn[l], k));
      const double term = product_sum<fused>(factor_a, at.cosine, factor_b * at.sine);
      low[l] += term - less;
      high[l] += term + less;
    }
  }
  for (int l = 0; l < lanes; ++l) {
    samples.low[l] = low[l];
    samples.high[l] = high[l];
  }
}

TORVE_CLONES void add_bins(Samples& samples, const Bins& bins, int first, int count) {
  turn_and_add<false>(samples, bins, first, count);
}

TORVE_FUSED_CLONES void add_bins_fused(Samples& samples, const Bins& bins, int first, int count) {
  turn_and_add<true>(samples, bins, first, count);
}

}  // namespace

void BandSums::ends(std::span<const int> times, std::span<Ends> ends) const {
  static Samples samples;
  prepare(samples, size_, times, offset_);
  const auto add = fused_operations() ? add_bins_fused : add_bins;
  const Bins bins = {scaled_a_.data(), scaled_b_.data()};
  for_bins(block, [&](int first, int count) { add(samples, bins, first, count); });
  for (std::size_t l = 0; l < ends.size(); ++l)
    ends[l] = {samples.low[l], samples.high[l]};
}

}  // namespace torve
