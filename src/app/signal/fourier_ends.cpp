// The ends of Fourier sums. An addend is x c with a cosine or sine c that is not the library's one,
// and both ends of the sum are carried along: x c less something and x c plus something.
//
// How much (u = 2^-53, the largest error of a rounding to nearest, relative to the result; where
// the result is at most 1 that is u/2 below 1): the library's c is within a unit in the last place,
// u. Ours is a component of a product of two phasors. Each comes out of sine_cosine (0.8 u) and was
// moved (u/2): 1.3 u a component, 1.9 u in length. Their product errs by 1.5 u a component (u for
// the products, u/2 for their sum), 2.2 u in length, and moving it by u/2, 0.8 u. Together 6.8 u.
// The stated product, ours, and the subtraction from it are rounded: 3 u |x c|. 6.8 + 1 + 3 = 10.8.
#include <algorithm>
#include <cmath>
#include <limits>

#include "app/signal/clones.hpp"
#include "app/signal/fourier_lanes.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;
constexpr double slack = 11 * 0x1p-53;
// Samples between two settings of a phasor: setting costs as much as eight turns, and the table of
// turns should stay in the nearest cache.
constexpr int block = 64;

/// What the bins of one call have in common, and how far they are.
struct Bins {
  Divisor k;
  alignas(64) double step[lanes];  // 2 j
  FourierLanes low;
  FourierLanes high;
  alignas(64) double turn_sines[block][lanes];    // of r steps
  alignas(64) double turn_cosines[block][lanes];  // of r steps
};

TORVE_CLONES void prepare(Bins& bins, int size, const std::uint32_t* step) {
  bins.k = divisor(size);
  const Divisor k = bins.k;
  for (int l = 0; l < lanes; ++l)
    bins.step[l] = static_cast<double>(static_cast<std::int32_t>(step[l]));
  bins.low = bins.high = {};
  for (int r = 0; r < block; ++r) {
    for (int l = 0; l < lanes; ++l) {
      const SineCosine w = true_sine_cosine(r * bins.step[l], fourier_turn, k);
      bins.turn_sines[r][l] = w.sine;
      bins.turn_cosines[r][l] = w.cosine;
    }
  }
}

/// Adds `count` samples; p[l] is the first product of each bin and does not wrap among them.
template <bool fused>
TORVE_INLINE void turn_and_add(Bins& bins, const float* x, int count, const std::int32_t* p) {
  const Divisor k = bins.k;
  double product[lanes];
  double start_sine[lanes];
  double start_cosine[lanes];
  FourierLanes low = bins.low;
  FourierLanes high = bins.high;
  for (int l = 0; l < lanes; ++l) {
    product[l] = p[l];
    const SineCosine z = true_sine_cosine(product[l], fourier_turn, k);
    start_sine[l] = z.sine;
    start_cosine[l] = z.cosine;
  }
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    const double less = std::fabs(value) * slack;
    for (int l = 0; l < lanes; ++l) {
      const SineCosine z = {start_sine[l], start_cosine[l]};
      const SineCosine w = {bins.turn_sines[r][l], bins.turn_cosines[r][l]};
      const SineCosine at =
          moved<fused>(turned<fused>(z, w), excess_of<fused>(product[l], fourier_turn, k));
      low.cosines[l] += product_sum<fused>(value, at.cosine, -less);
      high.cosines[l] += product_sum<fused>(value, at.cosine, less);
      low.sines[l] += product_sum<fused>(value, at.sine, -less);
      high.sines[l] += product_sum<fused>(value, at.sine, less);
      product[l] += bins.step[l];
    }
  }
  bins.low = low;
  bins.high = high;
}

TORVE_CLONES void add_turning(Bins& bins, const float* x, int count, const std::int32_t* p) {
  turn_and_add<false>(bins, x, count, p);
}

TORVE_FUSED_CLONES void add_turning_fused(Bins& bins, const float* x, int count,
                                          const std::int32_t* p) {
  turn_and_add<true>(bins, x, count, p);
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
    const double less = std::fabs(value) * slack;
    for (int l = 0; l < lanes; ++l) {
      const SineCosine at = sine_cosine(static_cast<std::int32_t>(p[l]) * short_pi / k);
      bins.low.cosines[l] += value * at.cosine - less;
      bins.high.cosines[l] += value * at.cosine + less;
      bins.low.sines[l] += value * at.sine - less;
      bins.high.sines[l] += value * at.sine + less;
      p[l] += step[l];
    }
  }
}

}  // namespace

void fourier_sum_ends(std::span<const float> x, std::span<const int> bins,
                      std::span<FourierEnds> ends) {
  const int size = static_cast<int>(x.size());
  static Bins tile;
  const bool fused = fused_operations();
  std::uint32_t step[lanes] = {};
  std::uint32_t p[lanes] = {};
  for (std::size_t l = 0; l < bins.size(); ++l)
    step[l] = 2U * static_cast<std::uint32_t>(bins[l]);
  prepare(tile, size, step);
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
      add_wrapping(tile, values, count, p, step);
    } else if (fused) {
      add_turning_fused(tile, values, count, signed_p);
    } else {
      add_turning(tile, values, count, signed_p);
    }
    for (int l = 0; l < lanes; ++l)
      p[l] += static_cast<std::uint32_t>(count) * step[l];
  }
  for (std::size_t l = 0; l < ends.size(); ++l) {
    ends[l] = {{tile.low.cosines[l], tile.low.sines[l]},
               {tile.high.cosines[l], tile.high.sines[l]}};
  }
}

}  // namespace torve
