#include "app/signal/fourier_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/end_sums.hpp"
#include "app/signal/fourier_terms.hpp"
#include "app/signal/trigonometry.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

// Small sums, of square waves for example, let a twentieth of the terms through to the library.
// Where it were a quarter, the plain loop would take less time. That is seen after so many samples.
constexpr int trial = 256;
constexpr int dense = 4;

// The plain sums of so many bins take no longer than all lanes.
constexpr int few = 5;

// How often it is told that the sums go on, which take a tenth of a second and more.
constexpr int samples_between_words = 1024;
static_assert(samples_between_words % terms_at_once == 0);

double angle_of(std::int32_t product, double size) {
  return product * short_pi / size;
}

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

/// Adds the terms of `count` samples from `first` on; returns how many the library made.
int add_terms(FourierTerms& terms, std::span<const int> bins, int first, int count,
              FourierLanes& sums) {
  const int used = static_cast<int>(bins.size());
  const float* const values = &terms.x[static_cast<std::size_t>(first)];
  const auto value = [&](int r) { return static_cast<double>(values[r]); };
  const auto angle = [&](int r, int l) {
    return angle_of(wrapped_product(bins[static_cast<std::size_t>(l)], first + r), terms.k.value);
  };
  return add_in_order(sums.cosines, used, terms.cosines, count,
                      [&](int r, int l) { return value(r) * std::cos(angle(r, l)); }) +
         add_in_order(sums.sines, used, terms.sines, count,
                      [&](int r, int l) { return value(r) * std::sin(angle(r, l)); });
}

}  // namespace

FourierSums plain_fourier_sums(std::span<const float> x, int bin) {
  FourierSums sums = {};
  add_plainly(x, bin, 0, sums);
  return sums;
}

void fourier_close_ends(std::span<const float> x, std::span<const int> bins,
                        std::span<FourierEnds> ends) {
  static FourierTerms terms;
  FourierLanes low = {};
  FourierLanes high = {};
  terms.begin(x, bins);
  for (int count; (count = terms.next()) > 0;) {
    add_ends(low.cosines, high.cosines, terms.cosines, count);
    add_ends(low.sines, high.sines, terms.sines, count);
  }
  for (std::size_t l = 0; l < ends.size(); ++l)
    ends[l] = {{low.cosines[l], low.sines[l]}, {high.cosines[l], high.sines[l]}};
}

void literal_fourier_sums(std::span<const float> x, std::span<const int> bins,
                          std::span<FourierSums> sums) {
  static FourierTerms terms;
  const int size = static_cast<int>(x.size());
  const int used = static_cast<int>(bins.size());
  FourierLanes lanes = {};
  int worked_out = 0;
  int i = 0;
  terms.begin(x, bins);
  while (used > few && i < size && (i < trial || worked_out < 2 * used * i / dense)) {
    if (i % samples_between_words == 0) tell_alive();
    const int count = terms.next();
    worked_out += add_terms(terms, bins, i, count, lanes);
    i += count;
  }
  for (std::size_t l = 0; l < sums.size(); ++l) {
    sums[l] = {lanes.cosines[l], lanes.sines[l]};
    add_plainly(x, bins[l], i, sums[l]);
  }
}

}  // namespace torve
