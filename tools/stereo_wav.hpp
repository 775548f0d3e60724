// A recording as a file that every sound program reads.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace torve {

/// A signal of 44,100 samples a second at 48,000: 160 samples for 147, interpolated with 64 values
/// of sin(pi t) / (pi t) under a Hann window. What lies before and behind it counts as 0.
[[nodiscard]] std::vector<double> at_48000(std::span<const double> signal);

/// A WAV file of two channels, 48,000 frames a second, 16 bits; as long as the shorter one. Values
/// are within -1 .. 1.
[[nodiscard]] std::string stereo_wav(std::span<const double> left, std::span<const double> right);

}  // namespace torve
