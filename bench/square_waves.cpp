#include "bench/square_waves.hpp"

#include <cstdio>

#include "app/signal/band_values.hpp"
#include "app/signal/fourier_sums.hpp"
#include "app/signal/spectrum.hpp"
#include "base/number_text.hpp"
#include "bench/literal.hpp"

namespace torve {

using literal::Floats;

namespace {

/// Of half period `half`; odd ones begin with a step, the others with the zero of a spectrum.
Floats square_wave(int size, int half) {
  Floats x(static_cast<std::size_t>(size));
  const int zeros = half % 2 == 0 ? 1 : 0;
  for (int i = zeros; i < size; ++i)
    x[static_cast<std::size_t>(i)] = (i - zeros) / half % 2 == 0 ? 20'000.0F : -20'000.0F;
  return x;
}

struct Compared {
  long values = 0;
  long differing = 0;

  void count(bool same, const char* what, int half, int index) {
    ++values;
    if (same) return;
    ++differing;
    std::printf("%s %d of half period %d\n", what, index, half);
  }
};

void compare_bins(const Floats& x, const Spectrum& spectrum, int half, Compared& compared) {
  const int size = static_cast<int>(x.size());
  for (int j = 1; j <= size / 2; j += 1 + half % 3) {
    const FourierSums sums = plain_fourier_sums(x, j);
    const double a = 2 * sums.cosines / size;
    const double b = 2 * sums.sines / size;
    const auto i = static_cast<std::size_t>(j);
    const auto power = static_cast<double>(static_cast<float>(a * a + b * b));
    compared.count(spectrum.a[i] == static_cast<float>(a), "a", half, j);
    compared.count(spectrum.b[i] == static_cast<float>(b), "b", half, j);
    compared.count(same_fixed6(static_cast<double>(spectrum.power[i]), power), "power", half, j);
  }
}

void compare_samples(const BandSums& sums, int size, int half, int step, Compared& compared) {
  const auto values = band_values(sums, 0, size, [](int) {});
  for (int t = half % step; t < size; t += step) {
    const double value = values[static_cast<std::size_t>(t)];
    compared.count(same_fixed6(value, sums.plain_value(t)), "sample", half, t);
  }
}

}  // namespace

long check_square_waves(int first, int last) {
  constexpr int size = 10'000;
  constexpr int low = 2200 * size / 44100;
  constexpr int high = 5000 * size / 44100;
  Compared bins;
  Compared samples;
  for (int half = first; half <= last; ++half) {
    const Floats x = square_wave(size, half);
    Spectrum spectrum = compute_spectrum(x, [](int, int) {});
    settle_coefficients(x, {spectrum.a, spectrum.b, {}, spectrum.open}, 1, size / 2);
    compare_bins(x, spectrum, half, bins);
    spectrum.a.resize(size);
    spectrum.b.resize(size);
    const double mean = static_cast<double>(spectrum.a[0]) * 44100 / size;
    compare_samples({spectrum.a, spectrum.b, size, 0, {{{low, high}, {1, 0}}}}, size, half, 1,
                    samples);
    compare_samples({spectrum.a, spectrum.b, size, mean, {{{1, low - 1}, {high + 1, size / 2}}}},
                    size, half, 7, samples);
  }
  std::printf("%ld values of bins, %ld samples\n%ld differ\n", bins.values, samples.values,
              bins.differing + samples.differing);
  return bins.differing + samples.differing;
}

}  // namespace torve
