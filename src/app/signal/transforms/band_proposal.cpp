#include "app/signal/transforms/band_proposal.hpp"

#include <algorithm>
#include <cmath>
#include <deque>
#include <new>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/transforms/close_chirp.hpp"

namespace torve::transforms {

namespace {

static_assert(BandProposal::tile == half);

constexpr int least_size = 1024;  // from here on proposals pay
constexpr int least_bins = 64;
constexpr double margin = 1.01;  // for the roundings of the bound
constexpr double terms_slack = 10 * unit;

/// R in a half block: its sum and how many are not zero.
struct Sizes {
  double sum = 0;
  double count = 0;
};

/// Bins of one range within one block of the chirp.
struct Block {
  int number = 0;
  double last_bin = 0;
  Sizes first;
  Sizes second;
  CloseBlock values = {};  // A - iB
};

/// The samples of a tile: their sums so far, and what makes their bound.
struct Samples {
  CloseTile sums;
  alignas(64) double value[half];     // about
  alignas(64) double sizes[half];     // bounds the sum of the sizes of all partial sums
  alignas(64) double argument[half];  // bounds what the roundings of the argument do
  alignas(64) double cosine[half];    // of w(t)
  alignas(64) double sine[half];
};

/// Takes a block into the bound, when it is in the sums; t: of the first sample.
TORVE_CLONES void take_block(Samples& samples, const Block& block, double offset, double t,
                             double size) {
  constexpr double slightly = 1 + 0x1p-50;
  const double per_size = slightly / size;
  const double bin = block.last_bin;
  const double sum = block.first.sum + block.second.sum;
  for (int s = 0; s < half; ++s) {
    const double value =
        offset + (samples.sums.re[s] * samples.cosine[s] - samples.sums.im[s] * samples.sine[s]);
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
  Proposal(const BandTerms& terms, int first_bin, int last_bin)
      : offset_(terms.offset),
        size_(terms.size),
        first_bin_(first_bin),
        chirp_(terms.size, {first_bin, last_bin - first_bin + 1}, {0, terms.size}) {
    for (const BinRange& range : terms.ranges) {
      const int last = std::min(range.last, last_bin);
      for (int j = std::max(range.first, first_bin); j <= last; j = end_of_block(j))
        load_block(terms, j, std::min(end_of_block(j) - 1, last));
    }
  }

  [[nodiscard]] bool finite() const { return std::isfinite(error_); }

  void propose(int first, std::span<BandEstimate, tile> estimates) override {
    samples_.sums = {};
    for (int s = 0; s < half; ++s) {
      const SplitSineCosine& w = chirp_(first + s);
      samples_.value[s] = offset_;
      samples_.sizes[s] = samples_.argument[s] = 0;
      samples_.cosine[s] = w.cosine;
      samples_.sine[s] = w.sine;
    }
    for (const Block& block : blocks_) {
      chirp_.convolve(block.values, block.number, first / half, part_);
      add(part_, samples_.sums);
      take_block(samples_, block, offset_, first, size_);
    }
    for (int s = 0; s < half; ++s) {
      const double value = offset_ + real_product(samples_.sums, s, chirp_(first + s));
      estimates[static_cast<std::size_t>(s)] = {
          .value = value,
          .angle_error = margin * samples_.argument[s],
          .addition_error = margin * unit * samples_.sizes[s],
          .error = error_ + 2 * unit * (std::fabs(value) + std::fabs(offset_)) + vanished};
    }
  }

 private:
  /// The first bin behind the block of the chirp that a bin is in.
  [[nodiscard]] int end_of_block(int bin) const { return bin - (bin - first_bin_) % half + half; }

  /// The bins first .. last, within one block of the chirp; nothing if all are zero.
  void load_block(const BandTerms& terms, int first, int last) {
    const auto a = [&](int j) { return terms.a[static_cast<std::size_t>(j)]; };
    const auto b = [&](int j) { return terms.b[static_cast<std::size_t>(j)]; };
    Sizes sizes[2];
    double squares = 0;
    for (int j = first; j <= last; ++j) {
      const double square = a(j) * a(j) + b(j) * b(j);
      if (square == 0) continue;
      Sizes& of_half = sizes[(j - first_bin_) % half < half / 2 ? 0 : 1];
      of_half.sum += std::sqrt(square);
      of_half.count += 1;
      squares += square;
    }
    const double sum = sizes[0].sum + sizes[1].sum;
    if (sum == 0) return;
    Block& block = blocks_.emplace_back();
    block.number = (first - first_bin_) / half;
    block.last_bin = static_cast<double>(last);
    block.first = sizes[0];
    block.second = sizes[1];
    error_ += margin *
              (CloseChirp::begin(block.values, squares) + (close_turns_slack + terms_slack) * sum);
    for (int j = first; j <= last; ++j) {
      const SplitSineCosine& w = chirp_(j);
      const DoubleDouble cosine = {w.cosine, w.cosine_rest};
      const DoubleDouble sine = {w.sine, w.sine_rest};
      CloseChirp::set(block.values, (j - first_bin_) % half,
                      sum_of_products({a(j), 0}, cosine, {b(j), 0}, sine),
                      sum_of_products({a(j), 0}, sine, {-b(j), 0}, cosine));
    }
    CloseChirp::end(block.values);
  }

  double offset_;
  int size_;
  int first_bin_;
  CloseChirp chirp_;
  std::deque<Block> blocks_;
  double error_ = 0;
  Samples samples_ = {};
  CloseTile part_ = {};
};

}  // namespace

std::unique_ptr<BandProposal> BandProposal::make(const BandTerms& terms) try {
  int bins = 0;
  int first_bin = terms.size;
  int last_bin = 0;
  for (const BinRange& range : terms.ranges) {
    for (int j = range.first; j <= range.last; ++j) {
      const auto i = static_cast<std::size_t>(j);
      if (terms.a[i] == 0 && terms.b[i] == 0) continue;
      ++bins;
      first_bin = std::min(first_bin, j);
      last_bin = std::max(last_bin, j);
    }
  }
  if (terms.size < least_size || bins < least_bins) return nullptr;
  auto proposal = std::make_unique<Proposal>(terms, first_bin, last_bin);
  return proposal->finite() ? std::move(proposal) : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace torve::transforms
