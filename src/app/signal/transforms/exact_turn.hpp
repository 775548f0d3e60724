// Sine and cosine of the true product x 3.14159 / K, for products so large that the rounding of the
// argument would be all that is seen.
#pragma once

#include <cstdint>

#include "app/signal/trigonometry.hpp"

namespace torve::transforms {

/// product < 2^35, size < 2^18. The remainder by 2 pi is taken in whole numbers of 2^-92: modulo
/// 2^128 the difference of two large products is that remainder, times `size`. Within 1.3 units of
/// 2^-53 a component.
[[nodiscard]] SineCosine exact_turn(std::uint64_t product, int size);

}  // namespace torve::transforms
