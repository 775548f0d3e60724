// BandSums::for_bins, for the files that define the class.
#pragma once

#include <algorithm>

#include "app/signal/band_sums.hpp"

namespace torve {

template <typename Add>
void BandSums::for_bins(int most, Add add) const {
  const auto is_zero = [](float value) { return value == 0; };
  for (const BinRange& range : ranges_) {
    for (int j = range.first; j <= range.last; j += most) {
      const int count = std::min(most, range.last - j + 1);
      const auto part = [&](std::span<const float> values) {
        return values.subspan(static_cast<std::size_t>(j), static_cast<std::size_t>(count));
      };
      if (zeros_count_ || !std::ranges::all_of(part(a_), is_zero) ||
          !std::ranges::all_of(part(b_), is_zero)) {
        add(j, count);
      }
    }
  }
}

}  // namespace torve
