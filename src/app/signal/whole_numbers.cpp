#include "app/signal/whole_numbers.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "app/signal/clones.hpp"
#include "app/signal/transforms/transform.hpp"

namespace torve {

namespace {

using transforms::unit;

constexpr double margin = 1.01;
constexpr std::size_t lanes = 16;
static_assert(WholeNumbers::least_size >= lanes);

/// Values and what is found in one pass.
struct Range {
  double low;
  double high;
  double least;  // of the least size
};

TORVE_CLONES Range range_of(const double* x, std::size_t count) {
  double low[lanes];
  double high[lanes];
  double least[lanes];
  for (std::size_t l = 0; l < lanes; ++l)
    low[l] = high[l] = least[l] = x[l];
  for (std::size_t i = 0; i < count; i += lanes) {
    const double* const from = x + std::min(i, count - lanes);
    for (std::size_t l = 0; l < lanes; ++l) {
      const double value = from[l];
      low[l] = value < low[l] ? value : low[l];
      high[l] = value > high[l] ? value : high[l];
      least[l] = std::fabs(value) < std::fabs(least[l]) ? value : least[l];
    }
  }
  Range range = {low[0], high[0], least[0]};
  for (std::size_t l = 1; l < lanes; ++l) {
    range.low = std::min(range.low, low[l]);
    range.high = std::max(range.high, high[l]);
    if (std::fabs(least[l]) < std::fabs(range.least)) range.least = least[l];
  }
  return range;
}

/// The power of two by which whole numbers of 16 bits reach from the lowest to the highest.
double step_for(const Range& range) {
  const double reach = range.high - range.low;
  return reach > 0 ? std::ldexp(1, std::ilogb(reach / 65535.25) + 1) : 1;
}

/// The value of the least size, and as few steps more as bring all values within 16 bits.
double offset_for(const Range& range, double step) {
  const double up = std::ceil((range.high - range.least) / step - 32767.25);
  const double down = std::floor((range.low - range.least) / step + 32768.25);
  return range.least + step * std::max(up, std::min(0.0, down));
}

TORVE_CLONES void divide(const double* x, std::size_t count, double offset, double step,
                         std::int16_t* values, double* rests) {
  constexpr double rounder = 0x1.8p52;
  const double per_step = 1 / step;
  for (std::size_t i = 0; i < count; ++i) {
    const double from = x[i] - offset;
    double whole = from * per_step + rounder - rounder;
    whole = whole < 32767 ? whole : 32767;
    whole = whole > -32768 ? whole : -32768;
    values[i] = static_cast<std::int16_t>(static_cast<std::int32_t>(whole));
    rests[i] = from - step * whole;
  }
}

TORVE_CLONES double sum_of_squares(const double* x, std::size_t count) {
  double sums[lanes] = {};
  std::size_t i = 0;
  for (; i + lanes <= count; i += lanes) {
    for (std::size_t l = 0; l < lanes; ++l)
      sums[l] += x[i + l] * x[i + l];
  }
  for (; i < count; ++i)
    sums[0] += x[i] * x[i];
  double sum = 0;
  for (const double part : sums)
    sum += part;
  return sum;
}

/// The largest size of a sum of values in a row: the difference of two sums from the first on.
std::int64_t largest_sum(std::span<const std::int16_t> values) {
  std::int64_t sum = 0;
  std::int64_t least = 0;
  std::int64_t largest = 0;
  for (const std::int16_t value : values) {
    sum += value;
    least = std::min(least, sum);
    largest = std::max(largest, sum);
  }
  return largest - least;
}

}  // namespace

WholeNumbers::WholeNumbers(std::span<const double> x, std::size_t ahead)
    : values(x.size() + ahead), squares((x.size() + ahead) / stride) {
  const Range range = range_of(x.data(), x.size());
  step = step_for(range);
  offset = offset_for(range, step);
  double all_squares = 0;
  double all_rests = 0;
  for (std::size_t i = 0; i < x.size(); i += stride) {
    std::array<double, stride> rests;
    const std::size_t count = std::min(stride, x.size() - i);
    divide(&x[i], count, offset, step, &values[i], rests.data());
    squares[i / stride] = sum_of_squares(&x[i], count);
    all_squares += squares[i / stride];
    all_rests += sum_of_squares(rests.data(), count);
  }
  norm = margin * std::sqrt(all_squares);
  // The difference from the offset is rounded, what is taken from it is near, which is exact.
  const double root = std::sqrt(static_cast<double>(x.size()));
  rest = margin * std::sqrt(all_rests) + 2 * unit * (norm + root * std::fabs(offset));
  swing = step * static_cast<double>(largest_sum(values));
}

std::vector<double> WholeNumbers::norms(std::size_t count) const {
  std::vector<double> result(squares.size());
  for (std::size_t w = 0; w + count / stride <= squares.size(); ++w) {
    double sum = 0;
    for (std::size_t s = w; s < w + count / stride; ++s)
      sum += squares[s];
    result[w] = margin * std::sqrt(sum);
  }
  return result;
}

}  // namespace torve
