#include "app/signal/backward_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = BackwardSums::lanes;
constexpr int group = 16;  // samples that are added up before they are added to the block's
constexpr double unit = 0x1p-53;
constexpr double single_unit = 0x1p-24;
constexpr double lost_in_squares = 0x1p-70;  // of a partial sum whose square is too small
constexpr double margin = 1.01;              // for the roundings of the bound
constexpr double largest_product = 0x1p31;

/// Samples of a block, and their sum of |x|.
struct Samples {
  const float* x;
  int count;
  double size;
};

/// Sums of single precision in the frame of a block.
struct FrameSums {
  float re[lanes];
  float im[lanes];
};

/// K times the excess of an angle.
template <bool fused>
TORVE_INLINE double scaled_excess(double product, const Divisor& k) {
  if constexpr (fused) return fused_angle_excess(product, fourier_turn.whole, k);
  return angle_excess(product, fourier_turn, k) * k.value;
}

/// Sets the counters for a block; not 0 if a product or a quotient changes its exponent, or a
/// product may lie in the middle between two doubles, as 3 x 2^n and 5 x 2^n do.
template <bool fused>
TORVE_INLINE std::uint64_t find_counters(BackwardSums& bins, int count) {
  constexpr auto turn_bits = static_cast<std::uint32_t>(
      static_cast<std::uint64_t>(fourier_turn.whole * 0x1p51));  // the low ones
  // A product of exponent e loses e - 1 of these.
  constexpr std::uint64_t shift_of_1 = 33 + 1023;
  const Divisor k = bins.k;
  AngleCounters<lanes>& counters = bins.counters;
  std::uint64_t change = 0;
  for (int l = 0; l < lanes; ++l) {
    const double first = bins.product[l];
    const double last = first + (count - 1) * bins.step[l];
    const double product = last * short_pi;
    const double first_product = first * short_pi;
    const double angle = quotient_of<fused>(product, k);
    const double first_angle = quotient_of<fused>(first_product, k);
    change |= exponents_differ(product, first_product) | exponents_differ(angle, first_angle) |
              may_be_between(first, last, bins.step[l], bins.inverse_step[l]);
    const std::uint64_t exponent = std::bit_cast<std::uint64_t>(product) >> 52 & 0x7ff;
    const auto shift = static_cast<std::uint32_t>(shift_of_1 - exponent) & 31;
    counters.product[l] = (whole_bits(last) * turn_bits) << shift;
    counters.product_step[l] = (whole_bits(bins.step[l]) * turn_bits) << shift;
    set_angles(counters, l, {angle, scaled_excess<fused>(last, k) * k.reciprocal},
               {bins.step_quotient[l], bins.step_excess[l]}, power_below(product), k);
  }
  return change;
}

TORVE_CLONES bool set_counters(BackwardSums& bins, int count) {
  return find_counters<false>(bins, count) == 0;
}

TORVE_FUSED_CLONES bool set_counters_fused(BackwardSums& bins, int count) {
  return find_counters<true>(bins, count) == 0;
}

/// The sums before, as they are in the frame.
TORVE_INLINE void enter_frame(const BackwardSums& bins, FrameSums& sums) {
  for (int l = 0; l < lanes; ++l) {
    const double re = bins.before.cosines[l];
    const double im = bins.before.sines[l];
    const double c = bins.frames.cosine[l];
    const double s = bins.frames.sine[l];
    sums.re[l] = static_cast<float>(c * re + s * im);
    sums.im[l] = static_cast<float>(c * im - s * re);
  }
}

/// And back; squares: those of the partial sums.
TORVE_INLINE void leave_frame(BackwardSums& bins, const FrameSums& sums, const float* squares,
                              const Samples& samples) {
  for (int l = 0; l < lanes; ++l) {
    const double re = static_cast<double>(sums.re[l]);
    const double im = static_cast<double>(sums.im[l]);
    const double c = bins.frames.cosine[l];
    const double s = bins.frames.sine[l];
    const double cosine = c * re - s * im;
    const double sine = c * im + s * re;
    const double sizes = std::sqrt(std::fabs(samples.count * static_cast<double>(squares[l])));
    const double before = std::max(std::fabs(cosine), std::fabs(sine));
    const double behind =
        std::max(std::fabs(bins.before.cosines[l]), std::fabs(bins.before.sines[l]));
    const double largest = std::max(before, behind) + 0.5 * samples.size + bins.unsure[l];
    bins.additions[l] +=
        std::min(unit * (sizes + samples.count * (bins.unsure[l] + lost_in_squares)),
                 samples.count * half_ulp(largest * margin));
    bins.unsure[l] += single_unit * (3 * sizes + 4 * samples.size);
    bins.before.cosines[l] = cosine;
    bins.before.sines[l] = sine;
  }
}

/// Adds what a block's roundings change: i times its sum, in its frame.
template <bool counted>
TORVE_INLINE void add_corrections(BackwardSums& bins, const FrameSums& sums) {
  for (int l = 0; l < lanes; ++l) {
    const double scale = counted ? bins.counters.scale[l] : 1;
    const double re = static_cast<double>(sums.re[l]) * scale;
    const double im = static_cast<double>(sums.im[l]) * scale;
    const double c = bins.frames.cosine[l];
    const double s = bins.frames.sine[l];
    bins.corrections.cosines[l] -= c * im + s * re;
    bins.corrections.sines[l] += c * re - s * im;
  }
}

/// How the roundings of a block's angles are found, if they are.
enum class Angles { none, each, counted };

/// A sample's products, and the counters if its angles are counted.
struct Place {
  double product[lanes];
  std::uint32_t counter[lanes];
  std::uint32_t angle[lanes];
};

/// What the roundings of a sample's angles are, times x, in units of add_corrections; goes on to
/// the sample before.
template <bool fused, Angles angles>
TORVE_INLINE void find_excess(const BackwardSums& bins, const Divisor& k, float x, Place& at,
                              float* excess) {
  for (int l = 0; l < lanes; ++l) {
    if constexpr (angles == Angles::each) {
      excess[l] = static_cast<float>(scaled_excess<fused>(at.product[l], k)) * x;
      at.product[l] -= bins.step[l];
    } else {
      excess[l] = counted_excess<fused>(at.counter[l], at.angle[l], bins.counters.ratio[l]) * x;
      at.counter[l] -= bins.counters.product_step[l];
      at.angle[l] -= bins.counters.angle_step[l];
    }
  }
}

/// Adds the square of a partial sum, and takes the sample's term from it.
template <bool fused>
TORVE_INLINE void take_term(const Frames& frames, int r, float x, FrameSums& sums, float* squares) {
  for (int l = 0; l < lanes; ++l) {
    squares[l] = product_sum<fused>(sums.re[l], sums.re[l], squares[l]);
    squares[l] = product_sum<fused>(sums.im[l], sums.im[l], squares[l]);
    sums.re[l] = product_sum<fused>(-x, frames.cosines[r][l], sums.re[l]);
    sums.im[l] = product_sum<fused>(-x, frames.sines[r][l], sums.im[l]);
  }
}

/// Goes through a block from bins.product on, of products that do not wrap, last sample first.
template <bool fused, Angles angles>
TORVE_INLINE void go_back_in_frame(BackwardSums& bins, const Samples& samples) {
  const Divisor k = bins.k;
  float squares[lanes] = {};
  Place place;
  FrameSums sums;
  FrameSums corrections = {};
  for (int l = 0; l < lanes; ++l) {
    place.product[l] = bins.product[l] + (samples.count - 1) * bins.step[l];
    place.counter[l] = bins.counters.product[l];
    place.angle[l] = bins.counters.angle[l];
  }
  enter_frame(bins, sums);
  for (int end = samples.count; end > 0;) {
    const int first = (end - 1) / group * group;
    FrameSums part = {};
    for (int r = end - 1; r >= first; --r) {
      const float x = samples.x[r];
      if constexpr (angles != Angles::none) {
        float excess[lanes];
        find_excess<fused, angles>(bins, k, x, place, excess);
        for (int l = 0; l < lanes; ++l) {
          part.re[l] = product_sum<fused>(excess[l], bins.frames.cosines[r][l], part.re[l]);
          part.im[l] = product_sum<fused>(excess[l], bins.frames.sines[r][l], part.im[l]);
        }
      }
      take_term<fused>(bins.frames, r, x, sums, squares);
    }
    for (int l = 0; l < lanes; ++l) {
      corrections.re[l] += part.re[l];
      corrections.im[l] += part.im[l];
    }
    end = first;
  }
  if constexpr (angles != Angles::none)
    add_corrections<angles == Angles::counted>(bins, corrections);
  leave_frame(bins, sums, squares, samples);
}

/// Goes through a block likewise; a stated addition errs by half a unit in the last place of what
/// its partial sum can be at most. No component is larger than twice its power of two.
template <bool fused>
TORVE_INLINE void add_up_units(BackwardSums& bins, const Samples& samples) {
  // Of what is turned out of the frame; and each sample of a block rounds what it is taken from.
  constexpr double frame_slack = (10 + Frames::block) * single_unit;
  float cosine[lanes];
  float sine[lanes];
  float unsure[lanes];
  FrameSums powers = {};
  FrameSums at;
  enter_frame(bins, at);
  for (int l = 0; l < lanes; ++l) {
    cosine[l] = static_cast<float>(bins.frames.cosine[l]);
    sine[l] = static_cast<float>(bins.frames.sine[l]);
    const double behind =
        std::fabs(bins.before.cosines[l]) + std::fabs(bins.before.sines[l]) + samples.size;
    unsure[l] = static_cast<float>((bins.unsure[l] + frame_slack * behind) * margin);
  }
  for (int r = samples.count - 1; r >= 0; --r) {
    const float value = samples.x[r];
    for (int l = 0; l < lanes; ++l) {
      const float c = product_sum<fused>(cosine[l], at.re[l], -(sine[l] * at.im[l]));
      const float s = product_sum<fused>(cosine[l], at.im[l], sine[l] * at.re[l]);
      powers.re[l] += power_below(std::fabs(c) + unsure[l]);
      powers.im[l] += power_below(std::fabs(s) + unsure[l]);
      at.re[l] = product_sum<fused>(-value, bins.frames.cosines[r][l], at.re[l]);
      at.im[l] = product_sum<fused>(-value, bins.frames.sines[r][l], at.im[l]);
    }
  }
  for (int l = 0; l < lanes; ++l) {
    const double re = static_cast<double>(at.re[l]);
    const double im = static_cast<double>(at.im[l]);
    const double c = bins.frames.cosine[l];
    const double s = bins.frames.sine[l];
    const double cosines = static_cast<double>(powers.re[l]);
    const double sines = static_cast<double>(powers.im[l]);
    bins.before.cosines[l] = c * re - s * im;
    bins.before.sines[l] = c * im + s * re;
    bins.close_additions.cosines[l] += unit * cosines;
    bins.close_additions.sines[l] += unit * sines;
    bins.unsure[l] += single_unit * (3 * 2 * (cosines + sines) + 4 * samples.size);
  }
}

TORVE_CLONES void go_back_closely(BackwardSums& bins, const Samples& samples) {
  add_up_units<false>(bins, samples);
}

TORVE_FUSED_CLONES void go_back_closely_fused(BackwardSums& bins, const Samples& samples) {
  add_up_units<true>(bins, samples);
}

TORVE_CLONES void go_back(BackwardSums& bins, const Samples& samples) {
  go_back_in_frame<false, Angles::each>(bins, samples);
}

TORVE_FUSED_CLONES void go_back_fused(BackwardSums& bins, const Samples& samples) {
  go_back_in_frame<true, Angles::each>(bins, samples);
}

TORVE_CLONES void go_back_counting(BackwardSums& bins, const Samples& samples) {
  go_back_in_frame<false, Angles::counted>(bins, samples);
}

TORVE_FUSED_CLONES void go_back_counting_fused(BackwardSums& bins, const Samples& samples) {
  go_back_in_frame<true, Angles::counted>(bins, samples);
}

/// Without what the roundings of the angles add.
TORVE_CLONES void go_back_lightly(BackwardSums& bins, const Samples& samples) {
  go_back_in_frame<false, Angles::none>(bins, samples);
}

TORVE_FUSED_CLONES void go_back_lightly_fused(BackwardSums& bins, const Samples& samples) {
  go_back_in_frame<true, Angles::none>(bins, samples);
}

/// Sets the products of a block's first sample; whether one wraps before the next block.
TORVE_CLONES bool set_products(BackwardSums& bins, int first) {
  std::uint64_t wraps = 0;
  for (int l = 0; l < lanes; ++l) {
    const std::uint32_t product = bins.integer_step[l] * static_cast<std::uint32_t>(first);
    bins.product[l] = static_cast<std::int32_t>(product);
    const double next = bins.product[l] + Frames::block * bins.step[l];
    wraps |= next >= largest_product ? 1U : 0U;
  }
  return wraps != 0;
}

/// Whether a product wraps within a block.
bool wraps_within(const BackwardSums& bins, int count) {
  bool wraps = false;
  for (int l = 0; l < lanes; ++l)
    wraps |= bins.product[l] + (count - 1) * bins.step[l] >= largest_product;
  return wraps;
}

/// Sets the frames to the first products.
void set_frames(BackwardSums& bins) {
  double angles[lanes];
  for (int l = 0; l < lanes; ++l)
    angles[l] = bins.product[l] * short_pi / bins.k.value;
  set_frames(bins.frames, angles);
}

TORVE_CLONES void set_steps(BackwardSums& bins) {
  for (int l = 0; l < lanes; ++l) {
    bins.step[l] = bins.integer_step[l];
    bins.inverse_step[l] = 1 / bins.step[l];
    bins.step_quotient[l] = bins.step[l] * short_pi / bins.k.value;
    bins.step_excess[l] = angle_excess(bins.step[l], fourier_turn, bins.k);
  }
}

}  // namespace

void BackwardSums::begin(int size, std::span<const int> bins) {
  for (std::size_t l = 0; l < lanes; ++l)
    integer_step[l] = 2U * static_cast<std::uint32_t>(bins[std::min(l, bins.size() - 1)]);
  k = divisor(size);
  set_steps(*this);
  make_turns(frames, step_quotient);
  frames_are_set = false;
  corrections = {};
  close_additions = {};
}

bool BackwardSums::set(const SampleBlock& block) {
  const bool passes_wrap = set_products(*this, block.first);
  const bool wraps = passes_wrap && wraps_within(*this, block.count);
  if (frames_are_set && !passes_wrap) {
    turn_back(frames);
  } else if (!wraps) {
    set_frames(*this);
  }
  frames_are_set = !wraps;
  return wraps;
}

void BackwardSums::take_halves(const float* x, const SampleBlock& block, Take take_one) {
  const int count = block.count / 2;
  (this->*take_one)(x, {block.first + count, block.count - count, block.size, block.light});
  frames_are_set = false;
  (this->*take_one)(x, {block.first, count, block.size, block.light});
  frames_are_set = false;
}

void BackwardSums::take(const float* x, const SampleBlock& block) {
  const bool fused = fused_operations();
  if (set(block)) {
    take_halves(x, block, &BackwardSums::take);
    return;
  }
  const bool counted =
      !block.light && (fused ? set_counters_fused : set_counters)(*this, block.count);
  const auto go = block.light ? (fused ? go_back_lightly_fused : go_back_lightly)
                  : counted   ? (fused ? go_back_counting_fused : go_back_counting)
                              : (fused ? go_back_fused : go_back);
  go(*this, {x + block.first, block.count, block.size});
}

void BackwardSums::take_closely(const float* x, const SampleBlock& block) {
  const auto go = fused_operations() ? go_back_closely_fused : go_back_closely;
  if (set(block)) {
    take_halves(x, block, &BackwardSums::take_closely);
  } else {
    go(*this, {x + block.first, block.count, block.size});
  }
}

}  // namespace torve
