#include "app/signal/band_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/band_bins.hpp"
#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/trigonometry.hpp"
#include "base/number_text.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr int lanes = BandSums::lanes;

// Of 32 samples this many must be certain, or the next runs go straight to the literal sums.
constexpr std::size_t worth_trying = 8;
constexpr int straight_runs = 8;

// From one of so many terms worked out on, working out all takes less time; seen after so many
// bins.
constexpr int dense = 4;
constexpr int trial = 64;

// How often it is told that the sums to the bit go on, which take a tenth of a second and more.
constexpr int groups_between_words = 64;

// Where the roundings of angles move no sample further than this, a two-thousandth of what text
// shows, they need not be worked out.
constexpr double small_angle_error = 5e-10;

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

/// At most what the roundings of a bin's angles are, for the samples 0 .. size.
double angle_rounding(int bin, int size) {
  constexpr double slightly = 1 + 0x1p-50;
  const double product = 2 * short_pi * size * bin * slightly;
  return (half_ulp(product) / size + half_ulp(product / size * slightly)) * slightly;
}

TORVE_CLONES void add_ends(double* low, double* high, const TermEnds& ends, int count) {
  for (int r = 0; r < count; ++r) {
    for (int l = 0; l < lanes; ++l) {
      const double one = ends.one[r][l];
      const double other = ends.other[r][l];
      low[l] += one < other ? one : other;
      high[l] += one < other ? other : one;
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
  for (int j = 0; j < size; ++j)
    angle_errors_.push_back(angle_rounding(j, size));
  double angle_error = 0;
  for (const BinRange& range : ranges) {
    for (int j = range.first; j <= range.last; ++j) {
      const auto i = static_cast<std::size_t>(j);
      angle_error += std::hypot(scaled_a_[i], scaled_b_[i]) * angle_errors_[i];
    }
  }
  works_out_angles_ = !(angle_error <= small_angle_error);
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

void BandSums::literal_values(std::span<const int> times, std::span<double> values) const {
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
    if (terms >= trial && worked_out >= lanes * terms / dense) {
      for (int j = first; j < first + count; ++j) {
        for (std::size_t l = 0; l < values.size(); ++l)
          sums[l] += term(time[l], j);
      }
      return;
    }
    const auto i = static_cast<std::size_t>(first);
    make_terms(&a_[i], &b_[i], first, count, size_, turn, term_ends);
    worked_out += add_in_order(sums, term_ends, count,
                               [&](int r, int l) { return term(time[l], first + r); });
    terms += count;
  });
  std::copy_n(sums, values.size(), values.begin());
}

namespace {

/// Settles samples that are told one by one.
class OpenSamples {
 public:
  /// values: of the samples `first` and up.
  OpenSamples(const BandSums& sums, int first, std::span<double> values)
      : sums_(sums), first_(first), values_(values) {}

  /// To be tried by their closer ends, or not.
  void add_open(int t) {
    add(open_, t, [this] { try_close_ends(); });
  }
  void add_undecided(int t) {
    add(undecided_, t, [this] { decide(); });
  }
  void finish() {
    if (open_.count > 0) try_close_ends();
    if (undecided_.count > 0) decide();
  }
  /// Whether the ends have one text, which is the sample's.
  bool settle(int t, const BandSums::Ends& ends) {
    if (!same_fixed6(ends.low, ends.high)) return false;
    value(t) = ends.low;
    return true;
  }

 private:
  struct Batch {
    std::array<int, lanes> times;
    std::size_t count = 0;
    [[nodiscard]] std::span<const int> all() const { return std::span(times).first(count); }
  };
  template <typename Full>
  static void add(Batch& batch, int t, Full full) {
    batch.times[batch.count++] = t;
    if (batch.count == batch.times.size()) full();
  }
  [[nodiscard]] double& value(int t) { return values_[static_cast<std::size_t>(t - first_)]; }

  void try_close_ends() {
    std::array<BandSums::Ends, lanes> ends;
    sums_.close_ends(open_.all(), std::span(ends).first(open_.count));
    for (std::size_t l = 0; l < open_.count; ++l) {
      if (!settle(open_.times[l], ends[l])) add_undecided(open_.times[l]);
    }
    open_.count = 0;
  }
  void decide() {
    std::array<double, lanes> decided;
    sums_.literal_values(undecided_.all(), std::span(decided).first(undecided_.count));
    for (std::size_t l = 0; l < undecided_.count; ++l)
      value(undecided_.times[l]) = decided[l];
    undecided_.count = 0;
  }

  const BandSums& sums_;
  int first_;
  std::span<double> values_;
  Batch open_;
  Batch undecided_;
};

}  // namespace

std::vector<double> band_values(const BandSums& sums, int first, int count,
                                const std::function<void(int t)>& progress) {
  std::vector<double> values(static_cast<std::size_t>(count));
  OpenSamples open(sums, first, values);
  int straight = 0;
  for (int t = first; t < first + count; t += lanes) {
    std::array<int, lanes> times;
    std::array<BandSums::Ends, lanes> ends;
    const auto run = static_cast<std::size_t>(std::min(lanes, first + count - t));
    tell_done(static_cast<double>(t - first) / count);
    for (std::size_t l = 0; l < run; ++l)
      progress(times[l] = t + static_cast<int>(l));
    if (straight > 0) {
      --straight;
      std::for_each_n(times.begin(), run, [&open](int time) { open.add_undecided(time); });
      continue;
    }
    sums.ends(std::span(times).first(run), std::span(ends).first(run));
    std::size_t certain = 0;
    for (std::size_t l = 0; l < run; ++l) {
      if (open.settle(times[l], ends[l])) {
        ++certain;
      } else {
        open.add_open(times[l]);
      }
    }
    if (certain < worth_trying) straight = straight_runs;
  }
  open.finish();
  return values;
}

}  // namespace torve
