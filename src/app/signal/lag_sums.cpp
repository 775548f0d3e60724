#include "app/signal/lag_sums.hpp"

#include <algorithm>
#include <array>
#include <optional>

#include "app/signal/clones.hpp"
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

// Of the time for a signal that leaves few lags open.
constexpr double proposing_part = 0.8;

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

/// sums[l] += a[i] x b[l][i], for lags anywhere. Not compiled for wider instructions, which
/// would gather: that takes twice the time.
void add_picked_products(const double* a, const std::array<const double*, picked_lanes>& b,
                         std::size_t count, std::array<double, picked_lanes>& sums) {
  std::array<double, picked_lanes> sum = sums;
  for (std::size_t i = 0; i < count; ++i) {
    const double factor = a[i];
    for (std::size_t l = 0; l < picked_lanes; ++l)
      sum[l] += factor * b[l][i];
  }
  sums = sum;
}

/// Some lags, ascending.
void sum_picked(Values a, Values b, std::span<const std::size_t> lags, std::span<float> means) {
  std::array<const double*, picked_lanes> from;
  for (std::size_t l = 0; l < picked_lanes; ++l)
    from[l] = b.data() + lags[std::min(l, lags.size() - 1)];
  std::array<double, picked_lanes> sums = {};
  const std::size_t common = a.size() - lags.back();
  add_picked_products(a.data(), from, common, sums);
  for (std::size_t l = 0; l < lags.size(); ++l)
    means[lags[l]] = finished_mean(a, b, lags[l], common, sums[l]);
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

std::optional<std::vector<std::size_t>> propose(Values a, Values b, std::span<float> means) {
  const PartOfWork proposing(0, proposing_part);
  return transforms::propose_lag_means(a, b, means);
}

}  // namespace

std::vector<float> lag_means(std::span<const double> a, std::span<const double> b) {
  std::vector<float> means(a.size());
  const auto open = propose(a, b, means);
  if (open) {
    const PartOfWork summing(proposing_part, 1);
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
