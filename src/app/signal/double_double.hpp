// Numbers in two parts, each a double: about 106 bits.
#pragma once

#include "app/signal/clones.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

/// high + low; low is at most half a unit in the last place of high, or about that.
struct DoubleDouble {
  double high;
  double low;
};

/// a + b, exactly (Knuth).
TORVE_INLINE DoubleDouble exact_sum(double a, double b) {
  const double sum = a + b;
  const double of_b = sum - a;
  return {sum, (a - (sum - of_b)) + (b - of_b)};
}

/// The upper 26 bits of a number below 2^996 (Veltkamp).
TORVE_INLINE double upper_half(double a) {
  const double scaled = a * (0x1p27 + 1);
  return scaled - (scaled - a);
}

/// a x b, exactly if no part of it is too small for a double (Dekker).
TORVE_INLINE DoubleDouble exact_product(double a, double b) {
  const double product = a * b;
  const double a1 = upper_half(a);
  const double b1 = upper_half(b);
  const double a2 = a - a1;
  const double b2 = b - b1;
  return {product, ((a1 * b1 - product) + a1 * b2 + a2 * b1) + a2 * b2};
}

/// a + b, with a small error in the lower part.
TORVE_INLINE DoubleDouble with_added(const DoubleDouble& a, double b) {
  const DoubleDouble sum = exact_sum(a.high, b);
  return {sum.high, sum.low + a.low};
}

/// a b + c d, within about 2^-103 of what the products come to.
TORVE_INLINE DoubleDouble sum_of_products(const DoubleDouble& a, const DoubleDouble& b,
                                          const DoubleDouble& c, const DoubleDouble& d) {
  const DoubleDouble ab = exact_product(a.high, b.high);
  const DoubleDouble cd = exact_product(c.high, d.high);
  const DoubleDouble sum = exact_sum(ab.high, cd.high);
  return {sum.high, sum.low + ((ab.low + cd.low) + ((a.high * b.low + c.high * d.low) +
                                                    (a.low * b.high + c.low * d.high)))};
}

TORVE_INLINE DoubleDouble negative(const DoubleDouble& a) {
  return {-a.high, -a.low};
}

/// Sine and cosine of the sum of two angles, both in two parts.
TORVE_INLINE SplitSineCosine closely_turned(const SplitSineCosine& a, const SplitSineCosine& b) {
  const DoubleDouble a_sine = {a.sine, a.sine_rest};
  const DoubleDouble a_cosine = {a.cosine, a.cosine_rest};
  const DoubleDouble b_sine = {b.sine, b.sine_rest};
  const DoubleDouble b_cosine = {b.cosine, b.cosine_rest};
  const DoubleDouble sine = sum_of_products(a_sine, b_cosine, a_cosine, b_sine);
  const DoubleDouble cosine = sum_of_products(a_cosine, b_cosine, negative(a_sine), b_sine);
  return {sine.high, cosine.high, sine.low, cosine.low};
}

}  // namespace torve
