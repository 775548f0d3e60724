#include "app/signal/transforms/close_sums.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <vector>

#include "app/signal/clones.hpp"
#include "app/signal/double_double.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/transforms/close_chirp.hpp"
#include "app/signal/transforms/close_turn.hpp"
#include "app/signal/transforms/cut_sums.hpp"

namespace torve::transforms {

namespace {

static_assert(CloseSums::tile == half);

constexpr double margin = 1.01;  // for the roundings of the bound
// Of a cut: its sums, turned, 2.2 u, and taken out and put in again, which doubles that.
constexpr double cut_slack = 2 * (close_cut_slack + 3 * unit);

/// x times a component of w.
DoubleDouble times(double x, double w, double w_rest) {
  const DoubleDouble product = exact_product(x, w);
  return {product.high, product.low + x * w_rest};
}

/// A turn for each bin of a tile.
struct Turns {
  alignas(64) double cosine[half];
  alignas(64) double sine[half];
  alignas(64) double cosine_rest[half];
  alignas(64) double sine_rest[half];
};

TORVE_CLONES void turn(CloseTile& part, const Turns& turns) {
  for (int s = 0; s < half; ++s) {
    const DoubleDouble re = {part.re[s], part.re_rest[s]};
    const DoubleDouble im = {part.im[s], part.im_rest[s]};
    const DoubleDouble cosine = {turns.cosine[s], turns.cosine_rest[s]};
    const DoubleDouble sine = {turns.sine[s], turns.sine_rest[s]};
    const DoubleDouble turned_re = sum_of_products(re, cosine, negative(im), sine);
    const DoubleDouble turned_im = sum_of_products(re, sine, im, cosine);
    part.re[s] = turned_re.high;
    part.re_rest[s] = turned_re.low;
    part.im[s] = turned_im.high;
    part.im_rest[s] = turned_im.low;
  }
}

class Sums : public CloseSums {
 public:
  Sums(std::span<const float> x, int first, int last)
      : x_(x),
        size_(static_cast<int>(x.size())),
        first_(first),
        last_(last),
        chirp_(size_, {0, size_}, {first, last - first + 1}),
        blocks_(index(blocks_of(size_))) {
    for (std::uint64_t q = 0; q < most_wraps; ++q)
      back_[q] = close_turn(q << 32, size_);
    for (int b = 0; b < blocks_of(size_); ++b)
      load_block(x, b * half, blocks_[index(b)]);
  }

  [[nodiscard]] bool finite() const { return std::isfinite(error_); }

  void find(int first_bin, std::span<TrueSums, tile> sums) override {
    tile_ = {};
    std::ranges::fill(cut_error_, 0);
    for (int b = 0; b < blocks_of(size_); ++b) {
      chirp_.convolve(blocks_[index(b)], b, (first_bin - first_) / half, part_);
      const std::int64_t first = std::int64_t{b} * half;
      wrap({first, std::min<std::int64_t>(first + half, size_) - 1}, first_bin);
      add(part_, tile_);
    }
    for (int j = first_bin; j <= std::min(first_bin + half - 1, last_); ++j)
      sums[index(j - first_bin)] = sum_of(j, j - first_bin);
  }

 private:
  static constexpr std::size_t index(int i) { return static_cast<std::size_t>(i); }
  static constexpr int blocks_of(int count) { return (count + half - 1) / half; }

  void load_block(std::span<const float> x, int first, CloseBlock& block) {
    const int end = std::min(first + half, size_);
    double size = 0;
    double squares = 0;
    for (int i = first; i < end; ++i) {
      const double value = static_cast<double>(x[index(i)]);
      size += std::fabs(value);
      squares += value * value;
    }
    error_ += margin * (CloseChirp::begin(block, squares) + close_turns_slack * size);
    for (int i = first; i < end; ++i) {
      const double value = static_cast<double>(x[index(i)]);
      const SplitSineCosine& w = chirp_(i);
      CloseChirp::set(block, i - first, times(value, w.cosine, w.cosine_rest),
                      times(value, w.sine, w.sine_rest));
    }
    CloseChirp::end(block);
  }

  /// Turns a block's part back by as many 2^32 as its products wrap by; where it wraps in the
  /// block, it is cut first.
  void wrap(const SampleRange& block, int first_bin) {
    if (wraps(2 * block.last * std::min(first_bin + half - 1, last_)) == 0) return;
    std::vector<int> cut_bins;
    for (int s = 0; s < half; ++s) {
      const std::int64_t step = 2 * std::int64_t{first_bin + s};
      const std::int64_t before = wraps(step * block.first);
      const SplitSineCosine& back = back_[static_cast<std::size_t>(before) % most_wraps];
      turns_.cosine[s] = back.cosine;
      turns_.sine[s] = -back.sine;
      turns_.cosine_rest[s] = back.cosine_rest;
      turns_.sine_rest[s] = -back.sine_rest;
      if (before != wraps(step * block.last) && first_bin + s <= last_)
        cut_bins.push_back(first_bin + s);
    }
    for (std::size_t i = 0; i < cut_bins.size(); i += cut_lanes) {
      const auto bins = std::span(cut_bins).subspan(i);
      cut(block, bins.first(std::min<std::size_t>(cut_lanes, bins.size())), first_bin);
    }
    turn(part_, turns_);
  }

  /// close_turn, backwards for negative products.
  [[nodiscard]] SplitSineCosine turn_of(std::int64_t product) const {
    SplitSineCosine turn = close_turn(static_cast<std::uint64_t>(std::abs(product)), size_);
    if (product < 0) {
      turn.sine = -turn.sine;
      turn.sine_rest = -turn.sine_rest;
    }
    return turn;
  }

  /// Turns what lies behind the wrap by one 2^32 more. What is on the shorter side is summed.
  void cut(const SampleRange& block, std::span<const int> bins, int first_bin) {
    const CutPlan plan = plan_cuts(block, bins);
    CloseCuts cuts;
    for (std::size_t l = 0; l < cut_lanes; ++l) {
      const std::int64_t j = bins[std::min(l, bins.size() - 1)];
      const std::int64_t direction = plan.before ? 1 : -1;
      cuts.turn[l] = turn_of(direction * 2 * j);
      cuts.block_turn[l] = turn_of(direction * 2 * j * close_cut_block);
      cuts.start[l] = close_turn(static_cast<std::uint64_t>(2 * j * plan.from), size_);
    }
    sum_closely_to_cut(x_.data(), plan, cuts);
    const double error = margin * cut_slack * size_of(plan);
    for (std::size_t l = 0; l < bins.size(); ++l) {
      const int s = bins[l] - first_bin;
      const SplitSineCosine& w = chirp_(bins[l]);
      const double re = cuts.re[l] * w.cosine + cuts.im[l] * w.sine;
      const double im = cuts.im[l] * w.cosine - cuts.re[l] * w.sine;
      // What is summed moves by one turn more, or all but that.
      const DoubleDouble moved_re = plan.before ? with_added(re_at(s), -re) : DoubleDouble{re, 0};
      const DoubleDouble moved_im = plan.before ? with_added(im_at(s), -im) : DoubleDouble{im, 0};
      const DoubleDouble less_1 = with_added({back_[1].cosine, back_[1].cosine_rest}, -1);
      const DoubleDouble sine = {back_[1].sine, back_[1].sine_rest};
      add_to(part_.re, part_.re_rest, s, sum_of_products(moved_re, less_1, moved_im, sine));
      add_to(part_.im, part_.im_rest, s,
             sum_of_products(moved_im, less_1, negative(moved_re), sine));
      cut_error_[index(s)] += error;
    }
  }

  [[nodiscard]] DoubleDouble re_at(int s) const { return {part_.re[s], part_.re_rest[s]}; }
  [[nodiscard]] DoubleDouble im_at(int s) const { return {part_.im[s], part_.im_rest[s]}; }

  static void add_to(double* highs, double* lows, int s, const DoubleDouble& more) {
    const DoubleDouble sum = exact_sum(highs[s], more.high);
    highs[s] = sum.high;
    lows[s] += sum.low + more.low;
  }

  /// The sum of |x| of what is summed up to a cut.
  [[nodiscard]] double size_of(const CutPlan& plan) const {
    const std::int64_t first = plan.before ? plan.from : plan.from - plan.largest_count + 1;
    double size = 0;
    for (const float value :
         x_.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(plan.largest_count)))
      size += std::fabs(static_cast<double>(value));
    return size;
  }

  [[nodiscard]] TrueSums sum_of(int bin, int s) const {
    const SplitSineCosine& w = chirp_(bin);
    const FourierSums sums = {real_product(tile_, s, w), imaginary_product(tile_, s, w)};
    const double largest = std::max(std::fabs(sums.cosines), std::fabs(sums.sines));
    return {sums, error_ + cut_error_[index(s)] + 4 * unit * largest + vanished};
  }

  std::span<const float> x_;
  int size_;
  int first_;
  int last_;
  CloseChirp chirp_;
  std::vector<CloseBlock> blocks_;
  std::array<SplitSineCosine, most_wraps> back_;
  double error_ = 0;
  std::array<double, half> cut_error_ = {};
  Turns turns_ = {};
  CloseTile part_ = {};
  CloseTile tile_ = {};
};

}  // namespace

std::unique_ptr<CloseSums> CloseSums::make(std::span<const float> x, int first, int last) try {
  auto sums = std::make_unique<Sums>(x, first, last);
  return sums->finite() ? std::move(sums) : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace torve::transforms
