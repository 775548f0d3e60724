#include "app/signal/fourier_corrections.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <new>
#include <numeric>

#include "app/signal/clones.hpp"
#include "app/signal/fourier_lanes.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;
constexpr int group = FourierCorrections::group;
constexpr double slack = 0x1p-10;
constexpr double vanished_single = 0x1p-129;
constexpr double margin = 1.01;  // for the roundings of the bound
// From one of so many blocks on it makes up for the wider bound to leave them out.
constexpr std::size_t worth_leaving_out = 8;
constexpr std::size_t blocks_at_once = 8;  // that a bound of angles takes together
constexpr double largest_product = 0x1p31;

/// What the bins of one call have in common, and how far they are.
struct Bins {
  Divisor k;
  alignas(64) double step[lanes];      // 2 j
  alignas(64) double one_sine[lanes];  // the phasor of a step
  alignas(64) double one_cosine[lanes];
  alignas(64) double product[lanes];    // of the first sample of a block
  FourierLanes corrections;             // times K
  FourierLanes before;                  // sums of x before the samples that were gone through
  alignas(64) double additions[lanes];  // what the stated additions err by
};

/// Samples of a block: the sums of |x| of their groups, and how far off the sums before are.
struct Samples {
  const float* x;
  int count;
  const double* sizes;
  double unsure;
};

/// K times the excess of an angle.
template <bool fused>
TORVE_INLINE double scaled_excess(double product, const Divisor& k) {
  if constexpr (fused) return fused_angle_excess(product, fourier_turn.whole, k);
  return angle_excess(product, fourier_turn, k) * k.value;
}

/// Takes the sums of `count` samples, whose sizes sum up to `size`, from those before.
TORVE_INLINE void take_sums(Bins& bins, const float* cosines, const float* sines, int count,
                            double size, double unsure) {
  for (int l = 0; l < lanes; ++l) {
    const double cosine = bins.before.cosines[l] - static_cast<double>(cosines[l]);
    const double sine = bins.before.sines[l] - static_cast<double>(sines[l]);
    const double behind =
        std::max(std::fabs(bins.before.cosines[l]), std::fabs(bins.before.sines[l]));
    const double before = std::max(std::fabs(cosine), std::fabs(sine));
    const double largest = std::max(before, behind) + 0.5 * size + unsure;
    bins.additions[l] += count * half_ulp(largest * margin);
    bins.before.cosines[l] = cosine;
    bins.before.sines[l] = sine;
  }
}

/// The phasors of a sample and of the next one, in single precision.
struct Phasors {
  float sine[lanes];
  float cosine[lanes];
  float next_sine[lanes];
  float next_cosine[lanes];
};

TORVE_INLINE void set_phasors(const Bins& bins, const double* product, Phasors& phasors) {
  for (int l = 0; l < lanes; ++l) {
    const SineCosine one = {bins.one_sine[l], bins.one_cosine[l]};
    const SineCosine now = sine_cosine(product[l] * short_pi / bins.k.value);
    const SineCosine next = turned(now, one);
    phasors.sine[l] = static_cast<float>(now.sine);
    phasors.cosine[l] = static_cast<float>(now.cosine);
    phasors.next_sine[l] = static_cast<float>(next.sine);
    phasors.next_cosine[l] = static_cast<float>(next.cosine);
  }
}

/// Goes through a block from bins.product on, of products that do not wrap, last sample first.
template <bool fused, bool with_angles>
TORVE_INLINE void turn_back(Bins& bins, const Samples& samples) {
  const Divisor k = bins.k;
  double product[lanes];
  float twice[lanes];
  Phasors at;
  float cosine_corrections[lanes] = {};
  float sine_corrections[lanes] = {};
  for (int l = 0; l < lanes; ++l) {
    product[l] = bins.product[l] + (samples.count - 1) * bins.step[l];
    twice[l] = static_cast<float>(2 * bins.one_cosine[l]);
  }
  set_phasors(bins, product, at);
  for (int end = samples.count; end > 0;) {
    const int first = (end - 1) / group * group;
    float cosine_sums[lanes] = {};
    float sine_sums[lanes] = {};
    for (int r = end - 1; r >= first; --r) {
      const float value = samples.x[r];
      float excess[lanes];
      if constexpr (with_angles) {
        for (int l = 0; l < lanes; ++l) {
          excess[l] = static_cast<float>(scaled_excess<fused>(product[l], k)) * value;
          product[l] -= bins.step[l];
        }
      }
      for (int l = 0; l < lanes; ++l) {
        const float c = at.cosine[l];
        const float s = at.sine[l];
        if constexpr (with_angles) {
          cosine_corrections[l] = product_sum<fused>(-excess[l], s, cosine_corrections[l]);
          sine_corrections[l] = product_sum<fused>(excess[l], c, sine_corrections[l]);
        }
        cosine_sums[l] = product_sum<fused>(value, c, cosine_sums[l]);
        sine_sums[l] = product_sum<fused>(value, s, sine_sums[l]);
        at.cosine[l] = product_sum<fused>(twice[l], c, -at.next_cosine[l]);
        at.sine[l] = product_sum<fused>(twice[l], s, -at.next_sine[l]);
        at.next_cosine[l] = c;
        at.next_sine[l] = s;
      }
    }
    take_sums(bins, cosine_sums, sine_sums, end - first, samples.sizes[first / group],
              samples.unsure);
    end = first;
  }
  for (int l = 0; l < lanes; ++l) {
    bins.corrections.cosines[l] += static_cast<double>(cosine_corrections[l]);
    bins.corrections.sines[l] += static_cast<double>(sine_corrections[l]);
  }
}

TORVE_CLONES void go_back(Bins& bins, const Samples& samples) {
  turn_back<false, true>(bins, samples);
}

TORVE_FUSED_CLONES void go_back_fused(Bins& bins, const Samples& samples) {
  turn_back<true, true>(bins, samples);
}

/// The same without what the roundings of the angles add.
TORVE_CLONES void go_back_lightly(Bins& bins, const Samples& samples) {
  turn_back<false, false>(bins, samples);
}

TORVE_FUSED_CLONES void go_back_lightly_fused(Bins& bins, const Samples& samples) {
  turn_back<true, false>(bins, samples);
}

/// The same for one sample, whatever its product.
TORVE_CLONES void take_one(Bins& bins, const Samples& samples) {
  const Divisor k = bins.k;
  const double value = static_cast<double>(samples.x[0]);
  float cosines[lanes];
  float sines[lanes];
  for (int l = 0; l < lanes; ++l) {
    const SineCosine at = sine_cosine(bins.product[l] * short_pi / k.value);
    const double excess = scaled_excess<false>(bins.product[l], k) * value;
    bins.corrections.cosines[l] -= excess * at.sine;
    bins.corrections.sines[l] += excess * at.cosine;
    cosines[l] = static_cast<float>(value * at.cosine);
    sines[l] = static_cast<float>(value * at.sine);
  }
  take_sums(bins, cosines, sines, 1, std::fabs(value), samples.unsure);
}

/// The products 2ji of some bins, as they wrap.
struct Products {
  std::array<std::uint32_t, lanes> step = {};

  explicit Products(std::span<const int> bins) {
    for (std::size_t l = 0; l < bins.size(); ++l)
      step[l] = 2U * static_cast<std::uint32_t>(bins[l]);
  }
  void set(Bins& bins, int i) const {
    for (std::size_t l = 0; l < lanes; ++l)
      bins.product[l] = static_cast<std::int32_t>(step[l] * static_cast<std::uint32_t>(i));
  }
  /// Whether one wraps within `count` samples from the bins' present products on.
  [[nodiscard]] static bool wrap(const Bins& bins, int count) {
    bool wraps = false;
    for (std::size_t l = 0; l < lanes; ++l)
      wraps |= bins.product[l] + (count - 1) * bins.step[l] >= largest_product;
    return wraps;
  }
};

TORVE_CLONES void prepare(Bins& bins, int size, const std::uint32_t* step) {
  bins.k = divisor(size);
  for (int l = 0; l < lanes; ++l) {
    bins.step[l] = step[l];
    const SineCosine one = sine_cosine(step[l] * short_pi / bins.k.value);
    bins.one_sine[l] = one.sine;
    bins.one_cosine[l] = one.cosine;
  }
  bins.corrections = {};
}

/// What the roundings of an angle of at most this product are at most.
double angle_rounding(double product, int size) {
  constexpr double slightly = 1 + 0x1p-50;
  const double turned = std::min(product, largest_product) * short_pi * slightly;
  return (half_ulp(turned) / size + half_ulp(turned / size * slightly)) * slightly;
}

}  // namespace

FourierEnds ends_of(const FourierEstimate& estimate) {
  const FourierSums& sums = estimate.sums;
  const double error = estimate.error + estimate.angle_error + estimate.addition_error;
  return {{sums.cosines - error, sums.sines - error}, {sums.cosines + error, sums.sines + error}};
}

CorrectedBin::CorrectedBin(const FourierEstimate& proposed)
    : estimate(proposed),
      before(proposed.sums),
      unsure(proposed.error + proposed.angle_error + proposed.addition_error),
      additions(0) {}

std::unique_ptr<FourierCorrections> FourierCorrections::make(std::span<const float> x) try {
  return std::make_unique<FourierCorrections>(x);
} catch (const std::bad_alloc&) {
  return nullptr;
}

FourierCorrections::FourierCorrections(std::span<const float> x) : x_(x) {
  sizes_.resize((x.size() + group - 1) / group);
  block_sizes_.resize((x.size() + block - 1) / block);
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double size = std::fabs(static_cast<double>(x[i]));
    sizes_[i / group] += size;
    block_sizes_[i / block] += size;
  }
  left_out_.resize(block_sizes_.size());
  lightest_.resize(block_sizes_.size());
  std::iota(lightest_.begin(), lightest_.end(), 0U);
  std::ranges::sort(lightest_, {},
                    [this](std::size_t b) { return block_sizes_[b] * static_cast<double>(b + 1); });
}

FourierCorrections::Range FourierCorrections::blocks_of(int part) const {
  const auto border = [this](int parts_left) {
    return block_sizes_.size() * static_cast<std::size_t>(parts_left) / parts;
  };
  return {border(parts - part - 1), border(parts - part)};
}

double FourierCorrections::angle_error(int bin, std::size_t blocks) const {
  double sum = 0;
  for (std::size_t first = 0; first < blocks; first += blocks_at_once) {
    const std::size_t end = std::min(first + blocks_at_once, blocks);
    double size = 0;
    for (std::size_t b = first; b < end; ++b)
      size += block_sizes_[b];
    const double product = 2.0 * bin * static_cast<double>(end * block);
    sum += size * angle_rounding(product, static_cast<int>(x_.size()));
  }
  return margin * sum;
}

double FourierCorrections::leave_out(const Range& range, int largest_bin, double budget) {
  std::ranges::fill(left_out_, 0);
  std::size_t count = 0;
  double sum = 0;
  for (const std::size_t b : lightest_) {
    if (b < range.first || b >= range.last) continue;
    const double product = 2.0 * largest_bin * static_cast<double>((b + 1) * block);
    const double error = block_sizes_[b] * angle_rounding(product, static_cast<int>(x_.size()));
    if (!(sum + error <= budget)) break;
    sum += error;
    left_out_[b] = 1;
    ++count;
  }
  if (count * worth_leaving_out >= range.last - range.first) return sum;
  std::ranges::fill(left_out_, 0);
  return 0;
}

void FourierCorrections::correct(int part, std::span<const int> bins,
                                 std::span<CorrectedBin> corrected) {
  static Bins tile;
  const bool fused = fused_operations();
  const int size = static_cast<int>(x_.size());
  const Range range = blocks_of(part);
  double unsure = 0;
  double budget = corrected.front().estimate.error / parts;
  for (std::size_t l = 0; l < lanes; ++l) {
    const CorrectedBin& bin = corrected[std::min(l, corrected.size() - 1)];
    tile.before.cosines[l] = bin.before.cosines;
    tile.before.sines[l] = bin.before.sines;
    tile.additions[l] = bin.additions;
    unsure = std::max(unsure, bin.unsure);
    budget = std::min(budget, bin.estimate.error / parts);
  }
  const double left_out = leave_out(range, std::ranges::max(bins), budget);
  const Products products(bins);
  prepare(tile, size, products.step.data());
  for (std::size_t b = range.last; b-- > range.first;) {
    const int i = static_cast<int>(b) * block;
    const int count = std::min(block, size - i);
    const float* const values = &x_[static_cast<std::size_t>(i)];
    unsure += slack * block_sizes_[b];
    products.set(tile, i);
    if (Products::wrap(tile, count)) {
      for (int r = count - 1; r >= 0; --r) {
        products.set(tile, i + r);
        take_one(tile, {values + r, 1, nullptr, unsure});
      }
    } else {
      const auto go = left_out_[b] != 0 ? (fused ? go_back_lightly_fused : go_back_lightly)
                                        : (fused ? go_back_fused : go_back);
      go(tile, {values, count, &sizes_[b * (block / group)], unsure});
    }
  }
  for (std::size_t l = 0; l < corrected.size(); ++l) {
    CorrectedBin& bin = corrected[l];
    bin.before = {tile.before.cosines[l], tile.before.sines[l]};
    bin.additions = tile.additions[l];
    bin.unsure = unsure;
    FourierEstimate& estimate = bin.estimate;
    estimate.sums.cosines += tile.corrections.cosines[l] / size;
    estimate.sums.sines += tile.corrections.sines[l] / size;
    estimate.error += margin * (slack * estimate.angle_error + left_out) + vanished_single +
                      0x1p-52 * (std::fabs(estimate.sums.cosines) + std::fabs(estimate.sums.sines));
    estimate.angle_error = angle_error(bins[l], range.first);
    if (range.first == 0) estimate.addition_error = margin * bin.additions;
  }
}

}  // namespace torve
