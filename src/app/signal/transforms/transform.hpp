// A discrete Fourier transform of 4096 points, small and plain: 64 x 64 points, so that 64
// transforms of 64 points lie side by side and the compiler vectorises across them; parts apart,
// natural order in and out. No fused operation and one order of additions: every instruction set
// gives the same bits.
//
// What it computes is used as a proposal only. How far it may be from the truth is here, because
// the proofs rest on it (u = 2^-53, |x| = sqrt(sum of squares)). A sum of complex numbers is wrong
// by u of its size, a product by sqrt(5) u, a root of unity, rounded from long double, by u /
// sqrt(2). A pass of four points does two additions in a row and a product with a root; in the last
// of three passes roots are 1, exactly. Six passes and the grid come to
//   t = 6 x 2 u + 5 (sqrt(5) + 1 / sqrt(2)) u = 26.8 u:
// - of the transform's |X|, in |X' - X|, because every pass keeps that norm but for a factor;
// - of the sum of all |Z|, in any value of the transform back: at each pass the value is a sum of
//   numbers that are sums of the Z of disjoint sets.
// A convolution of x and y is two transforms, their product Z and a transform back. By Cauchy and
// Schwarz the sum of all |Z| is at most |X| |Y| = 4096 |x| |y|, and what is wrong with X comes to
// as much of it. Scaling by 1/4096 is exact. So
//   |error of any value| <= convolution_slack |x| |y|,  3 t + sqrt(5) u = 82.5 u.
// Lags do more. Of the transforms of real values half are used, and stand for their mirror images:
// errors are doubled in their squares, sqrt(2) t. A window is made of two transforms (u), up to
// four products are added up (4 u), two results share a transform back (u). That is
//   forward_slack   2 sqrt(2) t + sqrt(5) u + 5 u = 83.0 u, of the result alone, and
//   backward_slack  t + u = 27.8 u, of both results that share the transform back.
// The slacks have room for the higher orders and the rounding of the norms. (Percival, Rapid
// multiplication modulo the sum and difference of highly composite numbers, Mathematics of
// Computation 72, 2003, proves 144.2 u for convolutions by radix-2 transforms.)
#pragma once

namespace torve::transforms {

inline constexpr int side = 64;
inline constexpr int points = side * side;
inline constexpr int half = points / 2;

/// 2^-53: the largest relative error of a rounding to nearest.
inline constexpr double unit = 0x1p-53;
inline constexpr double convolution_slack = 84 * unit;
inline constexpr double forward_slack = 86 * unit;
inline constexpr double backward_slack = 29 * unit;

struct Wave {
  alignas(64) double re[points];
  alignas(64) double im[points];
};

/// The parts of a wave, or exchanged.
struct Parts {
  double* re;
  double* im;
};

/// re + i im becomes its transform, with exp(-2 pi i j k / 4096).
void transform(const Parts& wave);

/// The inverse, times 4096: the transform with the parts exchanged.
inline void transform(Wave& wave) {
  transform({wave.re, wave.im});
}
inline void transform_back(Wave& wave) {
  transform({wave.im, wave.re});
}

}  // namespace torve::transforms
