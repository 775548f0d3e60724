// Sums of products of two signals by lag, for signals and lags of any length.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace torve::transforms {

/// A signal, and what is taken away from each of its values.
struct Centred {
  std::span<const float> values;
  double mean = 0;
};

/// The sums over i of a(i) b(i+k) for the lags k = -back .. ahead, in this order. As transforms
/// give them: an error of some 1e-15 of the roots of the sums of squares, so that they are no proof
/// of digits as lag_proposal.hpp is. Takes 16 bytes a point of one transform: of both signals
/// together, or, where few lags are wanted, of parts of them.
[[nodiscard]] std::vector<double> lag_products(const Centred& a, const Centred& b, std::size_t back,
                                               std::size_t ahead);

}  // namespace torve::transforms
