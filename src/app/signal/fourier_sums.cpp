#include "app/signal/fourier_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/clones.hpp"
#include "app/signal/end_sums.hpp"
#include "app/signal/fourier_lanes.hpp"
#include "app/signal/trigonometry.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;

// Small sums, of square waves for example, let nearly every term through to the library; from a
// quarter of them on the plain loop takes less time. That is seen after so many samples.
constexpr int trial = 256;
constexpr int dense = 4;

// How often it is told that the sums go on, which take a tenth of a second and more.
constexpr int samples_between_words = 1024;
static_assert(samples_between_words % terms_at_once == 0);

double angle_of(std::int32_t product, double size) {
  return product * short_pi / size;
}

/// The ends of `count` terms of each bin; p: the first products, moved on. Multiplying by x is
/// rounded alike on both sides, so the ends of a cosine or sine give those of the term.
TORVE_CLONES void make_terms(const float* x, int count, double size, std::uint32_t* p,
                             const std::uint32_t* step, TermEnds& cosines, TermEnds& sines) {
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    const double slack = std::copysign(sine_slack, value);
    for (int l = 0; l < lanes; ++l) {
      const SplitSineCosine at =
          split_sine_cosine(static_cast<std::int32_t>(p[l]) * short_pi / size);
      cosines.low[r][l] = value * (at.cosine + (at.cosine_rest - slack));
      cosines.high[r][l] = value * (at.cosine + (at.cosine_rest + slack));
      sines.low[r][l] = value * (at.sine + (at.sine_rest - slack));
      sines.high[r][l] = value * (at.sine + (at.sine_rest + slack));
      p[l] += step[l];
    }
  }
}

/// The terms of some bins, some samples at a time from the first one on.
struct Terms {
  explicit Terms(std::span<const int> bins) {
    for (std::size_t l = 0; l < bins.size(); ++l)
      step[l] = 2U * static_cast<std::uint32_t>(bins[l]);
  }
  void make(const float* x, int count, double size) {
    make_terms(x, count, size, next, step, cosines, sines);
  }

  std::uint32_t step[lanes] = {};
  std::uint32_t next[lanes] = {};
  static inline TermEnds cosines;  // too large for the stack
  static inline TermEnds sines;
};

/// Adds the samples from `first` on.
void add_plainly(std::span<const float> x, int bin, int first, FourierSums& sums) {
  const int size = static_cast<int>(x.size());
  for (int i = first; i < size; ++i) {
    if (i % samples_between_words == 0) tell_alive();
    const double value = static_cast<double>(x[static_cast<std::size_t>(i)]);
    const double angle = angle_of(wrapped_product(bin, i), size);
    sums.cosines += value * std::cos(angle);
    sums.sines += value * std::sin(angle);
  }
}

}  // namespace

FourierSums plain_fourier_sums(std::span<const float> x, int bin) {
  FourierSums sums = {};
  add_plainly(x, bin, 0, sums);
  return sums;
}

void fourier_close_ends(std::span<const float> x, std::span<const int> bins,
                        std::span<FourierEnds> ends) {
  const int size = static_cast<int>(x.size());
  Terms terms(bins);
  FourierLanes low = {};
  FourierLanes high = {};
  for (int i = 0; i < size; i += terms_at_once) {
    const int count = std::min(terms_at_once, size - i);
    terms.make(&x[static_cast<std::size_t>(i)], count, size);
    add_ends(low.cosines, high.cosines, Terms::cosines, count);
    add_ends(low.sines, high.sines, Terms::sines, count);
  }
  for (std::size_t l = 0; l < ends.size(); ++l)
    ends[l] = {{low.cosines[l], low.sines[l]}, {high.cosines[l], high.sines[l]}};
}

void literal_fourier_sums(std::span<const float> x, std::span<const int> bins,
                          std::span<FourierSums> sums) {
  const int size = static_cast<int>(x.size());
  const int used = static_cast<int>(bins.size());
  Terms terms(bins);
  double cosines[lanes] = {};
  double sines[lanes] = {};
  int worked_out = 0;
  int i = 0;
  while (i < size && (i < trial || worked_out < 2 * used * i / dense)) {
    const int count = std::min(terms_at_once, size - i);
    if (i % samples_between_words == 0) tell_alive();
    const float* const values = &x[static_cast<std::size_t>(i)];
    terms.make(values, count, size);
    const auto angle = [&](int r, int l) {
      return angle_of(static_cast<std::int32_t>(terms.step[l] * static_cast<std::uint32_t>(i + r)),
                      size);
    };
    const auto value = [&](int r) { return static_cast<double>(values[r]); };
    worked_out += add_in_order(cosines, used, Terms::cosines, count,
                               [&](int r, int l) { return value(r) * std::cos(angle(r, l)); });
    worked_out += add_in_order(sines, used, Terms::sines, count,
                               [&](int r, int l) { return value(r) * std::sin(angle(r, l)); });
    i += count;
  }
  for (std::size_t l = 0; l < sums.size(); ++l) {
    sums[l] = {cosines[l], sines[l]};
    add_plainly(x, bins[l], i, sums[l]);
  }
}

}  // namespace torve
