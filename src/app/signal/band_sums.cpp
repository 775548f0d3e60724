#include "app/signal/band_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/band_bins.hpp"
#include "app/signal/clones.hpp"
#include "app/signal/end_sums.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/trigonometry.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr int lanes = BandSums::lanes;

// From one of so many terms worked out on, working out all takes less time; seen after so many
// bins.
constexpr int dense = 4;
constexpr int trial = 64;

// How often it is told that the sums to the bit go on, which take a tenth of a second and more.
constexpr int groups_between_words = 64;

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
      const SplitSineCosine at = split_sine_cosine(turn[l] * (first + r) / size);
      ends.low[r][l] = scaled(value_a * (at.cosine + (at.cosine_rest - slack_a)),
                              value_b * (at.sine + (at.sine_rest - slack_b)), size);
      ends.high[r][l] = scaled(value_a * (at.cosine + (at.cosine_rest + slack_a)),
                               value_b * (at.sine + (at.sine_rest + slack_b)), size);
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

void BandSums::close_ends(std::span<const int> times, std::span<Ends> ends) const {
  static TermEnds term_ends;
  double turn[lanes];
  double low[lanes];
  double high[lanes];
  for (std::size_t l = 0; l < lanes; ++l) {
    turn[l] = 2 * short_pi * times[std::min(l, times.size() - 1)];
    low[l] = high[l] = offset_;
  }
  for_bins(terms_at_once, [&](int first, int count) {
    const auto i = static_cast<std::size_t>(first);
    make_terms(&a_[i], &b_[i], first, count, size_, turn, term_ends);
    add_ends(low, high, term_ends, count);
  });
  for (std::size_t l = 0; l < ends.size(); ++l)
    ends[l] = {low[l], high[l]};
}

bool BandSums::literal_values(std::span<const int> times, std::span<double> values,
                              bool plainly) const {
  static TermEnds term_ends;
  double turn[lanes];
  double sums[lanes];
  int time[lanes];
  for (int l = 0; l < lanes; ++l) {
    time[l] = times[std::min(static_cast<std::size_t>(l), times.size() - 1)];
    turn[l] = 2 * short_pi * time[l];
    sums[l] = offset_;
  }
  int terms = 0;
  int worked_out = 0;
  int groups = 0;
  for_bins(terms_at_once, [&](int first, int count) {
    if (groups++ % groups_between_words == 0) tell_alive();
    plainly = plainly || (terms >= trial && worked_out >= lanes * terms / dense);
    if (plainly) {
      for (std::size_t l = 0; l < values.size(); ++l) {
        double sum = sums[l];
        for (int j = first; j < first + count; ++j)
          sum += term(time[l], j);
        sums[l] = sum;
      }
      return;
    }
    const auto i = static_cast<std::size_t>(first);
    make_terms(&a_[i], &b_[i], first, count, size_, turn, term_ends);
    worked_out += add_in_order(sums, static_cast<int>(times.size()), term_ends, count,
                               [&](int r, int l) { return term(time[l], first + r); });
    terms += count;
  });
  std::copy_n(sums, values.size(), values.begin());
  return plainly && terms < 2 * trial;
}

}  // namespace torve
