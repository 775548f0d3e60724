// The power spectrum of a signal of any length, averaged over blocks (Welch, "The use of fast
// Fourier transform for the estimation of power spectra", IEEE Transactions on Audio and
// Electroacoustics 15, 1967).
//
// Blocks of B samples begin every B - trunc(B/2) samples, as many as fit in whole. With the Hann
// window
//   w(i) = 1/2 - 1/2 cos(2 pi i / B),  W = sum of w(i), i = 0 .. B-1,
// the power of bin j is the mean over the blocks of
//   P(0) = (sum of w(i) x(i))^2 / W^2
//   P(j) = 4 |sum of w(i) x(i) exp(-2 pi i j / B)|^2 / W^2,  j = 1 .. trunc(B/2),
// so that a sine of amplitude A has A^2 at its bin, as in the direct spectrum (spectrum.hpp).
// Nothing is put before the first sample, and pi is pi.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "app/signal/sample_file.hpp"
#include "app/signal/transforms/long_transform.hpp"
#include "base/outcome.hpp"

namespace torve {

inline constexpr int least_block = 16;
inline constexpr int most_block = most_samples;

class AverageSpectrum {
 public:
  /// For blocks of so many samples, least_block to most_block.
  explicit AverageSpectrum(int block);

  /// Takes the samples that follow those before.
  void add(std::span<const float> samples);

  [[nodiscard]] int blocks() const { return blocks_; }
  /// The powers of the bins 0 .. trunc(B/2); all 0 without a whole block.
  [[nodiscard]] std::vector<float> powers() const;

 private:
  void add_block();

  std::size_t block_;
  transforms::LongTransform transform_;
  std::vector<double> window_;
  std::vector<double> turn_re_, turn_im_;    // exp(-pi i n^2 / B)
  std::vector<double> chirp_re_, chirp_im_;  // the transform of its conjugate
  std::vector<double> re_, im_;
  std::vector<float> waiting_;
  std::vector<double> sums_;
  int blocks_ = 0;
};

/// Writes the averaged spectrum of a part of a sample file as a spectrum file of size `block`. With
/// fewer samples than a block the output stays as it was.
Outcome average_spectrum_of_file(const std::string& res_in, const std::string& spe_out, int block,
                                 const SampleRange& range);

}  // namespace torve
