#include "app/signal/fourier_sums.hpp"

#include <algorithm>
#include <cmath>

#include "app/signal/clones.hpp"
#include "app/signal/trigonometry.hpp"

namespace torve {

namespace {

constexpr int lanes = fourier_lanes;

double angle_of(std::int32_t product, double size) {
  return product * short_pi / size;
}

/// The ends of `count` terms of each bin; p: the first products, moved on. Multiplying by x is
/// rounded alike on both sides, so the ends of a cosine or sine give those of the term.
TORVE_CLONES void make_terms(const float* x, int count, double size, std::uint32_t* p,
                             const std::uint32_t* step, TermEnds& cosines, TermEnds& sines) {
  for (int r = 0; r < count; ++r) {
    const double value = static_cast<double>(x[r]);
    for (int l = 0; l < lanes; ++l) {
      const SineCosine at = sine_cosine(static_cast<std::int32_t>(p[l]) * short_pi / size);
      cosines.one[r][l] = value * (at.cosine - sine_slack);
      cosines.other[r][l] = value * (at.cosine + sine_slack);
      sines.one[r][l] = value * (at.sine - sine_slack);
      sines.other[r][l] = value * (at.sine + sine_slack);
      p[l] += step[l];
    }
  }
}

}  // namespace

FourierSums plain_fourier_sums(std::span<const float> x, int bin) {
  const int size = static_cast<int>(x.size());
  FourierSums sums = {};
  for (int i = 0; i < size; ++i) {
    const double value = static_cast<double>(x[static_cast<std::size_t>(i)]);
    const double angle = angle_of(wrapped_product(bin, i), size);
    sums.cosines += value * std::cos(angle);
    sums.sines += value * std::sin(angle);
  }
  return sums;
}

void literal_fourier_sums(std::span<const float> x, std::span<const int> bins,
                          std::span<FourierSums> sums) {
  static thread_local TermEnds cosine_ends;
  static thread_local TermEnds sine_ends;
  const int size = static_cast<int>(x.size());
  std::uint32_t step[lanes] = {};
  std::uint32_t p[lanes] = {};
  for (std::size_t l = 0; l < bins.size(); ++l)
    step[l] = 2U * static_cast<std::uint32_t>(bins[l]);
  double cosines[lanes] = {};
  double sines[lanes] = {};
  for (int i = 0; i < size; i += terms_at_once) {
    const int count = std::min(terms_at_once, size - i);
    const float* const values = &x[static_cast<std::size_t>(i)];
    make_terms(values, count, size, p, step, cosine_ends, sine_ends);
    const auto angle = [&](int r, int l) {
      return angle_of(static_cast<std::int32_t>(step[l] * static_cast<std::uint32_t>(i + r)), size);
    };
    const auto value = [&](int r) { return static_cast<double>(values[r]); };
    add_in_order(cosines, cosine_ends, count,
                 [&](int r, int l) { return value(r) * std::cos(angle(r, l)); });
    add_in_order(sines, sine_ends, count,
                 [&](int r, int l) { return value(r) * std::sin(angle(r, l)); });
  }
  for (std::size_t l = 0; l < sums.size(); ++l)
    sums[l] = {cosines[l], sines[l]};
}

}  // namespace torve
