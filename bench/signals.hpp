// Signals for tests and benches, and files as text.
#pragma once

#include <cmath>
#include <random>
#include <vector>

namespace torve {

/// A sine in noise, amplitudes about `level`.
inline std::vector<float> sine_in_noise(std::size_t n, double level, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> noise;
  std::vector<float> x(n);
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = static_cast<float>(level *
                              (std::sin(static_cast<double>(i) * 0.0626) + 0.2 * noise(random)));
  }
  return x;
}

/// Syllables of a buzz with a slow melody, as a recording between -1 and 1.
inline std::vector<float> recorded(std::size_t n, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> noise;
  std::vector<float> x(n);
  double phase = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const auto t = static_cast<double>(i);
    phase += 0.018 * (1 + 0.2 * std::sin(t * 0.0003));
    const double syllable = std::max(0.0, std::sin(t * 0.0007));
    double buzz = 0;
    for (int k = 1; k < 12; ++k)
      buzz += std::sin(k * phase) / k;
    x[i] = static_cast<float>(0.4 * syllable * syllable * buzz + 0.003 * noise(random));
  }
  return x;
}

/// The same as 16-bit integers.
inline std::vector<float> integers(std::vector<float> x, double level) {
  for (float& value : x)
    value = static_cast<float>(std::round(static_cast<double>(value) * level));
  return x;
}

}  // namespace torve
