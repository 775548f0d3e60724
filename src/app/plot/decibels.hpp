// Powers in decibels below the largest one.
#pragma once

#include <span>
#include <vector>

namespace torve {

/// How far down a spectrum can be shown, in decibels, a multiple of 10 from 10 to 120: to what one
/// unit of a file's last decimal is, or to the smallest power above 0 if that is less.
[[nodiscard]] int decibel_range(std::span<const float> powers);

/// 10 log10(power / largest) + range for each power, 0 where that is less or the power is not above
/// 0: heights above the lower end of the range. The largest one stands at `range`.
[[nodiscard]] std::vector<float> decibel_heights(std::span<const float> powers, int range);

/// 10 log10(power / largest); minus infinity for a power of 0.
[[nodiscard]] double decibels_below(double power, double largest);

}  // namespace torve
