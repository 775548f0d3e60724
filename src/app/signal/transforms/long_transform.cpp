#include "app/signal/transforms/long_transform.hpp"

#include <bit>
#include <cmath>
#include <numbers>

#include "app/signal/clones.hpp"

namespace torve::transforms {

namespace {

constexpr std::size_t row = 1024;

void put_roots(std::size_t count, std::size_t stride, std::size_t n, std::vector<double>& re,
               std::vector<double>& im) {
  for (std::size_t k = 0; k < count; ++k) {
    const double angle =
        2 * std::numbers::pi * static_cast<double>(k * stride) / static_cast<double>(n);
    re.push_back(std::cos(angle));
    im.push_back(-std::sin(angle));
  }
}

/// A row of the fine roots times one coarse root.
struct Turn {
  double re, im;
  const double* fine_re;
  const double* fine_im;
};

TORVE_CLONES void part_row(const Parts& a, const Parts& b, const Turn& turn) {
  TORVE_INDEPENDENT
  for (std::size_t i = 0; i < row; ++i) {
    const double cos = turn.re * turn.fine_re[i] - turn.im * turn.fine_im[i];
    const double sin = turn.re * turn.fine_im[i] + turn.im * turn.fine_re[i];
    const double re = a.re[i] - b.re[i];
    const double im = a.im[i] - b.im[i];
    a.re[i] += b.re[i];
    a.im[i] += b.im[i];
    b.re[i] = re * cos - im * sin;
    b.im[i] = re * sin + im * cos;
  }
}

TORVE_CLONES void join_row(const Parts& a, const Parts& b, const Turn& turn) {
  TORVE_INDEPENDENT
  for (std::size_t i = 0; i < row; ++i) {
    const double cos = turn.re * turn.fine_re[i] - turn.im * turn.fine_im[i];
    const double sin = turn.re * turn.fine_im[i] + turn.im * turn.fine_re[i];
    const double re = b.re[i] * cos + b.im[i] * sin;
    const double im = b.im[i] * cos - b.re[i] * sin;
    b.re[i] = a.re[i] - re;
    b.im[i] = a.im[i] - im;
    a.re[i] += re;
    a.im[i] += im;
  }
}

Parts behind(const Parts& x, std::size_t offset) {
  return {x.re + offset, x.im + offset};
}

}  // namespace

LongTransform::LongTransform(std::size_t least) {
  while (size_ < least)
    size_ *= 2;
  for (std::size_t n = size_; n > points; n /= 2) {
    Roots& roots = passes_.emplace_back();
    put_roots(n / 2 / row, row, n, roots.coarse_re, roots.coarse_im);
    put_roots(row, 1, n, roots.fine_re, roots.fine_im);
  }
}

void LongTransform::forward(const Parts& x, std::size_t n, std::size_t pass) const {
  if (n == points) return transform(x);
  const Roots& roots = passes_[pass];
  for (std::size_t h = 0; h < n / 2 / row; ++h) {
    part_row(behind(x, h * row), behind(x, h * row + n / 2),
             {roots.coarse_re[h], roots.coarse_im[h], roots.fine_re.data(), roots.fine_im.data()});
  }
  forward(x, n / 2, pass + 1);
  forward(behind(x, n / 2), n / 2, pass + 1);
}

void LongTransform::backward(const Parts& x, std::size_t n, std::size_t pass) const {
  if (n == points) return transform({x.im, x.re});
  backward(x, n / 2, pass + 1);
  backward(behind(x, n / 2), n / 2, pass + 1);
  const Roots& roots = passes_[pass];
  for (std::size_t h = 0; h < n / 2 / row; ++h) {
    join_row(behind(x, h * row), behind(x, h * row + n / 2),
             {roots.coarse_re[h], roots.coarse_im[h], roots.fine_re.data(), roots.fine_im.data()});
  }
}

std::size_t LongTransform::opposite(std::size_t place) const {
  const std::size_t block = place / points;
  const std::size_t point = place % points;
  if (block == 0) return (points - point) % points;
  // With its bits reversed, 2^m - r lies among the blocks that have the same highest bit, in the
  // reverse order.
  return (3 * std::bit_floor(block) - 1 - block) * points + (points - 1 - point);
}

}  // namespace torve::transforms
