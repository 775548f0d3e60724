// The sums of a direct Fourier transform, several bins side by side.
//
// Bin j of the signal x(0 .. K-1) has the sums over i of x(i) cos(angle) and x(i) sin(angle), with
// angle = p x 3.14159 / K, left to right in double, where p = 2 x j x i wraps around as a signed
// 32-bit integer does. There are three ways to them: an estimate from the true angles with what
// the roundings of the angles change; their ends, and closer ones; and for what these leave open,
// the sums to the bit.
#pragma once

#include <cstdint>
#include <span>

#include "app/signal/ordered_sums.hpp"

namespace torve {

struct FourierSums {
  double cosines;
  double sines;
};

/// What the sums of a bin lie between, ends included.
struct FourierEnds {
  FourierSums low;
  FourierSums high;
};

/// The sums with angles that are not rounded, and how far off they are at most.
struct FourierEstimate {
  FourierSums sums;
  double angle_error;     // what the roundings of the stated angles do
  double addition_error;  // what those of the stated additions do
  double error;           // all else
};

/// The sums with angles that are not rounded, and how far off each may be.
struct TrueSums {
  FourierSums sums;
  double error;
};

/// 2 x j x i as a signed 32-bit product.
[[nodiscard]] constexpr std::int32_t wrapped_product(int j, int i) {
  return static_cast<std::int32_t>(2U * static_cast<std::uint32_t>(j) *
                                   static_cast<std::uint32_t>(i));
}

/// The sums of one bin, literally, with the library's sine and cosine.
[[nodiscard]] FourierSums plain_fourier_sums(std::span<const float> x, int bin);

/// How many bins the others take at a time.
inline constexpr int fourier_lanes = sum_lanes;

/// What a bin lies between by its estimate.
[[nodiscard]] FourierEnds ends_of(const FourierEstimate& estimate);

/// The ends of the sums of some bins, at most fourier_lanes, in any order; x holds at most 131072
/// finite values. A phasor a bin is turned from sample to sample, and set anew every 64; what the
/// rounding of each angle does is put in.
void fourier_sum_ends(std::span<const float> x, std::span<const int> bins,
                      std::span<FourierEnds> ends);

/// The same a 200th as far apart, in twice the time: each term is rounded as it is stated, and
/// most are known.
void fourier_close_ends(std::span<const float> x, std::span<const int> bins,
                        std::span<FourierEnds> ends);

/// The sums of some bins, to the bit; x as above, in three to ten times the time of their ends: at
/// worst that of the plain sums.
void literal_fourier_sums(std::span<const float> x, std::span<const int> bins,
                          std::span<FourierSums> sums);

}  // namespace torve
