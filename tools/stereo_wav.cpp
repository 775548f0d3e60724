#include "stereo_wav.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "series.hpp"

namespace torve {

namespace {

constexpr int new_samples = 160;  // for so many old ones:
constexpr int old_samples = 147;
constexpr int reach = 32;  // of the interpolation, samples to either side

/// What the samples 1 - reach .. reach before and behind contribute `fraction` of one behind the
/// last one before.
std::array<double, 2 * reach> weights(double fraction) {
  std::array<double, 2 * reach> result;
  const double sine = exponential({0, pi * fraction}).imag();
  for (int k = 0; k < 2 * reach; ++k) {
    const int sample = k + 1 - reach;
    const double distance = fraction - sample;
    const double window = 0.5 + 0.5 * exponential({0, pi * distance / reach}).real();
    const double wave = (sample % 2 == 0 ? sine : -sine) / (pi * distance);
    result.at(static_cast<std::size_t>(k)) = distance == 0 ? 1 : window * wave;
  }
  return result;
}

void append(std::string& bytes, std::uint32_t number, int size) {
  for (int shift = 0; shift < 8 * size; shift += 8)
    bytes += static_cast<char>(number >> shift & 0xff);
}

}  // namespace

std::vector<double> at_48000(std::span<const double> signal) {
  std::array<std::array<double, 2 * reach>, new_samples> phases;
  for (int phase = 0; phase < new_samples; ++phase)
    phases.at(static_cast<std::size_t>(phase)) =
        weights(static_cast<double>(phase) / static_cast<double>(new_samples));
  std::vector<double> result(signal.size() * new_samples / old_samples);
  for (std::size_t n = 0; n < result.size(); ++n) {
    const auto before = static_cast<std::ptrdiff_t>(n * old_samples / new_samples);
    const auto& weight = phases.at(n * old_samples % new_samples);
    for (int k = 0; k < 2 * reach; ++k) {
      const std::ptrdiff_t i = before + k + 1 - reach;
      if (i < 0 || i >= static_cast<std::ptrdiff_t>(signal.size())) continue;
      result[n] += weight.at(static_cast<std::size_t>(k)) * signal[static_cast<std::size_t>(i)];
    }
  }
  return result;
}

std::string stereo_wav(std::span<const double> left, std::span<const double> right) {
  constexpr std::uint32_t rate = 48000;
  constexpr std::uint32_t frame = 4;
  const std::size_t frames = std::min(left.size(), right.size());
  const auto size = static_cast<std::uint32_t>(frames) * frame;
  std::string bytes = "RIFF";
  append(bytes, size + 36, 4);
  bytes += "WAVEfmt ";
  append(bytes, 16, 4);  // of what follows
  append(bytes, 1, 2);   // integers
  append(bytes, 2, 2);   // channels
  append(bytes, rate, 4);
  append(bytes, rate * frame, 4);
  append(bytes, frame, 2);
  append(bytes, 16, 2);  // bits
  bytes += "data";
  append(bytes, size, 4);
  for (std::size_t i = 0; i < frames; ++i) {
    for (const double value : {left[i], right[i]})
      append(bytes, static_cast<std::uint32_t>(static_cast<int>(std::floor(value * 32767 + 0.5))),
             2);
  }
  return bytes;
}

}  // namespace torve
