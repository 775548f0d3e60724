// The power spectrum of a signal, by a direct transform without a window.
//
// Its coefficients stay in the work buffer, where the filters find them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/signal/open_bins.hpp"
#include "app/signal/sample_file.hpp"
#include "base/outcome.hpp"

namespace torve {

/// The fewest values, the leading 0 included, that are transformed.
inline constexpr int least_spectrum_size = 10000;

/// Coefficients of the bins 0 .. K/2: x(i) is about the mean a(0) plus the sum over the other bins
/// of a(j) cos(2 pi j i / K) + b(j) sin(2 pi j i / K). The power is a^2 + b^2, taken before a and b
/// become floats; power(0) is the mean squared, b(0) is 0.
struct Spectrum {
  std::vector<float> a;
  std::vector<float> b;
  std::vector<float> power;
  std::vector<std::uint8_t> open;  // a and b are near the literal ones, but not proved to be these
};

/// The spectrum of x(0 .. K-1). `progress` is told each bin about to be computed, 1 .. K/2, in
/// order. The text of every power is that of the literal sums.
[[nodiscard]] Spectrum compute_spectrum(std::span<const float> x,
                                        void (*progress)(int bin, int last));

/// Makes the open coefficients of the bins first .. last those of the literal sums.
void settle_coefficients(std::span<const float> x, const BinTable& table, int first, int last);

/// The same for the work buffer, whatever spectra its bins come from. When it is cancelled some are
/// settled, the others still open.
void settle_stored_coefficients(int first, int last);

/// How many of these bins have open coefficients in the work buffer.
[[nodiscard]] int open_stored_coefficients(int first, int last);

/// Writes the spectrum of a part of a sample file as a spectrum file and leaves its coefficients in
/// the work buffer, open ones among them. `samples` is "all" or a decimal count N: at most N - 1
/// values are taken, because the first goes to x(1) and x(0) is 0. With fewer than
/// least_spectrum_size values the output is empty, unless it is the input, and what was there is
/// kept.
Outcome transform_file(const std::string& res_in, const std::string& spe_out,
                       const std::string& samples, const SampleRange& range = {});

/// Of which file the coefficients in the work buffer are, and what the spectrum was written to; no
/// names before the first.
struct Transformed {
  std::string input, output, samples;
};
[[nodiscard]] const Transformed& last_transformed();

/// transform_file of the whole file; 0, or 1 if it is not done.
int power_spectrum(const std::string& res_in, const std::string& spe_out,
                   const std::string& samples);

}  // namespace torve
