#include "app/signal/lag_narrowing.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>
#include <numeric>

#include "app/signal/clones.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/transforms/transform.hpp"
#include "app/signal/whole_numbers.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

using Whole = std::int16_t;
using Values = std::span<const double>;
using transforms::unit;

constexpr double margin = 1.01;
constexpr std::size_t block = 256;  // 2^15 x 2^7 x 256 fits 32 bits
constexpr std::size_t ahead = 2 * block;
constexpr std::size_t stride = WholeNumbers::stride;
constexpr std::size_t most = 1 << 22;  // 2^30 x 2^22 is exact in double

/// q as 256 high + low, so that products fit.
struct Halves {
  std::vector<Whole> high;
  std::vector<Whole> low;

  explicit Halves(std::span<const Whole> values) : high(values.size()), low(values.size()) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      const int upper = (values[i] + 128) >> 8;
      high[i] = static_cast<Whole>(upper);
      low[i] = static_cast<Whole>(values[i] - 256 * upper);
    }
  }
};

/// How far a lag is.
struct Progress {
  std::size_t lag;
  double products = 0;  // D
  double roundings = 0;
};

/// A block of a, and b from the block's first index on.
struct Block {
  const Whole* a;
  const Whole* high;
  const Whole* low;
  std::size_t begin;
  double norm;          // of the block
  const double* norms;  // of windows of b
  double scale;         // h g
  double uncertain;     // K
};

TORVE_FUSED_CLONES void add_block(const Block& at, Progress* lags, std::size_t count) {
  for (std::size_t l = 0; l < count; ++l) {
    const Whole* const high = at.high + lags[l].lag;
    const Whole* const low = at.low + lags[l].lag;
    std::int32_t upper = 0;
    std::int32_t lower = 0;
    for (std::size_t i = 0; i < block; ++i) {
      upper += at.a[i] * high[i];
      lower += at.a[i] * low[i];
    }
    const double before = lags[l].products;
    const double behind = before + (256.0 * upper + lower);
    const double c = at.norm * at.norms[(at.begin + lags[l].lag) / stride];
    const double v = (at.scale * (std::fabs(before) + std::fabs(behind)) + c) / 2 + at.uncertain;
    lags[l].products = behind;
    lags[l].roundings += (block + 4) * half_ulp(margin * v);
  }
}

/// Both signals, and what the rests can do.
class Narrower {
 public:
  Narrower(Values a, Values b)
      : size_(a.size()),
        same_(a.data() == b.data()),
        a_(a, ahead),
        other_(same_ ? a.first(WholeNumbers::least_size) : b, ahead),
        b_(same_ ? a_ : other_),
        rests_(a_.rest * b_.norm + (a_.norm + a_.rest) * b_.rest + vanished),
        uncertain_(rests_ + std::fabs(a_.offset) * b_.swing + std::fabs(b_.offset) * a_.swing +
                   static_cast<double>(size_) * std::fabs(a_.offset * b_.offset)) {}

  [[nodiscard]] std::vector<LagEstimate> narrow(std::span<const std::size_t> lags) const;

 private:
  void add_blocks(std::span<Progress> lags) const;
  /// sum_a: of the terms' q, sum_b: of their q'.
  [[nodiscard]] LagEstimate finished(const Progress& lag, std::int64_t sum_a,
                                     std::int64_t sum_b) const;

  std::size_t size_;
  bool same_;
  WholeNumbers a_;
  WholeNumbers other_;
  const WholeNumbers& b_;
  double rests_;      // E
  double uncertain_;  // K
};

void Narrower::add_blocks(std::span<Progress> lags) const {
  const Halves halves(b_.values);
  const std::vector<double> norms_a = a_.norms(block);
  const std::vector<double> norms_b = b_.norms(block + stride);
  std::size_t count = lags.size();
  for (std::size_t i = 0; i < size_; i += block) {
    tell_done(static_cast<double>(i) / static_cast<double>(size_));
    while (count > 0 && lags[count - 1].lag + i >= size_)
      --count;
    add_block({.a = &a_.values[i],
               .high = &halves.high[i],
               .low = &halves.low[i],
               .begin = i,
               .norm = norms_a[i / stride],
               .norms = norms_b.data(),
               .scale = a_.step * b_.step,
               .uncertain = uncertain_},
              lags.data(), count);
  }
}

LagEstimate Narrower::finished(const Progress& lag, std::int64_t sum_a, std::int64_t sum_b) const {
  const double products = a_.step * b_.step * lag.products;
  const double of_a = b_.offset * (a_.step * static_cast<double>(sum_a));
  const double of_b = a_.offset * (b_.step * static_cast<double>(sum_b));
  const double offsets = static_cast<double>(size_ - lag.lag) * a_.offset * b_.offset;
  const double sizes = std::fabs(products) + std::fabs(of_a) + std::fabs(of_b) + std::fabs(offsets);
  return {.sum = products + of_a + of_b + offsets,
          .error = margin * (rests_ + 6 * unit * sizes),
          .roundings = margin * lag.roundings};
}

std::vector<LagEstimate> Narrower::narrow(std::span<const std::size_t> lags) const {
  std::vector<Progress> sums;
  for (const std::size_t lag : lags)
    sums.push_back({.lag = lag});
  add_blocks(sums);
  std::vector<LagEstimate> estimates;
  std::int64_t sum_a = std::accumulate(a_.values.begin(), a_.values.end(), std::int64_t{0});
  std::int64_t sum_b = std::accumulate(b_.values.begin(), b_.values.end(), std::int64_t{0});
  std::size_t at = 0;
  for (const Progress& lag : sums) {
    for (; at < lag.lag; ++at) {
      sum_a -= a_.values[size_ - 1 - at];
      sum_b -= b_.values[at];
    }
    estimates.push_back(finished(lag, sum_a, sum_b));
  }
  return estimates;
}

}  // namespace

std::optional<std::vector<LagEstimate>> narrowed_lags(Values a, Values b,
                                                      std::span<const std::size_t> lags) try {
  if (a.size() < WholeNumbers::least_size || a.size() > most) return std::nullopt;
  return Narrower(a, b).narrow(lags);
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

}  // namespace torve
