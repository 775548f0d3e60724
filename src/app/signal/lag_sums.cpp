#include "app/signal/lag_sums.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <optional>
#include <vector>

#include "app/signal/clones.hpp"
#include "app/signal/lag_estimate.hpp"
#include "app/signal/lag_narrowing.hpp"
#include "app/signal/transforms/lag_proposal.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

using Values = std::span<const double>;

// 32 lags side by side keep the sums in registers and every sum in its own order. Fewer leave the
// machine waiting for the additions; the compiler vectorises this form at -O3 only.
constexpr std::size_t lanes = 32;

// So many open lags among 32 neighbours cost as much as summing all of them.
constexpr std::ptrdiff_t enough_for_run = 9;

// From so many open lags on a closer bound pays.
constexpr std::size_t enough_to_narrow = 48;

// Parts of the time for a signal that leaves many lags open: until they are proposed, and narrowed.
constexpr double proposed_part = 0.65;
constexpr double narrowed_part = 0.9;

// Lags that are not neighbours, side by side.
constexpr std::size_t picked_lanes = 16;

/// sums[l] += a[i] x b[i + l] for i = 0 .. count - 1, for all lanes l.
TORVE_CLONES void add_lag_products(const double* a, const double* b, std::size_t count,
                                   double* sums) {
  double sum[lanes];
  for (std::size_t l = 0; l < lanes; ++l)
    sum[l] = sums[l];
  for (std::size_t i = 0; i < count; ++i) {
    const double factor = a[i];
    for (std::size_t l = 0; l < lanes; ++l)
      sum[l] += factor * b[i + l];
  }
  for (std::size_t l = 0; l < lanes; ++l)
    sums[l] = sum[l];
}

/// The mean at lag k, if `sum` has the terms 0 .. i-1 already.
float finished_mean(Values a, Values b, std::size_t k, std::size_t i, double sum) {
  const std::size_t terms = a.size() - k;
  for (; i < terms; ++i)
    sum += a[i] * b[i + k];
  return static_cast<float>(sum / static_cast<double>(terms));
}

/// The lags k .. k + 31, or up to the last.
void sum_run(Values a, Values b, std::size_t k, std::span<float> means) {
  std::array<double, lanes> sums = {};
  const std::size_t terms = a.size() - k;
  const std::size_t common = terms > lanes ? terms - lanes + 1 : 0;
  add_lag_products(a.data(), b.data() + k, common, sums.data());
  for (std::size_t l = 0; l < std::min(lanes, terms); ++l)
    means[k + l] = finished_mean(a, b, k + l, common, sums[l]);
}

/// sums[l] += a[i] x b[l][i] for i = begin .. end - 1, for lags anywhere. Not compiled for wider
/// instructions, which would gather: that takes twice the time.
void add_picked_products(const double* a, const std::array<const double*, picked_lanes>& b,
                         std::size_t begin, std::size_t end,
                         std::array<double, picked_lanes>& sums) {
  std::array<double, picked_lanes> sum = sums;
  for (std::size_t i = begin; i < end; ++i) {
    const double factor = a[i];
    for (std::size_t l = 0; l < picked_lanes; ++l)
      sum[l] += factor * b[l][i];
  }
  sums = sum;
}

/// Some lags, ascending. The longer ones go on when a shorter one is finished; what its lane does
/// then counts no more.
void sum_picked(Values a, Values b, std::span<const std::size_t> lags, std::span<float> means) {
  std::array<const double*, picked_lanes> from;
  from.fill(b.data());
  for (std::size_t l = 0; l < lags.size(); ++l)
    from[l] = b.data() + lags[l];
  std::array<double, picked_lanes> sums = {};
  std::size_t done = 0;
  for (std::size_t l = lags.size(); l-- > 0;) {
    const std::size_t terms = a.size() - lags[l];
    add_picked_products(a.data(), from, done, terms, sums);
    means[lags[l]] = static_cast<float>(sums[l] / static_cast<double>(terms));
    from[l] = b.data();
    done = terms;
  }
}

/// The means of some lags, ascending, each summed as it is stated.
void sum_lags(Values a, Values b, std::span<const std::size_t> lags, std::span<float> means) {
  std::array<std::size_t, picked_lanes> picked;
  std::size_t count = 0;
  for (auto from = lags.begin(); from != lags.end();) {
    tell_done(static_cast<double>(from - lags.begin()) / static_cast<double>(lags.size()));
    const std::size_t run = *from / lanes * lanes;
    const auto to = std::lower_bound(from, lags.end(), run + lanes);
    if (to - from >= enough_for_run) {
      sum_run(a, b, run, means);
      from = to;
    }
    for (; from != to; ++from) {
      picked[count++] = *from;
      if (count < picked_lanes) continue;
      sum_picked(a, b, picked, means);
      count = 0;
    }
  }
  if (count > 0) sum_picked(a, b, std::span(picked).first(count), means);
}

/// A lag whose text is not proved.
struct OpenLag {
  std::size_t lag;
  LagEstimate proposed;
};

/// Makes means of a tile's sums; which are open.
TORVE_CLONES void settle(const transforms::LagTile& tile, double terms, float* means,
                         std::uint8_t* open) {
  const auto [first, sums, roundings, error] = tile;
  const double* const sum = sums.data();
  const double* const rounding = roundings.data();
  const int count = static_cast<int>(sums.size());  // its numbers become doubles many at a time
  for (int l = 0; l < count; ++l) {
    const LagEnds ends = ends_of(LagEstimate{sum[l], error, rounding[l]});
    open[l] = !settle_mean(ends, terms - l, means[l]);
  }
}

/// Proposes the means, and tells which are open.
bool propose(Values a, Values b, std::span<float> means, std::vector<OpenLag>& open) {
  std::vector<std::uint8_t> marks;
  return transforms::propose_lags(a, b, [&](const transforms::LagTile& tile) {
    marks.resize(tile.sums.size());
    settle(tile, static_cast<double>(a.size() - tile.first), &means[tile.first], marks.data());
    for (auto at = marks.begin(); (at = std::find(at, marks.end(), 1)) != marks.end(); ++at) {
      const auto l = static_cast<std::size_t>(at - marks.begin());
      open.push_back({tile.first + l, {tile.sums[l], tile.error, tile.roundings[l]}});
    }
  });
}

/// The lags that closer bounds leave open.
std::vector<std::size_t> narrow(Values a, Values b, std::span<const OpenLag> open,
                                std::span<float> means) {
  std::vector<std::size_t> lags;
  for (const OpenLag& o : open)
    lags.push_back(o.lag);
  if (open.size() < enough_to_narrow) return lags;
  const auto narrowed = narrowed_lags(a, b, lags);
  if (!narrowed) return lags;
  std::vector<std::size_t> left;
  for (std::size_t i = 0; i < open.size(); ++i) {
    const LagEnds ends = ends_of(open[i].proposed, (*narrowed)[i]);
    const auto terms = static_cast<double>(a.size() - lags[i]);
    if (!settle_mean(ends, terms, means[lags[i]])) left.push_back(lags[i]);
  }
  return left;
}

/// Proves what it can of the means' texts; which stay open. Nothing if there are no proposals.
std::optional<std::vector<std::size_t>> prove(Values a, Values b, std::span<float> means) try {
  std::vector<OpenLag> open;
  {
    const PartOfWork proposing(0, proposed_part);
    if (!propose(a, b, means, open)) return std::nullopt;
  }
  const PartOfWork narrowing(proposed_part, narrowed_part);
  return narrow(a, b, open, means);
} catch (const std::bad_alloc&) {
  return std::nullopt;
}

}  // namespace

std::vector<float> lag_means(std::span<const double> a, std::span<const double> b) {
  std::vector<float> means(a.size());
  if (const auto open = prove(a, b, means)) {
    const PartOfWork summing(narrowed_part, 1);
    sum_lags(a, b, *open, means);
    return means;
  }
  for (std::size_t k = 0; k < means.size(); k += lanes) {
    tell_done(static_cast<double>(k) / static_cast<double>(means.size()));
    sum_run(a, b, k, means);
  }
  return means;
}

}  // namespace torve
