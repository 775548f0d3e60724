#include "app/signal/open_bins.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/proof.hpp"

namespace torve {

namespace {

// Of 32 bins this many must become certain, or the next ones go straight to the next way: the
// literal sums of one bin can take as long as the ends of 20.
constexpr int worth_trying = 2;
constexpr int straight_bins = 8 * fourier_lanes;

struct Range {
  double low;
  double high;

  [[nodiscard]] double least_size() const {
    return low <= 0 && high >= 0 ? 0 : std::min(std::fabs(low), std::fabs(high));
  }
  [[nodiscard]] double largest_size() const { return std::max(std::fabs(low), std::fabs(high)); }
};

double coefficient(double sum, int size) {
  return 2 * sum / size;
}

float power_of(double a, double b) {
  return static_cast<float>(a * a + b * b);
}

bool is_one_float(const Range& range) {
  return same_float(static_cast<float>(range.low), static_cast<float>(range.high));
}

}  // namespace

BinVerdict judge_bin(const FourierEnds& ends, int size) {
  const Range a = {coefficient(ends.low.cosines, size), coefficient(ends.high.cosines, size)};
  const Range b = {coefficient(ends.low.sines, size), coefficient(ends.high.sines, size)};
  const float low = power_of(a.least_size(), b.least_size());
  const float high = power_of(a.largest_size(), b.largest_size());
  return {.power_is_certain = same_text(low, high),
          .coefficients_are_certain = is_one_float(a) && is_one_float(b),
          .a = static_cast<float>(a.low),
          .b = static_cast<float>(b.low),
          .power = high};
}

OpenBins::OpenBins(std::span<const float> x, const BinTable& table, Wanted wanted)
    : x_(x), table_(table), wanted_(wanted) {}

bool OpenBins::settle(int bin, const FourierEnds& ends) {
  const BinVerdict verdict = judge_bin(ends, static_cast<int>(x_.size()));
  const bool powers = wanted_ == Wanted::power_text;
  if (!(powers ? verdict.power_is_certain : verdict.coefficients_are_certain)) return false;
  const auto j = static_cast<std::size_t>(bin);
  table_.a[j] = verdict.a;
  table_.b[j] = verdict.b;
  table_.open[j] = !verdict.coefficients_are_certain;
  if (powers) table_.power[j] = verdict.power;
  return true;
}

bool OpenBins::Batch::push(int bin) {
  bins[count++] = bin;
  return count == bins.size();
}

void OpenBins::Batch::clear(int certain) {
  count = 0;
  if (certain < worth_trying) straight = straight_bins;
}

void OpenBins::take(int bin, const FourierEstimate& estimate) {
  if (settle(bin, ends_of(estimate))) return;
  if (estimated_.straight > 0) {
    --estimated_.straight;
    add(bin);
    return;
  }
  estimates_[estimated_.count] = estimate;
  if (estimated_.push(bin)) try_corrections();
}

void OpenBins::add(int bin) {
  if (new_.straight > 0) {
    --new_.straight;
    push_undecided(bin);
  } else if (new_.push(bin)) {
    try_ends();
  }
}

void OpenBins::push_undecided(int bin) {
  if (undecided_.push(bin)) decide();
}

void OpenBins::try_corrections() {
  if (!corrections_) corrections_ = FourierCorrections::make(x_);
  const auto estimates = std::span(estimates_).first(estimated_.count);
  if (corrections_) corrections_->correct(estimated_.all(), estimates);
  int certain = 0;
  for (std::size_t l = 0; l < estimated_.count; ++l) {
    if (settle(estimated_.bins[l], ends_of(estimates[l]))) {
      ++certain;
    } else {
      add(estimated_.bins[l]);
    }
  }
  estimated_.clear(certain);
}

void OpenBins::try_ends() {
  std::array<FourierEnds, fourier_lanes> ends;
  fourier_sum_ends(x_, new_.all(), std::span(ends).first(new_.count));
  int certain = 0;
  for (std::size_t l = 0; l < new_.count; ++l) {
    if (settle(new_.bins[l], ends[l])) {
      ++certain;
    } else {
      push_undecided(new_.bins[l]);
    }
  }
  new_.clear(certain);
}

void OpenBins::decide() {
  std::array<FourierSums, fourier_lanes> sums;
  literal_fourier_sums(x_, undecided_.all(), std::span(sums).first(undecided_.count));
  for (std::size_t l = 0; l < undecided_.count; ++l) {
    const auto j = static_cast<std::size_t>(undecided_.bins[l]);
    const double a = coefficient(sums[l].cosines, static_cast<int>(x_.size()));
    const double b = coefficient(sums[l].sines, static_cast<int>(x_.size()));
    table_.a[j] = static_cast<float>(a);
    table_.b[j] = static_cast<float>(b);
    table_.open[j] = 0;
    if (wanted_ == Wanted::power_text) table_.power[j] = power_of(a, b);
  }
  undecided_.count = 0;
}

void OpenBins::finish() {
  if (estimated_.count > 0) try_corrections();
  if (new_.count > 0) try_ends();
  if (undecided_.count > 0) decide();
}

}  // namespace torve
