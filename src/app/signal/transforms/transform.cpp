#include "app/signal/transforms/transform.hpp"

#include <cmath>
#include <numbers>
#include <utility>

#include "app/signal/clones.hpp"

namespace torve::transforms {

namespace {

/// The roots of unity exp(-2 pi i k / points), and those of row x column of the 64 x 64 grid.
struct Roots {
  Wave powers;
  Wave grid;

  Roots() {
    for (int k = 0; k < points; ++k) {
      const long double angle = 2 * std::numbers::pi_v<long double> * k / points;
      powers.re[k] = static_cast<double>(std::cos(angle));
      powers.im[k] = static_cast<double>(-std::sin(angle));
    }
    powers.re[points / 4] = powers.re[3 * points / 4] = powers.im[half] = 0;
    for (int k = 0; k < points; ++k) {
      grid.re[k] = powers.re[k / side * (k % side)];
      grid.im[k] = powers.im[k / side * (k % side)];
    }
  }
};

const Roots& roots() {
  static const Roots table;
  return table;
}

/// One radix-4 pass: 64 points each of 64 transforms side by side, `stride` apart.
TORVE_CLONES void pass(const Parts& x, const Parts& y, int stride, int groups, const Wave& root) {
  const int distance = groups * stride;
  for (int p = 0; p < groups; ++p) {
    const int w = p * (points / 4 / groups);
    const double c1 = root.re[w];
    const double s1 = root.im[w];
    const double c2 = root.re[2 * w];
    const double s2 = root.im[2 * w];
    const double c3 = root.re[3 * w];
    const double s3 = root.im[3 * w];
    const double* const ar = x.re + p * stride;
    const double* const ai = x.im + p * stride;
    double* const br = y.re + 4 * p * stride;
    double* const bi = y.im + 4 * p * stride;
    TORVE_INDEPENDENT
    for (int q = 0; q < stride; ++q) {
      const double er = ar[q] + ar[q + 2 * distance];
      const double ei = ai[q] + ai[q + 2 * distance];
      const double fr = ar[q] - ar[q + 2 * distance];
      const double fi = ai[q] - ai[q + 2 * distance];
      const double gr = ar[q + distance] + ar[q + 3 * distance];
      const double gi = ai[q + distance] + ai[q + 3 * distance];
      const double hr = ai[q + distance] - ai[q + 3 * distance];
      const double hi = ar[q + 3 * distance] - ar[q + distance];
      const double ur = fr + hr;
      const double ui = fi + hi;
      const double vr = er - gr;
      const double vi = ei - gi;
      const double zr = fr - hr;
      const double zi = fi - hi;
      br[q] = er + gr;
      bi[q] = ei + gi;
      br[q + stride] = ur * c1 - ui * s1;
      bi[q + stride] = ur * s1 + ui * c1;
      br[q + 2 * stride] = vr * c2 - vi * s2;
      bi[q + 2 * stride] = vr * s2 + vi * c2;
      br[q + 3 * stride] = zr * c3 - zi * s3;
      bi[q + 3 * stride] = zr * s3 + zi * c3;
    }
  }
}

/// 64 transforms of 64 points, one in each column: three passes x -> y -> x -> y.
void columns(Parts x, Parts y) {
  for (int stride = side, groups = side / 4; groups >= 1; stride *= 4, groups /= 4) {
    pass(x, y, stride, groups, roots().powers);
    std::swap(x, y);
  }
}

/// Times the grid, transposed, eight rows at a time. Compiled by itself: inside a larger function
/// the compiler vectorises the wrong loop.
TORVE_CLONES void turn_over(const Wave& x, const Wave& grid, Wave& y) {
  constexpr int strip = 8;
  for (int row = 0; row < side; row += strip) {
    for (int column = 0; column < side; ++column) {
      for (int r = row; r < row + strip; ++r) {
        const int from = r * side + column;
        const int to = column * side + r;
        y.re[to] = x.re[from] * grid.re[from] - x.im[from] * grid.im[from];
        y.im[to] = x.re[from] * grid.im[from] + x.im[from] * grid.re[from];
      }
    }
  }
}

}  // namespace

void transform(const Parts& wave) {
  static Wave sixty_four;
  static Wave turned;
  columns(wave, {sixty_four.re, sixty_four.im});
  turn_over(sixty_four, roots().grid, turned);
  columns({turned.re, turned.im}, wave);
}

}  // namespace torve::transforms
