#include "app/signal/transforms/lag_squares.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "app/signal/clones.hpp"

namespace torve::transforms {

namespace {

constexpr int run = LagSquares::run;
constexpr int count = LagSquares::half_group + run;  // the largest weight needed, and 31

constexpr std::size_t at(int place) {
  return static_cast<std::size_t>(place);
}

/// The sum of 32 squares, and of the first 31, the first 30 and so on.
struct RunSquares {
  double all;
  double prefixes;
};

TORVE_CLONES RunSquares squares_of(const double* x) {
  constexpr int lanes = 8;
  double all[lanes] = {};
  double prefixes[lanes] = {};
  for (int i = 0; i < run; i += lanes) {
    for (int l = 0; l < lanes; ++l) {
      const double square = x[i + l] * x[i + l];
      all[l] += square;
      prefixes[l] += (run - 1 - i - l) * square;
    }
  }
  RunSquares sums = {};
  for (int l = 0; l < lanes; ++l) {
    sums.all += all[l];
    sums.prefixes += prefixes[l];
  }
  return sums;
}

}  // namespace

LagSquares::LagSquares(std::span<const double> values, int known)
    : p_(at(known / run)), q_(p_.size()) {
  add_prefixes(values);
  slack_ = 2 * unit * static_cast<double>(values.size()) * all();
  const double weight = known;
  weighted_slack_ = 4 * unit * weight * weight * all();
  for (int r = 0; r + reach / run < known / run; ++r) {
    falling_.push_back(std::sqrt(falling(r)));
    rising_.push_back(std::sqrt(rising(r + half_group / run - 1)));
  }
}

void LagSquares::add_prefixes(std::span<const double> values) {
  for (std::size_t r = 0; r + 1 < p_.size(); ++r) {
    const auto rest = values.subspan(std::min(r * run, values.size()));
    std::array<double, run> last = {};
    if (rest.size() < run) std::copy(rest.begin(), rest.end(), last.begin());
    const RunSquares squares = squares_of(rest.size() < run ? last.data() : rest.data());
    p_[r + 1] = p_[r] + squares.all;
    q_[r + 1] = q_[r] + run * p_[r] + squares.prefixes;
  }
}

double LagSquares::norm(int first, int size) const {
  return std::sqrt(p_[at((first + size) / run)] - p_[at(first / run)] + slack_);
}

/// At least count x(0)^2 + (count-1) x(1)^2 + .. + 1 x(count-1)^2, x beginning with run r.
double LagSquares::falling(int r) const {
  const std::size_t begin = at(r);
  const std::size_t end = begin + at(count / run);
  return (q_[end] + p_[end]) - (q_[begin] + p_[begin]) - count * p_[begin] + weighted_slack_;
}

/// At least 1 x(0)^2 + 2 x(1)^2 + .. + (count+32) x(count+31)^2.
double LagSquares::rising(int r) const {
  const std::size_t begin = at(r);
  const std::size_t end = begin + at(count / run + 1);
  return (count + run) * p_[end] - (q_[end] - q_[begin]) + weighted_slack_;
}

}  // namespace torve::transforms
