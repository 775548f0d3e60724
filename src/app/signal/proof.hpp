// What is proved of a value that is known only to lie between two ends.
//
// The steps from a sum to its text are monotone, rounding included: division, conversion to float,
// squares of what has one sign, decimal digits. Taken literally from both ends, they give two ends
// for the result; where these agree, so does the literal result. Not-a-number agrees with nothing.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

#include "app/signal/clones.hpp"

namespace torve {

/// Far below any text: what products may lose that are too small for a double.
inline constexpr double vanished = 1e-290;

/// The power of two that |value| is at least, or 0.
[[nodiscard]] TORVE_INLINE double power_below(double value) {
  constexpr std::uint64_t exponent = 0x7ff0000000000000;
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) & exponent);
}

[[nodiscard]] TORVE_INLINE float power_below(float value) {
  constexpr std::uint32_t exponent = 0x7f800000;
  return std::bit_cast<float>(std::bit_cast<std::uint32_t>(value) & exponent);
}

/// Half a unit in the last place.
[[nodiscard]] TORVE_INLINE double half_ulp(double value) {
  return power_below(value) * 0x1p-53;
}

/// Whether both are one float, the sign of zero included.
[[nodiscard]] TORVE_INLINE bool same_float(float a, float b) {
  return (a == b) & (std::signbit(a) == std::signbit(b));
}

/// Whether "%f" writes both alike. A float times 10^6 is exact in double; adding 1.5 x 2^52 rounds
/// it to a whole number, to even in the middle between two, as "%f" does.
[[nodiscard]] TORVE_INLINE bool same_text(float low, float high) {
  constexpr double rounder = 0x1.8p52;
  constexpr double largest = 0x1p50;
  const double a = static_cast<double>(low) * 1e6;
  const double b = static_cast<double>(high) * 1e6;
  const bool same_digits =
      (std::fabs(a) < largest) & (std::fabs(b) < largest) & (a + rounder == b + rounder);
  return (std::signbit(low) == std::signbit(high)) & ((low == high) | same_digits);
}

}  // namespace torve
