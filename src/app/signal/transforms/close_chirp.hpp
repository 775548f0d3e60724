// The sums of a chirp (chirp.hpp) ten thousand times closer: for sums so small beside their terms
// that what a transform rounds would hide their digits.
//
// It is the same convolution, of factors in two parts: f = v w in f0 and f1, and the chirp g in g0
// and g1. f0 and g0 are whole multiples of powers of two, so few that a transform is wrong by less
// than half a unit in f0 * g0: rounded to a whole one it is exact. What is left, f0 * g1 + f1 * g,
// is so small that its errors are.
//
// What bounds the distance from the true sums (u = 2^-53, |v| = sqrt(sum of |v|^2)):
//   f0 * g0: nothing. Parts of g0 are multiples of 2^-16, those of f0 of d, with
//     convolution_slack |f0| |g0| < d 2^-16 / 2, and 4096 values of g0 have a norm of about 64;
//   f0 * g1 + f1 * g: a transform's error, and 5 u for adding two products and adding up g, of
//     |f| |g1| + |f1| |g|; the parts of g1 and f1 are at most half a unit of g0 and f0;
//   the turns: w(a), w(b-a), w(b) and one back are close to 2^-59 each, times |v|, 2^-57 in all;
//     what is added up in two parts is rounded by 2^-58 at most, so 2^-56 is enough.
#pragma once

#include <cstdlib>
#include <memory>
#include <vector>

#include "app/signal/double_double.hpp"
#include "app/signal/transforms/close_turn.hpp"
#include "app/signal/transforms/transform.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

inline constexpr double close_turns_slack = 0x1p-56;

/// A wave in a part of few bits and the rest.
struct SplitWave {
  Wave coarse;
  Wave rest;
};

/// A block of v(a) w(a).
struct CloseBlock {
  SplitWave values;  // transformed
  double unit;       // of the coarse part
};

/// The sums of a tile, in two parts each, w(b) still to come.
struct CloseTile {
  alignas(64) double re[half];
  alignas(64) double re_rest[half];
  alignas(64) double im[half];
  alignas(64) double im_rest[half];
};

class CloseChirp {
 public:
  /// For all a from first_a on and b from first_b on, of so many values each, in blocks and tiles
  /// of 2048; size: K.
  struct Values {
    int first;
    int count;
  };
  CloseChirp(int size, const Values& a, const Values& b);

  /// w(m), for |m| up to the larger end of these.
  [[nodiscard]] const SplitSineCosine& operator()(int m) const {
    return (*turns_)[static_cast<std::size_t>(std::abs(m))];
  }

  /// Begins a block, which is 0, from the sum of its squares; returns what its convolution may be
  /// off by, but for its turns.
  static double begin(CloseBlock& block, double squares);
  /// Sets one value of it: re + i im, times w(a) already, in two parts.
  static void set(CloseBlock& block, int place, const DoubleDouble& re, const DoubleDouble& im);
  static void end(CloseBlock& block);

  /// The sums over block `number`.
  void convolve(const CloseBlock& block, int number, int tile, CloseTile& sums);

 private:
  static constexpr int parts_of(const Values& values) { return (values.count + half - 1) / half; }

  int blocks_;
  std::shared_ptr<const ChirpTurns> turns_;
  std::vector<SplitWave> filters_;  // transforms of the conjugate of w, by the distance in blocks
  SplitWave part_ = {};
};

void add(const CloseTile& part, CloseTile& sums);

/// The product with w(b) of what stands at place s.
[[nodiscard]] double real_product(const CloseTile& sums, int s, const SplitSineCosine& w);
[[nodiscard]] double imaginary_product(const CloseTile& sums, int s, const SplitSineCosine& w);

}  // namespace torve::transforms
