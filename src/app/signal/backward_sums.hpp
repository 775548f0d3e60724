// Goes through the samples of some bins' Fourier sums, the last ones first: what the roundings of
// the stated angles add, and the partial sums, in single precision. What that errs by, and what
// for, is in fourier_corrections.hpp.
#pragma once

#include <cstdint>
#include <span>

#include "app/signal/angle_counters.hpp"
#include "app/signal/fourier_lanes.hpp"
#include "app/signal/frames.hpp"

namespace torve {

/// Samples that share a frame: the sum of their |x| must be known, and whether what the roundings
/// of their angles add can be left out.
struct SampleBlock {
  int first;
  int count;  // at most Frames::block
  double size;
  bool light;
};

/// Some bins and how far they are. Large: not for the stack.
struct BackwardSums {
  static constexpr int lanes = fourier_lanes;

  /// Begins with the sums of all `size` samples: `before`, `unsure` and `additions` are set by the
  /// caller. Lanes that are not used stand for the last bin.
  void begin(int size, std::span<const int> bins);
  /// Takes the block before; x: all samples, about 1 at most.
  void take(const float* x, const SampleBlock& block);
  /// Takes it for what the additions err by alone, closer than `take` finds it.
  void take_closely(const float* x, const SampleBlock& block);

  FourierLanes corrections;             // times K
  FourierLanes before;                  // sums of x before the samples that were gone through
  alignas(64) double unsure[lanes];     // how far off these are
  alignas(64) double additions[lanes];  // what the stated additions err by
  FourierLanes close_additions;         // the same, taken closely

  Divisor k;
  alignas(64) std::uint32_t integer_step[lanes];  // 2 j
  alignas(64) double step[lanes];
  alignas(64) double inverse_step[lanes];
  alignas(64) double step_quotient[lanes];  // the angle of a step
  alignas(64) double step_excess[lanes];    // what it exceeds the true one by
  alignas(64) double product[lanes];        // of the first sample of a block
  AngleCounters<lanes> counters;            // at a block's last sample
  Frames frames;                            // of a block's first sample
  bool frames_are_set;                      // to the block behind

 private:
  /// Sets products and frames to a block; whether a product wraps in it, and they are not.
  [[nodiscard]] bool set(const SampleBlock& block);
  /// Takes the halves of a block in which a product wraps, the second one first.
  using Take = void (BackwardSums::*)(const float* x, const SampleBlock& block);
  void take_halves(const float* x, const SampleBlock& block, Take take_one);
};

}  // namespace torve
