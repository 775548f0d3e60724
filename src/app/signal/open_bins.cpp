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
// Of close sums, and of close ends, what follows takes four times as long as to try.
constexpr int few_straight_bins = fourier_lanes;

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

void OpenBins::take(int bin, const FourierEstimate& estimate) {
  if (settle(bin, ends_of(estimate))) return;
  if (passes_corrections()) {
    push(by_ends, bin);
  } else {
    correct(bin, 0, CorrectedBin(estimate));
  }
}

void OpenBins::take(int bin, const TrueSums& sums) {
  sums_are_close_ = true;
  if (corrections() == nullptr || passes_corrections()) {
    push(by_close_ends, bin);
  } else {
    correct(bin, 0, corrections()->begin(bin, sums));
  }
}

bool OpenBins::passes_corrections() {
  if (batches_[corrected].straight == 0) return false;
  --batches_[corrected].straight;
  return true;
}

FourierCorrections* OpenBins::corrections() {
  if (!corrections_) corrections_ = FourierCorrections::make(x_);
  return corrections_.get();
}

/// The way for what this one leaves open. The ends of sums are closer than corrections of what is
/// proposed, and no use after those of close sums.
std::size_t OpenBins::behind(std::size_t way) const {
  if (way + 1 == by_ends) return sums_are_close_ ? refined : by_ends;
  return way == by_ends ? by_close_ends : way + 1;
}

/// Has a bin corrected.
void OpenBins::correct(int bin, std::size_t way, const CorrectedBin& so_far) {
  corrected_[way][batches_[way].count] = so_far;
  push(way, bin);
}

void OpenBins::add(int bin) {
  push(by_ends, bin);
}

void OpenBins::finish() {
  for (std::size_t way = 0; way < ways; ++way)
    empty(way);
}

void OpenBins::push(std::size_t way, int bin) {
  Batch& batch = batches_[way];
  if (batch.straight > 0) {
    --batch.straight;
    push(behind(way), bin);
    return;
  }
  batch.bins[batch.count++] = bin;
  if (batch.count == batch.bins.size()) empty(way);
}

/// Tries a way on its bins.
void OpenBins::empty(std::size_t way) {
  Batch& batch = batches_[way];
  const std::span<const int> bins(batch.bins.data(), batch.count);
  if (bins.empty()) return;
  if (way == literally) {
    decide(bins);
  } else {
    AllEnds ends;
    find_ends(way, bins, ends);
    int certain = 0;
    for (std::size_t l = 0; l < bins.size(); ++l) {
      if (settle(bins[l], ends[l])) {
        ++certain;
      } else if (behind(way) < by_ends || behind(way) == refined) {
        correct(bins[l], behind(way), corrected_[way][l]);
      } else {
        push(behind(way), bins[l]);
      }
    }
    leave_way_that_fails(way, certain);
  }
  batch.count = 0;
}

/// Few certain bins, and the next ones pass a way by. Who has taken one part of the corrections
/// takes the others, too, so these count together.
void OpenBins::leave_way_that_fails(std::size_t way, int certain) {
  if (way < by_ends) {
    certain = certain_if_corrected_ += certain;
    if (way + 1 < by_ends) return;
    way = corrected;
    certain_if_corrected_ = 0;
  }
  if (certain >= worth_trying) return;
  const bool is_soon_tried = sums_are_close_ || way == by_close_ends;
  batches_[way].straight = is_soon_tried ? few_straight_bins : straight_bins;
}

void OpenBins::find_ends(std::size_t way, std::span<const int> bins, AllEnds& ends) {
  const auto out = std::span(ends).first(bins.size());
  if (way == by_ends) return fourier_sum_ends(x_, bins, out);
  if (way == by_close_ends) return fourier_close_ends(x_, bins, out);
  const auto so_far = std::span(corrected_[way]).first(bins.size());
  if (way == refined) {
    corrections_->refine(bins, so_far);
  } else if (corrections() != nullptr) {
    corrections_->correct(static_cast<int>(way), bins, so_far);
  }
  std::ranges::transform(so_far, out.begin(),
                         [](const CorrectedBin& bin) { return ends_of(bin.estimate); });
}

void OpenBins::decide(std::span<const int> bins) {
  std::array<FourierSums, fourier_lanes> sums;
  literal_fourier_sums(x_, bins, std::span(sums).first(bins.size()));
  for (std::size_t l = 0; l < bins.size(); ++l) {
    const auto j = static_cast<std::size_t>(bins[l]);
    const double a = coefficient(sums[l].cosines, static_cast<int>(x_.size()));
    const double b = coefficient(sums[l].sines, static_cast<int>(x_.size()));
    table_.a[j] = static_cast<float>(a);
    table_.b[j] = static_cast<float>(b);
    table_.open[j] = 0;
    if (wanted_ == Wanted::power_text) table_.power[j] = power_of(a, b);
  }
}

}  // namespace torve
