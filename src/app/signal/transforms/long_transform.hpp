// A discrete Fourier transform of 4096 x 2^m points, for what is as long as a recording.
//
// Radix-2 passes with decimation in frequency halve the points until 4096 are left, which
// transform.hpp does; each half is finished before the other is begun, so that from some size down
// all stays in the cache. Everything happens in place. The transform back takes the order that the
// transform leaves, so nothing is ever put into natural order: point p of block b, of 4096 points
// each, is frequency p 2^m + r, r being b with its m bits reversed.
#pragma once

#include <cstddef>
#include <vector>

#include "app/signal/transforms/transform.hpp"

namespace torve::transforms {

class LongTransform {
 public:
  /// For at least `least` points; size() says for how many.
  explicit LongTransform(std::size_t least);

  [[nodiscard]] std::size_t size() const { return size_; }

  /// re + i im, size() points, becomes its transform, with exp(-2 pi i j k / size()).
  void forward(const Parts& x) const { forward(x, size_, 0); }
  /// The inverse, times size().
  void backward(const Parts& x) const { backward(x, size_, 0); }

  /// Where the opposite frequency of that at `place` is: the place of size() - f.
  [[nodiscard]] std::size_t opposite(std::size_t place) const;

 private:
  /// The roots exp(-2 pi i k / n) of one pass, k = 1024 h + l, as products of coarse[h] and
  /// fine[l].
  struct Roots {
    std::vector<double> coarse_re, coarse_im, fine_re, fine_im;
  };

  void forward(const Parts& x, std::size_t n, std::size_t pass) const;
  void backward(const Parts& x, std::size_t n, std::size_t pass) const;

  std::size_t size_ = points;
  std::vector<Roots> passes_;  // of all points first
};

}  // namespace torve::transforms
