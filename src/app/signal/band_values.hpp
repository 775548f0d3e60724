// The samples of a band with the text of the literal ones.
#pragma once

#include <functional>
#include <vector>

#include "app/signal/band_sums.hpp"

namespace torve {

/// What a sample lies between by its estimate.
[[nodiscard]] BandSums::Ends ends_of(const BandEstimate& estimate);

/// Samples first .. first + count - 1. They are proposed by transforms; what the ends of one leave
/// open is tried by closer ends, and by the literal sum in the end. `progress` is told each sample
/// about to be computed, in order.
[[nodiscard]] std::vector<double> band_values(const BandSums& sums, int first, int count,
                                              const std::function<void(int t)>& progress);

}  // namespace torve
