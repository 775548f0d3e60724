// What the terms of Fourier sums lie between, against the long sines of the C library, which have
// 11 bits more: those are within 2^-64, or as little of what is smaller.

#include "app/signal/fourier_terms.hpp"

#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include "support/screen.hpp"

namespace torve {
namespace {

static_assert(std::numeric_limits<long double>::digits >= 64);

struct Truth {
  long double value;
  double library;

  [[nodiscard]] long double ulp() const {
    int exponent = 0;
    std::frexp(value, &exponent);
    return std::ldexp(1.0L, exponent - 53);
  }
  /// Rounded after it is moved by so many units, and as little as the long sines are wrong, or
  /// more.
  [[nodiscard]] double moved(double units, long double further) const {
    return static_cast<double>(value + static_cast<long double>(units) * ulp() + further);
  }
};

Truth cosine_at(std::int32_t product, int size) {
  const double angle = product * short_pi / size;
  return {std::cos(static_cast<long double>(angle)), std::cos(angle)};
}

Truth sine_at(std::int32_t product, int size) {
  const double angle = product * short_pi / size;
  return {std::sin(static_cast<long double>(angle)), std::sin(angle)};
}

// What is proved of terms rests on it, and only the C library can tell: a change of it may show
// here.
TEST(FourierTerms, TheLibraryIsAsCloseAsStated) {
  std::mt19937 random(1);
  int wrong = 0;
  for (int i = 0; i < 200'000; ++i) {
    const int size = i % 4 == 0 ? 20'001 : static_cast<int>(1 + random() % 131'072);
    const std::int32_t product = i % 2 == 0 ? static_cast<std::int32_t>(random())
                                            : wrapped_product(static_cast<int>(random() % 65'536),
                                                              static_cast<int>(random() % 131'072));
    for (const Truth& truth : {cosine_at(product, size), sine_at(product, size)}) {
      wrong += truth.library < truth.moved(-library_slack, -0x1p-63L) ||
               truth.library > truth.moved(library_slack, 0x1p-63L);
    }
  }
  EXPECT_EQ(wrong, 0);
}

/// Counts the terms of a block by how close their ends are.
struct Count {
  int terms = 0;
  int outside = 0;  // the library's term is
  int loose = 0;    // the ends are further apart than library_slack and phasor_slack make them

  void add(const Truth& truth, double low, double high) {
    ++terms;
    outside += truth.library < low || truth.library > high;
    loose += low < truth.moved(-library_slack, -2 * phasor_slack) ||
             high > truth.moved(library_slack, 2 * phasor_slack);
  }
};

TEST(FourierTerms, AreBetweenTheirEnds) {
  const struct {
    int size, first_bin;
    int loose_per_thousand;  // where products wrap
  } cases[] = {{1, 0, 0},           {40, 3, 0},           {5'000, 2'469, 0},
               {46'340, 23'100, 0}, {65'536, 28'001, 10}, {131'072, 65'504, 10}};
  static FourierTerms terms;
  for (const auto& c : cases) {
    const std::vector<float> ones(static_cast<std::size_t>(c.size), 1.0F);
    std::vector<int> bins(fourier_lanes);
    std::iota(bins.begin(), bins.end(), c.first_bin);
    Count found;
    terms.begin(ones, bins);
    for (int i = 0, count = 0; (count = terms.next()) > 0; i += count) {
      const int r = i / terms_at_once % count;
      for (int l = i / terms_at_once % 3; l < fourier_lanes; l += 3) {
        const std::int32_t product = wrapped_product(bins[static_cast<std::size_t>(l)], i + r);
        found.add(cosine_at(product, c.size), terms.cosines.low[r][l], terms.cosines.high[r][l]);
        found.add(sine_at(product, c.size), terms.sines.low[r][l], terms.sines.high[r][l]);
      }
    }
    EXPECT_EQ(found.outside, 0) << c.size;
    EXPECT_LE(found.loose * 1'000, found.terms * c.loose_per_thousand) << c.size;
  }
}

}  // namespace
}  // namespace torve
