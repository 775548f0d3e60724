// Sine and cosine of the true angle product x 3.14159 / K, in whole numbers of 2^-92.
//
// Errors, in these units: 2 pi is within a quarter of one, so n turns taken away are within n / 4;
// the quotient by K is cut, 1; pi/2, of which at most two are taken, is cut, 1. In Taylor's series
// of y up to pi/4 the square is within 2, which makes 1; a product leaves out less than 2, a
// coefficient is within 2, and a step passes on 0.62 of the error of the one before: 4 / 0.38 < 11.
// The product of series and y leaves out 2. The first terms left out, of y^27 and y^28, are less
// than 2^-10. Together 16 and n / 4. Bins up to K have products up to 2 K^2, or 2^31: n <= 2^15. So
// a component is within 2^-78, and within 2^-87 up to 16 turns.
#pragma once

#include <cstdint>

#include "app/signal/trigonometry.hpp"

namespace torve {

__extension__ using Wide = __int128;
__extension__ using UnsignedWide = unsigned __int128;

/// Angles count in units of 2^-92.
inline constexpr int angle_places = 92;
inline constexpr UnsignedWide two_pi = (UnsignedWide{0x6487ED511} << 60) | 0x0B4611A62633146;

/// The angle times `size`, less whole turns: in [-pi, pi] and hardly more. product < 2^35, size <
/// 2^18. Modulo 2^128 the difference of two large products is this remainder.
[[nodiscard]] Wide without_turns(std::uint64_t product, int size);

/// A sine and a cosine are whole numbers of 2^-26 and the rest: products of two whole numbers, and
/// sums and differences of two products, are exact in double.
inline constexpr int fine_places = 26;

/// Sine and cosine, split there; |product| <= 2^31. Rounding the rest adds 2^-81.
[[nodiscard]] SplitSineCosine exact_phasor(std::int64_t product, int size);

}  // namespace torve
