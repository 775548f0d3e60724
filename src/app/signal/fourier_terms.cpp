#include "app/signal/fourier_terms.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/signal/clones.hpp"
#include "app/signal/exact_phasor.hpp"
#include "app/signal/proof.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;
constexpr double library_part = library_slack * 0x1p-52;

/// The lower part of the factor, again in two: 31 bits of p times 22 and times 9 are exact.
constexpr SplitFactor lower_turn = split_factor(fourier_turn.lower, 31);

/// excess_of, within 2^-70.
template <bool fused>
TORVE_INLINE double fine_excess(double m, const Divisor& k) {
  if constexpr (fused) return excess_of<true>(m, fourier_turn, k);
  const double product = m * fourier_turn.whole;
  const double product_error =
      ((m * fourier_turn.upper - product) + m * lower_turn.upper) + m * lower_turn.lower;
  return quotient_excess(product, product_error, k);
}

TORVE_INLINE SplitSineCosine at_lane(const SplitPhasors& phasors, int l) {
  return {phasors.sines[l], phasors.cosines[l], phasors.sine_rests[l], phasors.cosine_rests[l]};
}

/// a x b + c x d, rounded or fused.
template <bool fused>
TORVE_INLINE double two_products(double a, double b, double c, double d) {
  return product_sum<fused>(a, b, c * d);
}

/// The product of two phasors, not split anew; `whole` is z in one part.
template <bool fused>
TORVE_INLINE SplitSineCosine fine_product(const SplitSineCosine& z, const SineCosine& whole,
                                          const SplitSineCosine& w) {
  const double cosine_rest = product_sum<fused>(
      -whole.sine, w.sine_rest,
      product_sum<fused>(
          -z.sine_rest, w.sine,
          two_products<fused>(whole.cosine, w.cosine_rest, z.cosine_rest, w.cosine)));
  const double sine_rest = product_sum<fused>(
      whole.cosine, w.sine_rest,
      product_sum<fused>(z.cosine_rest, w.sine,
                         two_products<fused>(whole.sine, w.cosine_rest, z.sine_rest, w.cosine)));
  return {two_products<fused>(z.sine, w.cosine, z.cosine, w.sine),
          product_sum<fused>(z.cosine, w.cosine, -(z.sine * w.sine)), sine_rest, cosine_rest};
}

TORVE_INLINE void split_anew(double& value, double& rest) {
  constexpr double rounder = 0x1.8p26;  // whose last place is 2^-26
  const double upper = ((value + rest) + rounder) - rounder;
  rest = (value - upper) + rest;
  value = upper;
}

/// z = z x w, split.
TORVE_CLONES void turn(SplitPhasors& z, const SplitPhasors& w) {
  for (int l = 0; l < lanes; ++l) {
    const SplitSineCosine at = at_lane(z, l);
    SplitSineCosine turned = fine_product<false>(
        at, {at.sine + at.sine_rest, at.cosine + at.cosine_rest}, at_lane(w, l));
    split_anew(turned.sine, turned.sine_rest);
    split_anew(turned.cosine, turned.cosine_rest);
    z.sines[l] = turned.sine;
    z.cosines[l] = turned.cosine;
    z.sine_rests[l] = turned.sine_rest;
    z.cosine_rests[l] = turned.cosine_rest;
  }
}

/// A term's ends; `part` and `least` have the sign of x.
template <bool fused>
TORVE_INLINE void set_ends(double x, double value, double rest, double part, double least,
                           double& low, double& high) {
  const double slack = product_sum<fused>(power_below(value + rest), part, least);
  low = x * (value + (rest - slack));
  high = x * (value + (rest + slack));
}

/// The terms of `count` samples whose products do not wrap.
template <bool fused>
TORVE_INLINE void turn_and_multiply(FourierTerms& terms, const float* x, int count) {
  const Divisor k = terms.k;
  double product[lanes];
  double step[lanes];
  double whole_sine[lanes];
  double whole_cosine[lanes];
  for (int l = 0; l < lanes; ++l) {
    product[l] = static_cast<std::int32_t>(terms.product[l]);
    step[l] = static_cast<std::int32_t>(terms.step[l]);
    const SplitSineCosine z = at_lane(terms.start, l);
    whole_sine[l] = z.sine + z.sine_rest;
    whole_cosine[l] = z.cosine + z.cosine_rest;
  }
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    const double part = std::copysign(library_part, value);
    const double least = std::copysign(phasor_slack, value);
    for (int l = 0; l < lanes; ++l) {
      SplitSineCosine at = fine_product<fused>(
          at_lane(terms.start, l), {whole_sine[l], whole_cosine[l]}, at_lane(terms.turns[r], l));
      const double excess = fine_excess<fused>(product[l], k);
      const double sine = at.sine + at.sine_rest;
      at.sine_rest = product_sum<fused>(excess, at.cosine + at.cosine_rest, at.sine_rest);
      at.cosine_rest = product_sum<fused>(-excess, sine, at.cosine_rest);
      set_ends<fused>(value, at.cosine, at.cosine_rest, part, least, terms.cosines.low[r][l],
                      terms.cosines.high[r][l]);
      set_ends<fused>(value, at.sine, at.sine_rest, part, least, terms.sines.low[r][l],
                      terms.sines.high[r][l]);
      product[l] += step[l];
    }
  }
}

TORVE_CLONES void make_terms(FourierTerms& terms, const float* x, int count) {
  turn_and_multiply<false>(terms, x, count);
}

TORVE_FUSED_CLONES void make_terms_fused(FourierTerms& terms, const float* x, int count) {
  turn_and_multiply<true>(terms, x, count);
}

/// The same for products that may wrap: each angle has its own sine.
TORVE_CLONES void make_wrapping_terms(FourierTerms& terms, const float* x, int count) {
  const double size = terms.k.value;
  std::uint32_t p[lanes];
  for (int l = 0; l < lanes; ++l)
    p[l] = terms.product[l];
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    const double slack = std::copysign(sine_slack, value);
    for (int l = 0; l < lanes; ++l) {
      const SplitSineCosine at =
          split_sine_cosine(static_cast<std::int32_t>(p[l]) * short_pi / size);
      terms.cosines.low[r][l] = value * (at.cosine + (at.cosine_rest - slack));
      terms.cosines.high[r][l] = value * (at.cosine + (at.cosine_rest + slack));
      terms.sines.low[r][l] = value * (at.sine + (at.sine_rest - slack));
      terms.sines.high[r][l] = value * (at.sine + (at.sine_rest + slack));
      p[l] += terms.step[l];
    }
  }
}

/// Which lanes wrap on the way from the first sample of a block to the next block.
std::uint32_t wrapping_lanes(const FourierTerms& terms) {
  std::uint32_t wrapping = 0;
  for (int l = 0; l < lanes; ++l) {
    const std::int64_t last = static_cast<std::int32_t>(terms.product[l]) +
                              std::int64_t{terms_at_once} * std::int64_t{terms.step[l]};
    wrapping |= std::uint32_t{last > std::numeric_limits<std::int32_t>::max()} << l;
  }
  return wrapping;
}

}  // namespace

void SplitPhasors::set(int lane, const SplitSineCosine& at) {
  sines[lane] = at.sine;
  cosines[lane] = at.cosine;
  sine_rests[lane] = at.sine_rest;
  cosine_rests[lane] = at.cosine_rest;
}

void FourierTerms::begin(std::span<const float> samples, std::span<const int> bins) {
  const int size = static_cast<int>(samples.size());
  x = samples;
  first = 0;
  k = divisor(size);
  std::ranges::fill(step, 0);
  std::ranges::fill(product, 0);
  for (int l = 0; l < lanes; ++l) {
    if (l < std::ssize(bins))
      step[l] = 2U * static_cast<std::uint32_t>(bins[static_cast<std::size_t>(l)]);
    start.set(l, exact_phasor(0, size));
    turns[1].set(l, exact_phasor(step[l], size));
    block_turn.set(l, exact_phasor(std::int64_t{terms_at_once} * step[l], size));
  }
  turns[0] = start;
  for (int r = 2; r < terms_at_once; ++r) {
    turns[r] = turns[r - 1];
    turn(turns[r], turns[1]);
  }
}

int FourierTerms::next() {
  const int size = static_cast<int>(x.size());
  const int count = std::min(terms_at_once, size - first);
  if (count == 0) return 0;
  const float* const values = x.data() + first;
  std::uint32_t wrapping = wrapping_lanes(*this);
  const auto make = wrapping != 0        ? make_wrapping_terms
                    : fused_operations() ? make_terms_fused
                                         : make_terms;
  make(*this, values, count);
  first += count;
  for (int l = 0; l < lanes; ++l)
    product[l] += static_cast<std::uint32_t>(terms_at_once) * step[l];
  turn(start, block_turn);
  for (; wrapping != 0; wrapping &= wrapping - 1) {
    const int l = std::countr_zero(wrapping);
    start.set(l, exact_phasor(static_cast<std::int32_t>(product[l]), size));
  }
  return count;
}

}  // namespace torve
