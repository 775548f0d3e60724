// What the kernels of Fourier sums have in common.
#pragma once

#include "app/signal/fourier_sums.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

/// 31 bits of p times 22 of 3.14159 are exact.
inline constexpr SplitFactor fourier_turn = split_factor(short_pi, 31);

/// The sums of bins side by side.
struct FourierLanes {
  alignas(64) double cosines[fourier_lanes];
  alignas(64) double sines[fourier_lanes];
};

}  // namespace torve
