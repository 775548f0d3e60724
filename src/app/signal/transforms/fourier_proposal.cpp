#include "app/signal/transforms/fourier_proposal.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <vector>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/transforms/chirp.hpp"
#include "app/signal/transforms/close_turn.hpp"
#include "app/signal/transforms/cut_sums.hpp"

namespace torve::transforms {

namespace {

static_assert(FourierProposal::tile == half);

constexpr std::size_t least_size = 1024;  // from here on proposals pay
constexpr double margin = 1.01;           // for the roundings of the bound
constexpr double sines_slack = 20 * unit;
constexpr double cut_slack = 5 * half * unit;

/// |x| in a block: its sums in the two halves, how many there are, the sum of squares.
struct Sizes {
  double first = 0;
  double second = 0;
  double first_count = 0;
  double second_count = 0;
  double squares = 0;

  [[nodiscard]] double all() const { return first + second; }
};

/// The bins of a tile: their sums so far, and what makes their bound.
struct Bins {
  alignas(64) double re[half];
  alignas(64) double im[half];
  alignas(64) double length[half];    // of (re, im)
  alignas(64) double sizes[half];     // bounds the sum of the sizes of all partial sums
  alignas(64) double argument[half];  // bounds what the roundings of the argument do
  // Of the block at hand: the turn for wraps, the largest |p|.
  alignas(64) double cosine[half];
  alignas(64) double sine[half];
  alignas(64) double reach[half];
};

/// Adds a block's part.
TORVE_CLONES void add_block(Bins& bins, const Wave& part, const Sizes& x, double size) {
  constexpr double slightly = 1 + 0x1p-50;
  const double per_size = slightly / size;
  for (int s = 0; s < half; ++s) {
    const double part_re = part.re[s] * (1.0 / points);
    const double part_im = part.im[s] * (1.0 / points);
    const double re = bins.re[s] + (part_re * bins.cosine[s] - part_im * bins.sine[s]);
    const double im = bins.im[s] + (part_re * bins.sine[s] + part_im * bins.cosine[s]);
    const double length = std::sqrt(re * re + im * im);
    // Two more: the rounding of re and im here.
    bins.sizes[s] +=
        x.first_count * (bins.length[s] + x.first) + (x.second_count + 2) * (length + x.second);
    const double product = bins.reach[s] * (short_pi * slightly);
    bins.argument[s] +=
        (x.first + x.second) * (half_ulp(product) * per_size + half_ulp(product * per_size));
    bins.re[s] = re;
    bins.im[s] = im;
    bins.length[s] = length;
  }
}

class Proposal : public FourierProposal {
 public:
  explicit Proposal(std::span<const float> x)
      : x_(x),
        size_(static_cast<int>(x.size())),
        last_(size_ / 2),
        blocks_((size_ + half - 1) / half),
        chirp_(size_, blocks_, last_ / half + 1),
        in_(static_cast<std::size_t>(blocks_)),
        sizes_(static_cast<std::size_t>(blocks_)) {
    for (std::uint64_t q = 0; q < most_wraps; ++q)
      back_[q] = rounded_turn(q << 32, size_);
    for (int b = 0; b < blocks_; ++b)
      load_block(b);
  }

  [[nodiscard]] bool finite() const { return std::isfinite(constant_error_); }

  void propose(int first_bin, std::span<FourierEstimate, tile> estimates) override {
    bins_ = {};
    double cut_error = 0;
    for (int b = 0; b < blocks_; ++b) {
      chirp_.convolve(in_[index(b)], b, first_bin / half, wave_);
      find_turns(first_bin, b);
      for (std::size_t i = 0; i < cut_bins_.size(); i += cut_lanes) {
        const auto part = std::span(cut_bins_).subspan(i);
        cut(b, part.first(std::min<std::size_t>(cut_lanes, part.size())), first_bin);
      }
      if (!cut_bins_.empty()) cut_error += cut_slack * sizes_[index(b)].all();
      add_block(bins_, wave_, sizes_[index(b)], size_);
    }
    for (int j = first_bin; j <= std::min(first_bin + half - 1, last_); ++j)
      estimates[index(j - first_bin)] = estimate_of(j, j - first_bin, cut_error);
  }

 private:
  static constexpr std::size_t index(int i) { return static_cast<std::size_t>(i); }

  void load_block(int b) {
    Wave& wave = in_[index(b)];
    Sizes& sizes = sizes_[index(b)];
    const int first = b * half;
    for (int r = 0; r < std::min(half, size_ - first); ++r) {
      const double value = static_cast<double>(x_[index(first + r)]);
      wave.re[r] = value * chirp_(first + r).cosine;
      wave.im[r] = value * chirp_(first + r).sine;
      (r < half / 2 ? sizes.first : sizes.second) += std::fabs(value);
      (r < half / 2 ? sizes.first_count : sizes.second_count) += 1;
      sizes.squares += value * value;
    }
    constant_error_ += sines_slack * sizes.all() + convolution_error(sizes.squares);
    transform(wave);
  }

  /// Each bin's turn and reach in block b; and the bins whose product wraps in it.
  void find_turns(int first_bin, int b) {
    const std::int64_t first = std::int64_t{b} * half;
    const std::int64_t last = std::min<std::int64_t>(first + half, size_) - 1;
    cut_bins_.clear();
    for (int s = 0; s < half; ++s) {
      const std::int64_t step = 2 * std::int64_t{first_bin + s};
      const std::int64_t begin_wraps = wraps(step * first);
      const std::int64_t end_wraps = wraps(step * last);
      const SineCosine& back = back_[static_cast<std::size_t>(begin_wraps) % most_wraps];
      bins_.cosine[s] = back.cosine;
      bins_.sine[s] = -back.sine;
      bins_.reach[s] = static_cast<double>(std::max(std::abs(step * first - (begin_wraps << 32)),
                                                    std::abs(step * last - (end_wraps << 32))));
      if (begin_wraps == end_wraps || first_bin + s > last_) continue;
      bins_.reach[s] = 0x1p31;
      cut_bins_.push_back(first_bin + s);
    }
  }

  /// Turns what lies behind the wrap by one 2^32 more. What is on the shorter side is summed.
  void cut(int b, std::span<const int> bins, int first_bin) {
    const std::int64_t first = std::int64_t{b} * half;
    const CutPlan plan = plan_cuts({first, std::min<std::int64_t>(first + half, size_) - 1}, bins);
    Cuts cuts;
    for (std::size_t l = 0; l < cut_lanes; ++l) {
      const std::int64_t j = bins[std::min(l, bins.size() - 1)];
      cuts.turn[l] = rounded_turn(static_cast<std::uint64_t>(2 * j), size_);
      if (!plan.before) cuts.turn[l].sine = -cuts.turn[l].sine;
      cuts.start[l] = rounded_turn(static_cast<std::uint64_t>(2 * j * plan.from), size_);
    }
    sum_to_cut(x_.data(), plan, cuts);
    for (std::size_t l = 0; l < bins.size(); ++l) {
      const SineCosine w = chirp_(bins[l]);
      const SineCosine& back = back_[1];
      const int s = bins[l] - first_bin;
      const double summed_re = (cuts.re[l] * w.cosine + cuts.im[l] * w.sine) * points;
      const double summed_im = (cuts.im[l] * w.cosine - cuts.re[l] * w.sine) * points;
      const double rest_re = wave_.re[s] - summed_re;
      const double rest_im = wave_.im[s] - summed_im;
      const double re = plan.before ? rest_re : summed_re;
      const double im = plan.before ? rest_im : summed_im;
      wave_.re[s] = (plan.before ? summed_re : rest_re) + (re * back.cosine + im * back.sine);
      wave_.im[s] = (plan.before ? summed_im : rest_im) + (im * back.cosine - re * back.sine);
    }
  }

  [[nodiscard]] FourierEstimate estimate_of(int bin, int s, double cut_error) const {
    const SineCosine w = chirp_(bin);
    return {
        .sums = {bins_.re[s] * w.cosine - bins_.im[s] * w.sine,
                 bins_.re[s] * w.sine + bins_.im[s] * w.cosine},
        .angle_error = margin * bins_.argument[s],
        .addition_error = margin * unit * bins_.sizes[s],
        .error = margin * cut_error + constant_error_ + vanished,
    };
  }

  std::span<const float> x_;
  int size_;
  int last_;
  int blocks_;
  Chirp chirp_;
  std::array<SineCosine, most_wraps> back_;
  std::vector<Wave> in_;  // transforms of x w
  std::vector<Sizes> sizes_;
  double constant_error_ = 0;
  Bins bins_ = {};
  Wave wave_ = {};
  std::vector<int> cut_bins_;
};

}  // namespace

std::unique_ptr<FourierProposal> FourierProposal::make(std::span<const float> x) try {
  if (x.size() < least_size) return nullptr;
  auto proposal = std::make_unique<Proposal>(x);
  return proposal->finite() ? std::move(proposal) : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace torve::transforms
