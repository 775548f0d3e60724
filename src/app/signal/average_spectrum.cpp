#include "app/signal/average_spectrum.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <numbers>

#include "app/signal/say.hpp"
#include "base/files.hpp"

namespace torve {

// A transform of B points, whatever B is, by a convolution (Bluestein 1970): with
// i j = (i^2 + j^2 - (j - i)^2) / 2 the sum of y(i) exp(-2 pi i j / B) is u(j) times the sum of
// y(i) u(i) conj(u(j - i)), u(n) = exp(-pi i n^2 / B). Powers need no u(j), whose modulus is 1.
AverageSpectrum::AverageSpectrum(int block)
    : block_(static_cast<std::size_t>(block)),
      transform_(block_ + block_ / 2 + 1),
      chirp_re_(transform_.size()),
      chirp_im_(transform_.size()),
      re_(transform_.size()),
      im_(transform_.size()),
      sums_(block_ / 2 + 1) {
  const std::size_t size = transform_.size();
  for (std::size_t n = 0; n < block_; ++n) {
    const double turns = static_cast<double>(n) / static_cast<double>(block_);
    window_.push_back(0.5 - 0.5 * std::cos(2 * std::numbers::pi * turns));
    // The square modulo 2 B: of whole numbers nothing is lost.
    const double half_turns =
        static_cast<double>(n * n % (2 * block_)) / static_cast<double>(block_);
    turn_re_.push_back(std::cos(std::numbers::pi * half_turns));
    turn_im_.push_back(-std::sin(std::numbers::pi * half_turns));
    // What is needed of it is -(B - 1) .. trunc(B/2); the transform is a circle.
    chirp_re_[(size - n) % size] = turn_re_[n];
    chirp_im_[(size - n) % size] = -turn_im_[n];
    if (n <= block_ / 2) {
      chirp_re_[n] = turn_re_[n];
      chirp_im_[n] = -turn_im_[n];
    }
  }
  transform_.forward({chirp_re_.data(), chirp_im_.data()});
}

void AverageSpectrum::add(std::span<const float> samples) {
  while (!samples.empty()) {
    const std::size_t part = std::min(block_ - waiting_.size(), samples.size());
    waiting_.insert(waiting_.end(), samples.begin(),
                    samples.begin() + static_cast<std::ptrdiff_t>(part));
    samples = samples.subspan(part);
    if (waiting_.size() < block_) return;
    add_block();
    const auto step = static_cast<std::ptrdiff_t>(block_ - block_ / 2);
    waiting_.erase(waiting_.begin(), waiting_.begin() + step);
  }
}

void AverageSpectrum::add_block() {
  std::ranges::fill(re_, 0);
  std::ranges::fill(im_, 0);
  for (std::size_t i = 0; i < block_; ++i) {
    const double value = window_[i] * static_cast<double>(waiting_[i]);
    re_[i] = value * turn_re_[i];
    im_[i] = value * turn_im_[i];
  }
  const transforms::Parts x = {re_.data(), im_.data()};
  transform_.forward(x);
  for (std::size_t f = 0; f < transform_.size(); ++f) {
    const double re = re_[f] * chirp_re_[f] - im_[f] * chirp_im_[f];
    im_[f] = re_[f] * chirp_im_[f] + im_[f] * chirp_re_[f];
    re_[f] = re;
  }
  transform_.backward(x);
  for (std::size_t j = 0; j < sums_.size(); ++j)
    sums_[j] += re_[j] * re_[j] + im_[j] * im_[j];
  ++blocks_;
}

std::vector<float> AverageSpectrum::powers() const {
  double total = 0;
  for (const double weight : window_)
    total += weight;
  const double unit = total * static_cast<double>(transform_.size());
  std::vector<float> powers;
  for (std::size_t j = 0; j < sums_.size(); ++j) {
    const double mean = sums_[j] / (unit * unit * std::max(blocks_, 1));
    powers.push_back(static_cast<float>(j == 0 ? mean : 4 * mean));
  }
  return powers;
}

Outcome average_spectrum_of_file(const std::string& res_in, const std::string& spe_out, int block,
                                 const SampleRange& range) try {
  const FilePtr input = open_regular_file(res_in, "rb");
  if (!input) return input_failure(res_in);
  LongSampleReader reader(input.get(), range);
  AverageSpectrum spectrum(block);
  static std::array<float, 1 << 14> samples;
  for (std::size_t got; (got = reader.read(samples)) > 0;)
    spectrum.add(std::span(samples).first(got));
  if (spectrum.blocks() == 0) return {.cause = Cause::too_few_samples, .name = res_in};
  OutputFile output(spe_out);
  if (!output) return output.outcome();
  say("average of %d blocks of %d samples\n", spectrum.blocks(), block);
  write_spectrum(output, block, spectrum.powers());
  static_cast<void>(output.finish());
  return output.outcome();
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

}  // namespace torve
