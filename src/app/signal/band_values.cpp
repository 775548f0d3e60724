#include "app/signal/band_values.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <utility>

#include "app/signal/band_corrections.hpp"
#include "app/signal/transforms/band_proposal.hpp"
#include "base/number_text.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr int lanes = BandSums::lanes;
constexpr int tile = transforms::BandProposal::tile;
static_assert(BandCorrections::lanes == lanes);

// Of 32 samples this many must become certain, or the next ones go straight to the next way; more
// of them if none did.
constexpr std::size_t worth_trying = 8;
constexpr int straight_samples = 8 * lanes;
constexpr int more_straight_samples = 64 * lanes;
// After a batch whose terms nearly all had to be worked out so many are summed plainly.
constexpr int plain_batches = 16;

/// Settles samples that are told one by one, in the first way that leaves one text.
class OpenSamples {
 public:
  /// values: of the samples `first` and up; corrections: null if there are no estimates.
  OpenSamples(const BandSums& sums, const BandCorrections* corrections, int first,
              std::span<double> values)
      : sums_(sums), corrections_(corrections), first_(first), values_(values) {}

  /// Takes a sample as it is estimated, if that is enough.
  void take(int t, const BandEstimate& estimate) {
    if (settle(t, ends_of(estimate))) return;
    estimates_[batches_[corrected].count] = estimate;
    push(corrected, t);
  }
  void add(int t) { push(by_ends, t); }
  void finish() {
    for (int way = 0; way < ways; ++way)
      empty(way);
  }

 private:
  enum Way { corrected, by_ends, by_close_ends, literally, ways };
  struct Batch {
    std::array<int, lanes> times;
    std::size_t count = 0;
    int straight = 0;  // so many more samples pass it by
  };
  using AllEnds = std::array<BandSums::Ends, lanes>;

  /// Ends that are no numbers have one text, too, but prove nothing.
  [[nodiscard]] bool settle(int t, const BandSums::Ends& ends) {
    if (!(ends.low <= ends.high) || !same_fixed6(ends.low, ends.high)) return false;
    values_[static_cast<std::size_t>(t - first_)] = ends.low;
    return true;
  }

  void push(int way, int t) {
    Batch& batch = batches_[static_cast<std::size_t>(way)];
    if (batch.straight > 0) {
      --batch.straight;
      push(way + 1, t);
      return;
    }
    batch.times[batch.count++] = t;
    if (batch.count == batch.times.size()) empty(way);
  }

  void empty(int way) {
    Batch& batch = batches_[static_cast<std::size_t>(way)];
    const std::span<const int> times(batch.times.data(), batch.count);
    if (times.empty()) return;
    if (way == literally) {
      decide(times);
    } else {
      AllEnds ends;
      find_ends(way, times, ends);
      std::size_t certain = 0;
      for (std::size_t l = 0; l < times.size(); ++l) {
        if (settle(times[l], ends[l])) {
          ++certain;
        } else {
          push(way + 1, times[l]);
        }
      }
      if (certain < worth_trying) {
        batch.straight = certain > 0 ? straight_samples : more_straight_samples;
      }
    }
    batch.count = 0;
  }

  void find_ends(int way, std::span<const int> times, AllEnds& ends) {
    const auto out = std::span(ends).first(times.size());
    if (way == by_ends) return sums_.ends(times, out);
    if (way == by_close_ends) return sums_.close_ends(times, out);
    const auto estimates = std::span(estimates_).first(times.size());
    corrections_->correct(times, estimates);
    std::ranges::transform(estimates, out.begin(), ends_of);
  }

  void decide(std::span<const int> times) {
    std::array<double, lanes> decided;
    const bool plainly = plain_ > 0;
    const bool dense = sums_.literal_values(times, std::span(decided).first(times.size()), plainly);
    plain_ = plainly ? plain_ - 1 : dense ? plain_batches : 0;
    for (std::size_t l = 0; l < times.size(); ++l)
      values_[static_cast<std::size_t>(times[l] - first_)] = decided[l];
  }

  const BandSums& sums_;
  const BandCorrections* corrections_;
  int first_;
  std::span<double> values_;
  std::array<Batch, ways> batches_;
  int plain_ = 0;  // so many more batches are decided by plain sums
  std::array<BandEstimate, lanes> estimates_;
};

/// The estimates of all samples, a tile at a time.
class Estimates {
 public:
  /// Null if there are none, or no memory.
  static std::unique_ptr<Estimates> make(const BandSums& sums) try {
    auto proposal = transforms::BandProposal::make(sums.terms());
    if (!proposal) return nullptr;
    return std::make_unique<Estimates>(std::move(proposal), sums.terms());
  } catch (const std::bad_alloc&) {
    return nullptr;
  }

  Estimates(std::unique_ptr<transforms::BandProposal> proposal, const BandTerms& terms)
      : corrections(terms), proposal_(std::move(proposal)) {}

  const BandEstimate& of(int t) {
    if (t / tile != tile_) {
      tile_ = t / tile;
      proposal_->propose(tile_ * tile, estimates_);
    }
    return estimates_[static_cast<std::size_t>(t % tile)];
  }

  const BandCorrections corrections;

 private:
  std::unique_ptr<transforms::BandProposal> proposal_;
  int tile_ = -1;
  std::array<BandEstimate, tile> estimates_ = {};
};

}  // namespace

BandSums::Ends ends_of(const BandEstimate& estimate) {
  const double error = estimate.error + estimate.angle_error + estimate.addition_error;
  return {estimate.value - error, estimate.value + error};
}

std::vector<double> band_values(const BandSums& sums, int first, int count,
                                const std::function<void(int t)>& progress) {
  std::vector<double> values(static_cast<std::size_t>(count));
  const auto estimates = Estimates::make(sums);
  OpenSamples open(sums, estimates ? &estimates->corrections : nullptr, first, values);
  for (int t = first; t < first + count; ++t) {
    if ((t - first) % lanes == 0) tell_done(static_cast<double>(t - first) / count);
    progress(t);
    if (estimates) {
      open.take(t, estimates->of(t));
    } else {
      open.add(t);
    }
  }
  open.finish();
  return values;
}

}  // namespace torve
