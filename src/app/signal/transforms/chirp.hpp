// Sums with angles 2 a b x 3.14159 / K for all b, by convolutions.
//
// 2ab = a^2 + b^2 - (a-b)^2, so with w(m) = exp(i m^2 3.14159 / K) the sums over a of
// v(a) exp(i 2 a b 3.14159 / K) are w(b) times the convolution of v(a) w(a) with the conjugate of w
// (Bluestein), in blocks of 2048 values of a and tiles of 2048 of b.
//
// What that errs by, as far as both users have it in common (u = 2^-53): w(m) 1.9 u in length; the
// convolution of a block convolution_slack times the root of the sum of |v|^2 times 64, the norm of
// 4096 values of w.
#pragma once

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include "app/signal/transforms/close_turn.hpp"
#include "app/signal/transforms/transform.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

/// What a block's convolution may be off by, from the sum of its squares.
[[nodiscard]] inline double convolution_error(double squares) {
  return convolution_slack * side * std::sqrt(squares);
}

class Chirp {
 public:
  /// For `blocks` blocks of a and `tiles` tiles of b, both from 0 on; size: K.
  Chirp(int size, int blocks, int tiles);

  /// w(m), for |m| up to the larger end of blocks and tiles.
  [[nodiscard]] SineCosine operator()(int m) const {
    const SplitSineCosine& turn = (*turns_)[static_cast<std::size_t>(std::abs(m))];
    return {turn.sine, turn.cosine};
  }

  /// The sums over `block`, whose v(a) w(a) have the transform `values`, for b = 2048 tile + s:
  /// sums.re[s] and sums.im[s], times 4096, and w(b) still to come.
  void convolve(const Wave& values, int block, int tile, Wave& sums) const;

 private:
  int blocks_;
  std::shared_ptr<const ChirpTurns> turns_;
  std::vector<Wave> filters_;  // transforms of the conjugate of w, by the distance in blocks
};

}  // namespace torve::transforms
