// A discrete Fourier transform of 4096 points, small and plain: 64 x 64 points, so that 64
// transforms of 64 points lie side by side and the compiler vectorises across them; parts apart,
// natural order in and out. No fused operation and one order of additions: every instruction set
// gives the same bits.
//
// What it computes is used as a proposal only. How far it may be from the truth is here, because
// the proofs rest on it: for a convolution of x and y, that is two transforms, their product, a
// transform back,
//   |error of any value| <= transform_slack |x| |y|,  |x| = sqrt(sum of squares).
//
// For radix-2 transforms of 2^n points Percival (Rapid multiplication modulo the sum and difference
// of highly composite numbers, Mathematics of Computation 72, 2003) proves
//   |x| |y| ((1 + u)^3n (1 + sqrt(5) u)^(3n + 1) (1 + r)^3n - 1),
// with u = 2^-53 for an addition, sqrt(5) u for a complex product, and r for a root of unity: here
// they are rounded from long double, r = u / sqrt(2). The first order, (3n + (3n + 1) sqrt(5) +
// 3n / sqrt(2)) u with n = 12, is 144.2 u. These transforms do no more of each: a radix-4 stage
// does the additions of two and at most the products of one, the grid is one product more. What the
// proposals do besides, in terms of |x| |y| too: a window made of two transforms (u), a sum of up
// to four products (4 u), two results packed as one (u). Together 150.2 u; the slack is 160 u,
// which leaves room for the higher orders and the rounding of the norms. Scaling by 1/4096 is
// exact.
// A single convolution, nothing packed, is closer; counted by what these passes do. In a transform
// every rounding is relative to an intermediate value, and of each pass those that go into one
// output hold each input once: so what a rounding does to an output, or to the norm of all, is its
// relative size times |x| |y|. A pass of four points does two additions in a row, u each, and a
// product with a rounded root, sqrt(5) u + u / sqrt(2) = 2.95 u; in the last of three passes roots
// are 1, exactly. Six passes and the grid: 12 u + 5 x 2.95 u = 26.8 u a transform; three of them
// and the product make 82.5 u. The slack is 84 u.
#pragma once

namespace torve::transforms {

inline constexpr int side = 64;
inline constexpr int points = side * side;
inline constexpr int half = points / 2;

/// 2^-53: the largest relative error of a rounding to nearest.
inline constexpr double unit = 0x1p-53;
inline constexpr double transform_slack = 160 * unit;
inline constexpr double convolution_slack = 84 * unit;

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
