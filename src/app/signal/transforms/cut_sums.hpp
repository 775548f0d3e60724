// The part of a block's Fourier sums that lies on one side of a cut, for bins that are cut at
// different places.
#pragma once

#include "app/signal/transforms/transform.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

inline constexpr int cut_lanes = 16;

/// Phasors that begin at `start`, are turned by `turn` from sample to sample, and take `count`
/// samples of a block, at most 2048; re and im: the sums.
struct Cuts {
  double count[cut_lanes];
  SineCosine start[cut_lanes];
  SineCosine turn[cut_lanes];
  double re[cut_lanes];
  double im[cut_lanes];
};

enum class Way : int { forwards = 1, backwards = -1 };

/// From x[0] on, or from there back; there are at least as many samples as the largest count.
void sum_to_cut(const float* x, Way way, Cuts& cuts);

}  // namespace torve::transforms
