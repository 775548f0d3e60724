#include "app/signal/band_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/band_bins.hpp"
#include "app/signal/clones.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/trigonometry.hpp"
#include "base/number_text.hpp"

namespace torve {

namespace {

constexpr int lanes = BandSums::lanes;

// Of 32 samples this many must be certain, or the next runs go straight to the literal sums.
constexpr std::size_t worth_trying = 8;
constexpr int straight_runs = 8;

/// The stated steps from the products of a term to the term.
[[gnu::always_inline]] inline double scaled(double cosine, double sine, double size) {
  return 2 * (cosine + sine) * sampling_rate / size;
}

/// The ends of the terms of `count` bins; turn: 2 x 3.14159 x t. Each step is monotone.
TORVE_CLONES void make_terms(const float* a, const float* b, int first, int count, double size,
                             const double* turn, TermEnds& ends) {
  for (int r = 0; r < count; ++r) {
    const double value_a = static_cast<double>(a[r]);
    const double value_b = static_cast<double>(b[r]);
    const double slack_a = std::copysign(sine_slack, value_a);
    const double slack_b = std::copysign(sine_slack, value_b);
    for (int l = 0; l < lanes; ++l) {
      const SineCosine at = sine_cosine(turn[l] * (first + r) / size);
      ends.one[r][l] = scaled(value_a * (at.cosine - slack_a), value_b * (at.sine - slack_b), size);
      ends.other[r][l] =
          scaled(value_a * (at.cosine + slack_a), value_b * (at.sine + slack_b), size);
    }
  }
}

}  // namespace

BandSums::BandSums(std::span<const float> a, std::span<const float> b, int size, double offset,
                   std::array<BinRange, 2> ranges)
    : a_(a),
      b_(b),
      size_(size),
      offset_(offset),
      ranges_(ranges),
      zeros_count_(offset == 0 && std::signbit(offset)) {
  const auto whole = [size](float value) {
    return 2 * static_cast<double>(value) * sampling_rate / size;
  };
  std::transform(a.begin(), a.end(), std::back_inserter(scaled_a_), whole);
  std::transform(b.begin(), b.end(), std::back_inserter(scaled_b_), whole);
}

double BandSums::term(int t, int bin) const {
  const auto i = static_cast<std::size_t>(bin);
  const double angle = 2 * short_pi * t * bin / size_;
  return scaled(static_cast<double>(a_[i]) * std::cos(angle),
                static_cast<double>(b_[i]) * std::sin(angle), size_);
}

double BandSums::plain_value(int t) const {
  double sum = offset_;
  for (const BinRange& range : ranges_) {
    for (int j = range.first; j <= range.last; ++j)
      sum += term(t, j);
  }
  return sum;
}

void BandSums::literal_values(std::span<const int> times, std::span<double> values) const {
  static thread_local TermEnds term_ends;
  double turn[lanes];
  double sums[lanes];
  int time[lanes];
  for (int l = 0; l < lanes; ++l) {
    time[l] = times[std::min(static_cast<std::size_t>(l), times.size() - 1)];
    turn[l] = 2 * short_pi * time[l];
    sums[l] = offset_;
  }
  for_bins(terms_at_once, [&](int first, int count) {
    const auto i = static_cast<std::size_t>(first);
    make_terms(&a_[i], &b_[i], first, count, size_, turn, term_ends);
    add_in_order(sums, term_ends, count, [&](int r, int l) { return term(time[l], first + r); });
  });
  std::copy_n(sums, values.size(), values.begin());
}

std::vector<double> band_values(const BandSums& sums, int first, int count,
                                const std::function<void(int t)>& progress) {
  std::vector<double> values(static_cast<std::size_t>(count));
  std::array<int, lanes> open;
  std::size_t open_count = 0;
  const auto decide = [&] {
    std::array<double, lanes> decided;
    sums.literal_values(std::span(open).first(open_count), std::span(decided).first(open_count));
    for (std::size_t l = 0; l < open_count; ++l)
      values[static_cast<std::size_t>(open[l] - first)] = decided[l];
    open_count = 0;
  };
  const auto leave_open = [&](int t) {
    open[open_count++] = t;
    if (open_count == open.size()) decide();
  };
  int straight = 0;
  for (int t = first; t < first + count; t += lanes) {
    std::array<int, lanes> times;
    std::array<BandSums::Ends, lanes> ends;
    const auto run = static_cast<std::size_t>(std::min(lanes, first + count - t));
    for (std::size_t l = 0; l < run; ++l)
      progress(times[l] = t + static_cast<int>(l));
    if (straight > 0) {
      --straight;
      std::for_each_n(times.begin(), run, leave_open);
      continue;
    }
    sums.ends(std::span(times).first(run), std::span(ends).first(run));
    std::size_t certain = 0;
    for (std::size_t l = 0; l < run; ++l) {
      if (same_fixed6(ends[l].low, ends[l].high)) {
        values[static_cast<std::size_t>(times[l] - first)] = ends[l].low;
        ++certain;
      } else {
        leave_open(times[l]);
      }
    }
    if (certain < worth_trying) straight = straight_runs;
  }
  if (open_count > 0) decide();
  return values;
}

}  // namespace torve
