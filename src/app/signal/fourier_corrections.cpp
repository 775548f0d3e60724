// What the roundings of angles add to Fourier sums: an angle that is rounded by d adds -x d sin to
// the cosines and x d cos to the sines. d is 10^-11 at most, so that single precision serves.
//
// How far off, in terms of v = 2^-24, the largest error of a rounding in single precision, relative
// to D, the sum of |x d|: a phasor is the product of two that are rounded, 6 v; d and its product
// with x are, and the addend, 3 v; up to 128 additions in a row, 128 v. Together 137 v. What is
// beyond the first order is d / 2, far less. 2^-16 is 256 v. Products too small for single
// precision lose at most 2^-149 each; `vanished_single` is more than 2^17 times that, six times
// over.
//
// The same phasors give the partial sums every 128 samples, as well: each is within 137 v of the
// sum of |x| so far. Within a block a partial sum is the one before it and at most the sum of |x|
// in between. Each stated addition errs by 2^-53 of the partial sum that it makes, at most.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "app/signal/clones.hpp"
#include "app/signal/fourier_sums.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;
constexpr int block = 128;  // samples between two settings of a phasor, and of sums
constexpr double correction_slack = 0x1p-16;
constexpr double vanished_single = 0x1p-129;
constexpr double margin = 1.01;  // for the roundings of the bound

// 31 bits of p times 22 of 3.14159 are exact.
constexpr SplitFactor turn = split_factor(short_pi, 31);

struct Phasors {
  alignas(64) float sines[lanes];
  alignas(64) float cosines[lanes];
};

/// Cosines and sines of all lanes.
struct Sums {
  alignas(64) double cosines[lanes];
  alignas(64) double sines[lanes];
};

/// What the bins of one call have in common, and how far they are.
struct Bins {
  Divisor k;
  alignas(64) double step[lanes];  // 2 j
  Phasors turns[block];            // of r steps
  Phasors now[block];              // if products wrap, of each sample
  alignas(64) double product[block][lanes];
  Sums corrections;                 // times K
  Sums sums;                        // of x
  alignas(64) double sizes[lanes];  // bounds the sum of the sizes of all partial sums
};

TORVE_CLONES void set_phasors(const double* product, double k, Phasors& phasors) {
  for (int l = 0; l < lanes; ++l) {
    const SineCosine w = sine_cosine(product[l] * short_pi / k);
    phasors.sines[l] = static_cast<float>(w.sine);
    phasors.cosines[l] = static_cast<float>(w.cosine);
  }
}

/// K times the excess of an angle.
template <bool fused>
TORVE_INLINE double scaled_excess(double product, const Divisor& k) {
  if constexpr (fused) return fused_angle_excess(product, turn.whole, k);
  return angle_excess(product, turn, k) * k.value;
}

/// Adds `count` samples; the first products are product[0], and do not wrap among them.
template <bool fused>
TORVE_INLINE void turn_and_add(Bins& bins, const float* x, int count) {
  const Divisor k = bins.k;
  double product[lanes];
  float sine[lanes];
  float cosine[lanes];
  Phasors corrections = {};
  Phasors sums = {};
  for (int l = 0; l < lanes; ++l) {
    product[l] = bins.product[0][l];
    sine[l] = bins.now[0].sines[l];
    cosine[l] = bins.now[0].cosines[l];
  }
  for (int r = 0; r < count; ++r) {
    const Phasors& w = bins.turns[r];
    float excess[lanes];
    for (int l = 0; l < lanes; ++l) {
      excess[l] = static_cast<float>(scaled_excess<fused>(product[l], k)) * x[r];
      product[l] += bins.step[l];
    }
    for (int l = 0; l < lanes; ++l) {
      const float s = product_sum<fused>(sine[l], w.cosines[l], cosine[l] * w.sines[l]);
      const float c = product_sum<fused>(cosine[l], w.cosines[l], -(sine[l] * w.sines[l]));
      corrections.cosines[l] = product_sum<fused>(-excess[l], s, corrections.cosines[l]);
      corrections.sines[l] = product_sum<fused>(excess[l], c, corrections.sines[l]);
      sums.cosines[l] = product_sum<fused>(x[r], c, sums.cosines[l]);
      sums.sines[l] = product_sum<fused>(x[r], s, sums.sines[l]);
    }
  }
  for (int l = 0; l < lanes; ++l) {
    bins.corrections.cosines[l] += static_cast<double>(corrections.cosines[l]);
    bins.corrections.sines[l] += static_cast<double>(corrections.sines[l]);
    bins.sums.cosines[l] += static_cast<double>(sums.cosines[l]);
    bins.sums.sines[l] += static_cast<double>(sums.sines[l]);
  }
}

TORVE_CLONES void add_turning(Bins& bins, const float* x, int count) {
  turn_and_add<false>(bins, x, count);
}

TORVE_FUSED_CLONES void add_turning_fused(Bins& bins, const float* x, int count) {
  turn_and_add<true>(bins, x, count);
}

/// The same for products that may wrap: each has its phasor.
TORVE_CLONES void add_wrapping(Bins& bins, const float* x, int count) {
  const Divisor k = bins.k;
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    for (int l = 0; l < lanes; ++l) {
      const double excess = scaled_excess<false>(bins.product[r][l], k) * value;
      const auto sine = static_cast<double>(bins.now[r].sines[l]);
      const auto cosine = static_cast<double>(bins.now[r].cosines[l]);
      bins.corrections.cosines[l] -= excess * sine;
      bins.corrections.sines[l] += excess * cosine;
      bins.sums.cosines[l] += value * cosine;
      bins.sums.sines[l] += value * sine;
    }
  }
}

/// Bounds the partial sums of the `count` samples to come.
TORVE_CLONES void add_sizes(Bins& bins, const float* x, int count) {
  double between = 0;
  for (int r = 0; r < count; ++r)
    between += (count - r) * std::fabs(static_cast<double>(x[r]));
  for (int l = 0; l < lanes; ++l) {
    const double size = std::max(std::fabs(bins.sums.cosines[l]), std::fabs(bins.sums.sines[l]));
    bins.sizes[l] += count * size + between;
  }
}

void set_turns(Bins& bins) {
  for (int r = 0; r < block; ++r) {
    for (std::size_t l = 0; l < lanes; ++l)
      bins.product[0][l] = r * bins.step[l];
    set_phasors(bins.product[0], bins.k.value, bins.turns[r]);
  }
}

double sum_of_sizes(std::span<const float> x) {
  double sum = 0;
  for (const float value : x)
    sum += std::fabs(static_cast<double>(value));
  return sum;
}

/// Sets the products of `count` samples from p on, and their phasors; only the first if none wraps.
/// Returns whether one does.
bool set_products(Bins& bins, const std::array<std::uint32_t, lanes>& p,
                  const std::array<std::uint32_t, lanes>& step, int count) {
  bool wraps = false;
  for (std::size_t l = 0; l < lanes; ++l) {
    const auto first = static_cast<std::int32_t>(p[l]);
    bins.product[0][l] = first;
    wraps |= first + std::int64_t{count - 1} * step[l] > std::numeric_limits<std::int32_t>::max();
  }
  for (int r = 1; wraps && r < count; ++r) {
    for (std::size_t l = 0; l < lanes; ++l) {
      bins.product[r][l] =
          static_cast<std::int32_t>(p[l] + static_cast<std::uint32_t>(r) * step[l]);
    }
  }
  for (int r = 0; r < (wraps ? count : 1); ++r)
    set_phasors(bins.product[r], bins.k.value, bins.now[r]);
  return wraps;
}

FourierEnds ends_about(const FourierSums& sums, double error) {
  return {{sums.cosines - error, sums.sines - error}, {sums.cosines + error, sums.sines + error}};
}

}  // namespace

FourierEnds ends_of(const FourierEstimate& estimate) {
  return ends_about(estimate.sums, estimate.error + estimate.angle_error + estimate.addition_error);
}

FourierEnds ends_of(const FourierEstimate& estimate, const FourierCorrection& correction) {
  const FourierSums sums = {estimate.sums.cosines + correction.sums.cosines,
                            estimate.sums.sines + correction.sums.sines};
  const double rounding = 0x1p-52 * (std::fabs(sums.cosines) + std::fabs(sums.sines));
  return ends_about(
      sums, estimate.error + correction_slack * estimate.angle_error + rounding + vanished_single);
}

void fourier_corrections(std::span<const float> x, std::span<const int> bins,
                         std::span<FourierCorrection> corrections) {
  const int size = static_cast<int>(x.size());
  static Bins tile;
  const auto add = fused_operations() ? add_turning_fused : add_turning;
  tile.k = divisor(size);
  std::array<std::uint32_t, lanes> step = {};
  std::array<std::uint32_t, lanes> p = {};
  for (std::size_t l = 0; l < bins.size(); ++l)
    step[l] = 2U * static_cast<std::uint32_t>(bins[l]);
  for (std::size_t l = 0; l < lanes; ++l) {
    tile.step[l] = step[l];
  }
  tile.corrections = tile.sums = {};
  std::fill_n(tile.sizes, lanes, 0.0);
  set_turns(tile);
  for (int i = 0; i < size; i += block) {
    const int count = std::min(block, size - i);
    const bool wraps = set_products(tile, p, step, count);
    const float* const values = &x[static_cast<std::size_t>(i)];
    add_sizes(tile, values, count);
    (wraps ? add_wrapping : add)(tile, values, count);
    for (std::size_t l = 0; l < lanes; ++l)
      p[l] += static_cast<std::uint32_t>(count) * step[l];
  }
  const double all = sum_of_sizes(x);
  for (std::size_t l = 0; l < corrections.size(); ++l) {
    const double sizes = tile.sizes[l] + correction_slack * size * all;
    corrections[l] = {{tile.corrections.cosines[l] / size, tile.corrections.sines[l] / size},
                      margin * 0x1p-53 * sizes};
  }
}

}  // namespace torve
