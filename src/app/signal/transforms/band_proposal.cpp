#include "app/signal/transforms/band_proposal.hpp"

#include <algorithm>
#include <cmath>
#include <new>
#include <vector>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/transforms/chirp.hpp"

namespace torve::transforms {

namespace {

static_assert(BandProposal::tile == half);

constexpr int least_size = 1024;  // from here on proposals pay
constexpr int least_bins = 64;
constexpr double margin = 1.01;  // for the roundings of the bound
constexpr double sines_slack = 20 * unit;

/// R in a half block: its sum and how many are not zero.
struct Sizes {
  double sum = 0;
  double count = 0;
};

/// Bins of one range within one block of the chirp.
struct Block {
  int number;
  double last_bin;
  Sizes first;
  Sizes second;
  Wave values;  // the transform of (A - iB) w
};

/// The samples of a tile: their sums so far, and what makes their bound.
struct Samples {
  alignas(64) double value[half];
  alignas(64) double sizes[half];     // bounds the sum of the sizes of all partial sums
  alignas(64) double argument[half];  // bounds what the roundings of the argument do
  alignas(64) double cosine[half];    // of w(t)
  alignas(64) double sine[half];
};

/// Adds a block's part; t: of the first sample.
TORVE_CLONES void add_block(Samples& samples, const Wave& part, const Block& block, double t,
                            double size) {
  constexpr double slightly = 1 + 0x1p-50;
  const double per_size = slightly / size;
  const double bin = block.last_bin;
  const double sum = block.first.sum + block.second.sum;
  for (int s = 0; s < half; ++s) {
    const double re = part.re[s] * (1.0 / points);
    const double im = part.im[s] * (1.0 / points);
    const double value = samples.value[s] + (re * samples.cosine[s] - im * samples.sine[s]);
    // Two more: the rounding of the value here, and of what is added to it.
    samples.sizes[s] += block.first.count * (std::fabs(samples.value[s]) + block.first.sum) +
                        (block.second.count + 2) * (std::fabs(value) + block.second.sum);
    const double turn = (t + s) * (2 * short_pi * slightly);
    const double product = turn * bin * slightly;
    samples.argument[s] += sum * (half_ulp(turn) * bin * per_size + half_ulp(product) * per_size +
                                  half_ulp(product * per_size));
    samples.value[s] = value;
  }
}

class Proposal : public BandProposal {
 public:
  Proposal(const BandTerms& terms, int last_bin)
      : offset_(terms.offset),
        size_(terms.size),
        chirp_(terms.size, last_bin / half + 1, (terms.size - 1) / half + 1) {
    for (const BinRange& range : terms.ranges) {
      for (int j = range.first; j <= std::min(range.last, last_bin); j = (j / half + 1) * half)
        load_block(terms, j, std::min({j / half * half + half - 1, range.last, last_bin}));
    }
  }

  [[nodiscard]] bool finite() const { return std::isfinite(constant_error_); }

  void propose(int first, std::span<BandEstimate, tile> estimates) override {
    for (int s = 0; s < half; ++s) {
      const SineCosine& w = chirp_(first + s);
      samples_.value[s] = offset_;
      samples_.sizes[s] = samples_.argument[s] = 0;
      samples_.cosine[s] = w.cosine;
      samples_.sine[s] = w.sine;
    }
    for (const Block& block : blocks_) {
      chirp_.convolve(block.values, block.number, first / half, part_);
      add_block(samples_, part_, block, first, size_);
    }
    for (std::size_t s = 0; s < half; ++s) {
      estimates[s] = {.value = samples_.value[s],
                      .angle_error = margin * samples_.argument[s],
                      .addition_error = margin * unit * samples_.sizes[s],
                      .error = constant_error_ + vanished};
    }
  }

 private:
  /// The bins first .. last, within one block of the chirp; nothing if all are zero.
  void load_block(const BandTerms& terms, int first, int last) {
    Block block = {.number = first / half,
                   .last_bin = static_cast<double>(last),
                   .first = {},
                   .second = {},
                   .values = {}};
    double squares = 0;
    for (int j = first; j <= last; ++j) {
      const double a = terms.a[static_cast<std::size_t>(j)];
      const double b = terms.b[static_cast<std::size_t>(j)];
      if (a == 0 && b == 0) continue;
      const SineCosine& w = chirp_(j);
      block.values.re[j % half] = a * w.cosine + b * w.sine;
      block.values.im[j % half] = a * w.sine - b * w.cosine;
      Sizes& sizes = j % half < half / 2 ? block.first : block.second;
      sizes.sum += std::sqrt(a * a + b * b);
      sizes.count += 1;
      squares += a * a + b * b;
    }
    const double sum = block.first.sum + block.second.sum;
    if (sum == 0) return;
    constant_error_ += margin * sines_slack * sum + convolution_error(squares);
    transform(block.values);
    blocks_.push_back(block);
  }

  double offset_;
  int size_;
  Chirp chirp_;
  std::vector<Block> blocks_;
  double constant_error_ = 0;
  Samples samples_ = {};
  Wave part_ = {};
};

}  // namespace

std::unique_ptr<BandProposal> BandProposal::make(const BandTerms& terms) try {
  int bins = 0;
  int last_bin = 0;
  for (const BinRange& range : terms.ranges) {
    for (int j = range.first; j <= range.last; ++j) {
      const auto i = static_cast<std::size_t>(j);
      if (terms.a[i] == 0 && terms.b[i] == 0) continue;
      ++bins;
      last_bin = std::max(last_bin, j);
    }
  }
  if (terms.size < least_size || bins < least_bins) return nullptr;
  auto proposal = std::make_unique<Proposal>(terms, last_bin);
  return proposal->finite() ? std::move(proposal) : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace torve::transforms
