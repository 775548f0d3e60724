// The sums of a direct Fourier transform, several bins side by side.
//
// Bin j of the signal x(0 .. K-1) has the sums over i of x(i) cos(angle) and x(i) sin(angle), with
// angle = p x 3.14159 / K, left to right in double, where p = 2 x j x i wraps around as a signed
// 32-bit integer does.
#pragma once

#include <cstdint>
#include <span>

namespace torve {

struct FourierSums {
  double cosines;
  double sines;
};

/// 2 x j x i as a signed 32-bit product.
[[nodiscard]] constexpr std::int32_t wrapped_product(int j, int i) {
  return static_cast<std::int32_t>(2U * static_cast<std::uint32_t>(j) *
                                   static_cast<std::uint32_t>(i));
}

/// The sums of one bin, literally, with the library's sine and cosine.
[[nodiscard]] FourierSums plain_fourier_sums(std::span<const float> x, int bin);

/// How many bins fourier_sums takes at a time.
inline constexpr int fourier_lanes = 32;

/// The sums of the bins first_bin .. first_bin + sums.size() - 1, at most fourier_lanes; x holds at
/// most 131072 values. A phasor a bin is turned from sample to sample, and set anew every 64; what
/// the rounding of each angle does is put in, so the sums differ from the literal ones by what
/// random roundings of their terms add up to (see fourier_sum_tolerance).
void fourier_sums(std::span<const float> x, int first_bin, std::span<FourierSums> sums);

/// How far a sum of fourier_sums may be from the literal one: half a unit in the last place of
/// a sum of typical size, times the square root of the number of additions (the roundings go
/// either way). The worst difference seen is an eighth of it.
[[nodiscard]] double fourier_sum_tolerance(std::span<const float> x);

}  // namespace torve
