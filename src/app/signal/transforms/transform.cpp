#include "app/signal/transforms/transform.hpp"

#include <cmath>
#include <cstring>
#include <numbers>

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

// So many columns at a time that two copies of them fit the nearest cache.
constexpr int strip = 16;

struct Strip {
  alignas(64) double re[side * strip];
  alignas(64) double im[side * strip];
};

/// Where the rows of a strip of columns lie, `pitch` apart.
template <typename Value, int pitch>
struct Rows {
  Value* re;
  Value* im;

  [[nodiscard]] TORVE_INLINE Rows row(int r) const { return {re + r * pitch, im + r * pitch}; }
};

/// x[0..3] at the columns become their sums, the last three times roots, `stride` rows apart.
template <bool turned, typename From, typename To>
TORVE_INLINE void butterflies(const From& x, int distance, const To& y, int stride,
                              const Wave& root, int w) {
  const double c1 = root.re[w];
  const double s1 = root.im[w];
  const double c2 = root.re[2 * w];
  const double s2 = root.im[2 * w];
  const double c3 = root.re[3 * w];
  const double s3 = root.im[3 * w];
  const auto x0 = x.row(0);
  const auto x1 = x.row(distance);
  const auto x2 = x.row(2 * distance);
  const auto x3 = x.row(3 * distance);
  const auto y0 = y.row(0);
  const auto y1 = y.row(stride);
  const auto y2 = y.row(2 * stride);
  const auto y3 = y.row(3 * stride);
  TORVE_INDEPENDENT
  for (int q = 0; q < strip; ++q) {
    const double er = x0.re[q] + x2.re[q];
    const double ei = x0.im[q] + x2.im[q];
    const double fr = x0.re[q] - x2.re[q];
    const double fi = x0.im[q] - x2.im[q];
    const double gr = x1.re[q] + x3.re[q];
    const double gi = x1.im[q] + x3.im[q];
    const double hr = x1.im[q] - x3.im[q];
    const double hi = x3.re[q] - x1.re[q];
    const double ur = fr + hr;
    const double ui = fi + hi;
    const double vr = er - gr;
    const double vi = ei - gi;
    const double zr = fr - hr;
    const double zi = fi - hi;
    y0.re[q] = er + gr;
    y0.im[q] = ei + gi;
    y1.re[q] = turned ? ur * c1 - ui * s1 : ur;
    y1.im[q] = turned ? ur * s1 + ui * c1 : ui;
    y2.re[q] = turned ? vr * c2 - vi * s2 : vr;
    y2.im[q] = turned ? vr * s2 + vi * c2 : vi;
    y3.re[q] = turned ? zr * c3 - zi * s3 : zr;
    y3.im[q] = turned ? zr * s3 + zi * c3 : zi;
  }
}

/// One radix-4 pass of 64 points. The last one, of one group, has no roots but 1.
template <int groups, typename From, typename To>
TORVE_INLINE void pass(const From& x, const To& y, const Wave& root) {
  constexpr int stride = side / 4 / groups;
  for (int p = 0; p < groups; ++p) {
    for (int s = 0; s < stride; ++s) {
      butterflies<(groups > 1)>(x.row(p * stride + s), groups * stride, y.row(4 * p * stride + s),
                                stride, root, p * (points / 4 / groups));
    }
  }
}

using Four [[gnu::vector_size(32)]] = double;

TORVE_INLINE void take(const double* x, Four& four) {
  std::memcpy(&four, x, sizeof four);
}

/// Four rows become four columns, `pitch` apart. The compiler would do it one by one.
TORVE_INLINE void turn(const Four& r0, const Four& r1, const Four& r2, const Four& r3, double* y,
                       int pitch) {
  const Four even01 = __builtin_shufflevector(r0, r1, 0, 4, 2, 6);
  const Four odd01 = __builtin_shufflevector(r0, r1, 1, 5, 3, 7);
  const Four even23 = __builtin_shufflevector(r2, r3, 0, 4, 2, 6);
  const Four odd23 = __builtin_shufflevector(r2, r3, 1, 5, 3, 7);
  const Four columns[] = {__builtin_shufflevector(even01, even23, 0, 1, 4, 5),
                          __builtin_shufflevector(odd01, odd23, 0, 1, 4, 5),
                          __builtin_shufflevector(even01, even23, 2, 3, 6, 7),
                          __builtin_shufflevector(odd01, odd23, 2, 3, 6, 7)};
  for (int c = 0; c < 4; ++c)
    std::memcpy(y + c * pitch, &columns[c], sizeof(Four));
}

/// Times the grid, whose first column of the strip it is given; rows become columns.
TORVE_INLINE void turn_over(const Strip& x, const Rows<const double, side>& grid,
                            const Rows<double, side>& y) {
  for (int r = 0; r < side; r += 4) {
    for (int c = 0; c < strip; c += 4) {
      Four re[4];
      Four im[4];
      for (int k = 0; k < 4; ++k) {
        const auto g = grid.row(r + k);
        Four x_re, x_im, g_re, g_im;
        take(x.re + (r + k) * strip + c, x_re);
        take(x.im + (r + k) * strip + c, x_im);
        take(g.re + c, g_re);
        take(g.im + c, g_im);
        re[k] = x_re * g_re - x_im * g_im;
        im[k] = x_re * g_im + x_im * g_re;
      }
      const auto to = y.row(c);
      turn(re[0], re[1], re[2], re[3], to.re + r, side);
      turn(im[0], im[1], im[2], im[3], to.im + r, side);
    }
  }
}

using Near = Rows<double, strip>;

/// 64 transforms of 64 points, one in each of 16 columns, but for the last pass.
TORVE_INLINE void two_passes(const Rows<const double, side>& x, const Roots& roots, Strip& first,
                             Strip& second) {
  pass<16>(x, Near{first.re, first.im}, roots.powers);
  pass<4>(Near{first.re, first.im}, Near{second.re, second.im}, roots.powers);
}

/// The transforms of all columns, times the grid; rows become columns.
TORVE_CLONES void columns_turned(const Parts& x, const Roots& roots, Wave& y) {
  Strip first;
  Strip second;
  for (int c = 0; c < side; c += strip) {
    two_passes({x.re + c, x.im + c}, roots, first, second);
    pass<1>(Near{second.re, second.im}, Near{first.re, first.im}, roots.powers);
    turn_over(first, {roots.grid.re + c, roots.grid.im + c}, {y.re + c * side, y.im + c * side});
  }
}

/// The transforms of all columns.
TORVE_CLONES void columns(const Wave& x, const Roots& roots, const Parts& y) {
  Strip first;
  Strip second;
  for (int c = 0; c < side; c += strip) {
    two_passes({x.re + c, x.im + c}, roots, first, second);
    pass<1>(Near{second.re, second.im}, Rows<double, side>{y.re + c, y.im + c}, roots.powers);
  }
}

}  // namespace

void transform(const Parts& wave) {
  static Wave turned;
  columns_turned(wave, roots(), turned);
  columns(turned, roots(), wave);
}

}  // namespace torve::transforms
