// What rounding does to the angles (m x factor) / K of numbers m that go on by equal steps, from
// counters of 32 bits.
//
// A product is rounded by what it exceeds a multiple of its last place by: as long as its exponent
// is the same, that goes on by equal steps, modulo a unit. In whole 2^-32 of the unit it is exact,
// because no more than 32 bits are rounded off, and wraps around as it should. The true angle
// modulo a unit of the quotient goes on likewise; less what the product's rounding takes from it,
// and modulo the unit, it is what the quotient is rounded by. That needs no more than some 18 bits
// to be on the right side: the quotient of a double and K, below 2^17, is at least 2^-18 of a unit
// from the middle between two doubles.
//
// How far off, in 2^-32 units of the quotient: the conversions to single precision and back are
// within 2^8, a counter of angles within 2^6 after 128 steps, so the sides are right; what comes
// out errs by no more than 16 x 2^-24 of the half units of both roundings.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

/// Side by side, for the products p x 3.14159.
template <int lanes>
struct AngleCounters {
  alignas(64) std::uint32_t product[lanes];
  alignas(64) std::uint32_t product_step[lanes];
  alignas(64) std::uint32_t angle[lanes];
  alignas(64) std::uint32_t angle_step[lanes];
  alignas(64) float ratio[lanes];   // a product's unit, over K, in units of the quotient
  alignas(64) double scale[lanes];  // of what comes out, to K times the excess of an angle
};

/// The low 32 bits of a number, rounded to a whole one, below 2^51.
TORVE_INLINE std::uint32_t whole_bits(double value) {
  return static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(value + 0x1.8p52));
}

/// What a number exceeds a whole one by, for numbers below 2^51.
TORVE_INLINE double fraction(double value) {
  constexpr double rounder = 0x1.8p52;
  return value - ((value + rounder) - rounder);
}

/// 1 / power_below(value).
TORVE_INLINE double inverse_power(double value) {
  constexpr std::uint64_t exponent = 0x7ff0000000000000;
  constexpr std::uint64_t of_one_twice = 0x7fe0000000000000;
  return std::bit_cast<double>(of_one_twice - (std::bit_cast<std::uint64_t>(value) & exponent));
}

/// Whether two numbers have one sign and one exponent: 0 if so.
TORVE_INLINE std::uint64_t exponents_differ(double a, double b) {
  return (std::bit_cast<std::uint64_t>(a) ^ std::bit_cast<std::uint64_t>(b)) >> 52;
}

/// Whether one of the numbers first, first + step .. last, at most 128 of them and all of one sign,
/// may lie in the middle between two doubles when it is multiplied by 3.14159; 0 if not. That
/// double is 2^-50 x an odd number, so o x 2^n, o odd, loses n + 1 bits more than that, and they
/// are a half, if 3.14159 o is between 8 and 16: if o is 3 or 5, 1.5 or 1.25 times a power of two.
TORVE_INLINE std::uint64_t may_be_between(double first, double last, double step,
                                          double inverse_step) {
  // From so many steps on no two of these are among the numbers.
  constexpr double apart = 5 * 128;
  const double sign = last > 0 ? 1 : -1;
  const double low = std::min(sign * first, sign * last);
  const double high = std::max(sign * first, sign * last);
  const double power = power_below(high);
  const double middle = high >= 1.5 * power ? 1.5 * power : 1.25 * power;
  const bool among = (low <= middle) & (middle <= high);
  const bool is_met = std::fabs(fraction((sign * middle - first) * inverse_step)) < 0x1p-16;
  return ((among & is_met) | (low < apart * step)) ? 1 : 0;
}

/// An angle, rounded, and what it exceeds the true one by.
struct RoundedAngle {
  double value;
  double excess;
};

/// Sets the counter of angles of a lane, from the first angle, its excess and that of a step;
/// product_power: 2 to the power of the exponent of its product.
template <int lanes>
TORVE_INLINE void set_angles(AngleCounters<lanes>& to, int lane, const RoundedAngle& first,
                             const RoundedAngle& step, double product_power, const Divisor& k) {
  const double units = inverse_power(first.value) * 0x1p52;
  to.angle[lane] = whole_bits(-first.excess * units * 0x1p32);
  to.angle_step[lane] = whole_bits((fraction(step.value * units) - step.excess * units) * 0x1p32);
  to.ratio[lane] = static_cast<float>(product_power * inverse_power(first.value) * k.reciprocal);
  to.scale[lane] = -power_below(first.value) * 0x1p-84 * k.value;
}

/// Of a counter of products with the last bit that is kept on top, one of those above: whole halves
/// go to even.
TORVE_INLINE std::uint32_t rounded_to_even(std::uint32_t product) {
  return std::rotl(product, 1) - 1;
}

/// What comes out for one number: minus the excess of its angle, in 2^-32 units of the quotient.
template <bool fused>
TORVE_INLINE float counted_excess(std::uint32_t product, std::uint32_t angle, float ratio) {
  const auto of_product = static_cast<float>(static_cast<std::int32_t>(product));
  // Half of it, because the whole may need 33 bits.
  const auto half = static_cast<std::uint32_t>(static_cast<std::int32_t>(of_product * (ratio / 2)));
  const std::uint32_t of_quotient = angle - half - half;
  return product_sum<fused>(of_product, ratio,
                            static_cast<float>(static_cast<std::int32_t>(of_quotient)));
}

}  // namespace torve
