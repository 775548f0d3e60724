#include "app/signal/transforms/cut_sums.hpp"

#include <algorithm>

#include "app/signal/clones.hpp"

namespace torve::transforms {

namespace {

/// x from a plan's first sample on, in its order.
struct Samples {
  const float* first;
  int step;

  Samples(const float* x, const CutPlan& plan) : first(x + plan.from), step(plan.before ? 1 : -1) {}
  TORVE_INLINE double operator[](int n) const { return static_cast<double>(first[n * step]); }
};

TORVE_CLONES void sum(const Samples& x, const CutPlan& plan, Cuts& cuts) {
  double count[cut_lanes];
  double cosine[cut_lanes];
  double sine[cut_lanes];
  double turn_cosine[cut_lanes];
  double turn_sine[cut_lanes];
  double re[cut_lanes] = {};
  double im[cut_lanes] = {};
  for (int l = 0; l < cut_lanes; ++l) {
    count[l] = plan.count[l];
    cosine[l] = cuts.start[l].cosine;
    sine[l] = cuts.start[l].sine;
    turn_cosine[l] = cuts.turn[l].cosine;
    turn_sine[l] = cuts.turn[l].sine;
  }
  for (int n = 0; n < plan.largest_count; ++n) {
    const double sample = x[n];
    for (int l = 0; l < cut_lanes; ++l) {
      const double value = n < count[l] ? sample : 0;
      const double next = cosine[l] * turn_cosine[l] - sine[l] * turn_sine[l];
      re[l] += value * cosine[l];
      im[l] += value * sine[l];
      sine[l] = cosine[l] * turn_sine[l] + sine[l] * turn_cosine[l];
      cosine[l] = next;
    }
  }
  for (int l = 0; l < cut_lanes; ++l) {
    cuts.re[l] = re[l];
    cuts.im[l] = im[l];
  }
}

/// The turns within a block, by lanes.
struct Turns {
  double cosine[close_cut_block][cut_lanes];
  double sine[close_cut_block][cut_lanes];
};

/// The part of one block; its sums are added up in two parts.
TORVE_CLONES void add_block(const Samples& x, int first, int end, const double* count,
                            const Turns& turns, const SplitSineCosine* start, DoubleDouble* re,
                            DoubleDouble* im) {
  double cosine[cut_lanes];
  double sine[cut_lanes];
  double re_sum[cut_lanes] = {};
  double im_sum[cut_lanes] = {};
  for (int l = 0; l < cut_lanes; ++l) {
    cosine[l] = start[l].cosine;
    sine[l] = start[l].sine;
  }
  for (int n = first; n < end; ++n) {
    const double sample = x[n];
    for (int l = 0; l < cut_lanes; ++l) {
      const double value = n < count[l] ? sample : 0;
      const SineCosine at =
          turned({sine[l], cosine[l]}, {turns.sine[n - first][l], turns.cosine[n - first][l]});
      re_sum[l] += value * at.cosine;
      im_sum[l] += value * at.sine;
    }
  }
  for (int l = 0; l < cut_lanes; ++l) {
    re[l] = with_added(re[l], re_sum[l]);
    im[l] = with_added(im[l], im_sum[l]);
  }
}

}  // namespace

CutPlan plan_cuts(const SampleRange& block, std::span<const int> bins) {
  // The first i with 2ji >= (2q - 1) 2^31, q the wraps behind it.
  const auto behind = [&block](std::int64_t j) {
    return (((2 * wraps(2 * j * block.last) - 1) << 30) + j - 1) / j;
  };
  CutPlan plan = {};
  plan.before = behind(bins.front()) - block.first <= block.last - behind(bins.back());
  plan.from = plan.before ? block.first : block.last;
  for (std::size_t l = 0; l < cut_lanes; ++l) {
    const std::int64_t cut = behind(bins[std::min(l, bins.size() - 1)]);
    plan.count[l] = static_cast<int>(plan.before ? cut - block.first : block.last + 1 - cut);
    plan.largest_count = std::max(plan.largest_count, plan.count[l]);
  }
  return plan;
}

void sum_to_cut(const float* x, const CutPlan& plan, Cuts& cuts) {
  sum({x, plan}, plan, cuts);
}

void sum_closely_to_cut(const float* x, const CutPlan& plan, CloseCuts& cuts) {
  Turns turns;
  double count[cut_lanes];
  DoubleDouble re[cut_lanes] = {};
  DoubleDouble im[cut_lanes] = {};
  for (int l = 0; l < cut_lanes; ++l) {
    count[l] = plan.count[l];
    SplitSineCosine turn = {0, 1, 0, 0};
    for (int r = 0; r < close_cut_block; ++r) {
      turns.cosine[r][l] = turn.cosine;
      turns.sine[r][l] = turn.sine;
      turn = closely_turned(turn, cuts.turn[l]);
    }
  }
  for (int first = 0; first < plan.largest_count; first += close_cut_block) {
    const int end = std::min(first + close_cut_block, plan.largest_count);
    add_block({x, plan}, first, end, count, turns, cuts.start, re, im);
    for (int l = 0; l < cut_lanes; ++l)
      cuts.start[l] = closely_turned(cuts.start[l], cuts.block_turn[l]);
  }
  for (int l = 0; l < cut_lanes; ++l) {
    cuts.re[l] = re[l].high + re[l].low;
    cuts.im[l] = im[l].high + im[l].low;
  }
}

}  // namespace torve::transforms
