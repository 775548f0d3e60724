// Sines and cosines of many angles at once, and what rounding did to an angle.
//
// The analyses take sines of arguments like (p * 3.14159) / K, rounded twice before the sine sees
// them. With p up to 2^31 that rounding moves an argument by up to 1e-11, far more than the last
// digit of a sine, so whoever turns a phasor step by step must put it back in: these functions
// give the sine of the rounded argument from the sine of the true one. Unless their name or a
// parameter says so they use no fused operation, so that every instruction set gives the same bits.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace torve {

/// The value of pi that the spectrum and the filters use.
inline constexpr double short_pi = 3.14159;

struct SineCosine {
  double sine;
  double cosine;
};

/// The upper bits of `value`, without the last `dropped` ones.
[[gnu::always_inline]] constexpr double upper_bits(double value, int dropped) {
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) >> dropped << dropped);
}

/// A sine and a cosine, each in two parts: what is rounded, and the rest.
struct SplitSineCosine {
  double sine;
  double cosine;
  double sine_rest;
  double cosine_rest;
};

/// Exchanges the two and sets their signs, as so many quarter turns do.
[[gnu::always_inline]] inline void turn_quarters(double& sine, double& cosine,
                                                 std::uint64_t quarters) {
  auto sine_bits = std::bit_cast<std::uint64_t>(sine);
  auto cosine_bits = std::bit_cast<std::uint64_t>(cosine);
  const std::uint64_t exchange = (sine_bits ^ cosine_bits) & (0 - (quarters & 1));
  sine_bits ^= exchange ^ (quarters & 2) << 62;
  cosine_bits ^= exchange ^ ((quarters + 1) & 2) << 62;
  sine = std::bit_cast<double>(sine_bits);
  cosine = std::bit_cast<double>(cosine_bits);
}

/// Sine and cosine for |angle| < 1e6; without branches, so that loops over it vectorise. Reduction
/// by pi/2 in three parts of 33, 33 and 53 bits (Cody and Waite), Taylor polynomials on the rest y,
/// at most pi/4.
///
/// Both parts together are wrong by less than 0.5 x 2^-53. What is added to y is at most 0.081, and
/// five roundings on the way to it and one at the end make 0.47 units; of the cosine, y^2 / 2 is
/// off by a quarter of a unit, and what is added, at most 0.016, by a tenth.
[[gnu::always_inline]] inline SplitSineCosine split_sine_cosine(double angle) {
  constexpr double half_pi_1 = 0x1.921fb544p0;
  constexpr double half_pi_2 = 0x1.0b4611a6p-34;
  constexpr double half_pi_3 = 0x1.3198a2e037073p-69;
  constexpr double rounder = 0x1.8p52;
  const double shifted = angle * 0.63661977236758134308 + rounder;
  const double n = shifted - rounder;
  const double r1 = angle - n * half_pi_1;
  const double w = n * half_pi_2;
  const double r = r1 - w;
  const double e = n * half_pi_3 - ((r1 - r) - w);
  const double y = r - e;
  const double d = (r - y) - e;  // y + d is the rest
  const double z = y * y;
  const double ps =
      -1 / 6. +
      z * (1 / 120. +
           z * (-1 / 5040. +
                z * (1 / 362880. + z * (-1 / 39916800. + z * (1 / 6227020800. +
                                                              z * (-1 / 1307674368000. +
                                                                   z * (1 / 355687428096000.)))))));
  const double pc =
      1 / 24. +
      z * (-1 / 720. +
           z * (1 / 40320. +
                z * (-1 / 3628800. +
                     z * (1 / 479001600. + z * (-1 / 87178291200. + z * (1 / 20922789888000.))))));
  const double sine_less_y = z * y * ps + (d - 0.5 * z * d);
  const double half_z = 0.5 * z;
  const double u = 1 - half_z;
  const double cosine_less_u = ((1 - u) - half_z) + (z * z * pc - y * d);
  const double s = y + sine_less_y;
  const double c = u + cosine_less_u;
  SplitSineCosine at = {s, c, sine_less_y - (s - y), cosine_less_u - (c - u)};
  const auto quarters = std::bit_cast<std::uint64_t>(shifted);
  turn_quarters(at.sine, at.cosine, quarters);
  turn_quarters(at.sine_rest, at.cosine_rest, quarters);
  return at;
}

/// The rounded parts alone, wrong by less than 0.8 units in the last place.
[[gnu::always_inline]] inline SineCosine sine_cosine(double angle) {
  const SplitSineCosine at = split_sine_cosine(angle);
  return {at.sine, at.cosine};
}

/// How far the library's sine or cosine may be from that of split_sine_cosine: 0.5 and 1 units of
/// 2^-53. Taken from the rest, and that added to the rounded part, it gives an end for the
/// library's value, though it is rounded: that value is a double, and rounding is monotone.
inline constexpr double sine_slack = 1.5 * 0x1p-53;

/// The library's sine or cosine is the rounding of what is off the true one by at most so many
/// units in the last place. GNU's comes to 0.55 units, rounding included; 0.522 were the most of
/// 170 million cosines and sines. Where nothing is known of it but that it errs by 1 unit, 3/4
/// serve: the values next to a power of two are that far from half way to it.
#if defined(__GLIBC__)
inline constexpr double library_slack = 0.0625;
#else
inline constexpr double library_slack = 0.75;
#endif

/// A divisor K, a whole number up to 2^17, and its reciprocal in two parts.
struct Divisor {
  double value;
  double reciprocal;
  double reciprocal_rest;
};

[[nodiscard]] inline Divisor divisor(int k) {
  const double value = k;
  const double reciprocal = 1 / value;
  return {value, reciprocal, std::fma(-reciprocal, value, 1.0) / value};
}

/// A factor in two parts: upper x m and lower x m must be exact, or nearly so, for the m it meets.
struct SplitFactor {
  double whole;
  double upper;
  double lower;
};

[[gnu::always_inline]] constexpr SplitFactor split_factor(double value, int dropped) {
  const double upper = upper_bits(value, dropped);
  return {value, upper, value - upper};
}

/// product / K, as a division gives it. 36 bits of the quotient times the 17 of K are exact, and so
/// is the rest of the division; both together, rounded, are what a division gives.
[[gnu::always_inline]] inline double quotient(double product, const Divisor& k) {
  const double estimate = upper_bits(product * k.reciprocal, 17);
  return estimate + (product - estimate * k.value) * k.reciprocal;
}

/// The same with fused operations: it lies at least 2^-71 of itself from the middle between two
/// doubles, because K is small, or is exact.
[[gnu::always_inline]] inline double fused_quotient(double product, const Divisor& k) {
  return std::fma(product, k.reciprocal, product * k.reciprocal_rest);
}

/// quotient or fused_quotient.
template <bool fused>
[[gnu::always_inline]] inline double quotient_of(double product, const Divisor& k) {
  if constexpr (fused) return fused_quotient(product, k);
  return quotient(product, k);
}

/// How much product / K, rounded, exceeds (product + product_error) / K.
[[gnu::always_inline]] inline double quotient_excess(double product, double product_error,
                                                     const Divisor& k) {
  // 36 bits of the quotient times the 17 of K are exact, and so is the rest of the division; both
  // together, rounded, are what a division gives.
  const double estimate = upper_bits(product * k.reciprocal, 17);
  const double correction = (product - estimate * k.value) * k.reciprocal;
  const double quotient = estimate + correction;
  return ((quotient - estimate) - correction) - product_error * k.reciprocal;
}

/// How much the argument (m * factor) / K, rounded after each step, exceeds the true one.
[[gnu::always_inline]] inline double angle_excess(double m, const SplitFactor& factor,
                                                  const Divisor& k) {
  const double product = m * factor.whole;
  return quotient_excess(product, (m * factor.upper - product) + m * factor.lower, k);
}

/// The same with fused operations, times K: their remainders are exact, so nothing need be split.
[[gnu::always_inline]] inline double fused_angle_excess(double m, double factor, const Divisor& k) {
  const double product = m * factor;
  return std::fma(fused_quotient(product, k), k.value, -product) - std::fma(m, factor, -product);
}

/// a x b + c, rounded once or twice.
template <bool fused, typename Real>
[[gnu::always_inline]] inline Real product_sum(Real a, Real b, Real c) {
  if constexpr (fused) return std::fma(a, b, c);
  return a * b + c;
}

/// Sine and cosine a small angle further.
template <bool fused = false>
[[gnu::always_inline]] inline SineCosine moved(const SineCosine& at, double angle) {
  if constexpr (fused) {
    return {std::fma(angle, at.cosine, at.sine), std::fma(-angle, at.sine, at.cosine)};
  }
  return {at.sine + angle * at.cosine, at.cosine - angle * at.sine};
}

/// Sine and cosine of the sum of two angles.
template <bool fused = false>
[[gnu::always_inline]] inline SineCosine turned(const SineCosine& a, const SineCosine& b) {
  if constexpr (fused) {
    return {std::fma(a.sine, b.cosine, a.cosine * b.sine),
            std::fma(a.cosine, b.cosine, -(a.sine * b.sine))};
  }
  return {a.sine * b.cosine + a.cosine * b.sine, a.cosine * b.cosine - a.sine * b.sine};
}

/// angle_excess or fused_angle_excess.
template <bool fused>
[[gnu::always_inline]] inline double excess_of(double m, const SplitFactor& factor,
                                               const Divisor& k) {
  if constexpr (fused) return fused_angle_excess(m, factor.whole, k) * k.reciprocal;
  return angle_excess(m, factor, k);
}

/// Sine and cosine of the true m x factor / K.
[[gnu::always_inline]] inline SineCosine true_sine_cosine(double m, const SplitFactor& factor,
                                                          const Divisor& k) {
  return moved(sine_cosine(m * factor.whole / k.value), -angle_excess(m, factor, k));
}

}  // namespace torve
