// Sums of true angles against sums of phasors that are 20 bits closer than a double, and what
// corrections make of them against the plain sums.

#include "app/signal/transforms/close_sums.hpp"

#include <array>
#include <cmath>
#include <vector>

#include "app/signal/exact_phasor.hpp"
#include "app/signal/fourier_corrections.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Floats = std::vector<float>;

/// A tone of a whole number of samples a period, rounded: nearly all of its sums are next to
/// nothing.
Floats periodic(int size, int period) {
  Floats x(static_cast<std::size_t>(size));
  for (int i = 0; i < size; ++i)
    x[static_cast<std::size_t>(i)] =
        static_cast<float>(std::round(20'000 * std::sin(2 * M_PI * (i % period) / period)));
  return x;
}

Floats impulse(int size, int place) {
  Floats x(static_cast<std::size_t>(size));
  x[static_cast<std::size_t>(place)] = 1;
  return x;
}

double size_of(const Floats& x) {
  double size = 0;
  for (const float value : x)
    size += std::fabs(static_cast<double>(value));
  return size;
}

struct Case {
  const char* name;
  Floats x;
  std::vector<int> bins;
};

std::vector<Case> cases() {
  Floats loud_place = recorded(30'000, 3);
  loud_place[11'000] = 1e30F;
  return {
      {"a tone", periodic(20'001, 100), {1, 907, 1'024, 2'954, 2'955, 10'000}},
      {"a voice", integers(recorded(5'000, 2), 32'000), {3, 1'200, 2'500}},
      {"one loud place", loud_place, {2, 700, 15'000}},
      {"next to nothing", impulse(4'000, 3'999), {77, 2'000}},
      {"products that wrap", integers(sine_in_noise(65'536, 20'000, 2), 1), {20'000, 32'768}},
      // Products of the first two wraps between two blocks of frames.
      {"wraps between blocks", periodic(100'000, 202), {10'838, 32'264, 50'000}},
      // Products 3 x 2^18 and 5 x 2^17, and their doubles, lie in the middle between two doubles
      // when they are multiplied by 3.14159.
      {"the middle", impulse(1'100, 1'024), {320, 384}},
      {"the middle of what has wrapped", impulse(65'537, 65'536), {20'480, 22'528}},
  };
}

TrueSums close_sums(const Floats& x, int bin) {
  std::array<TrueSums, transforms::CloseSums::tile> tile;
  const int first = std::max(bin - 1'000, 1);
  const auto sums = transforms::CloseSums::make(x, first, bin);
  sums->find(first, tile);
  return tile[static_cast<std::size_t>(bin - first)];
}

TEST(CloseSums, AreAsCloseAsTheySay) {
  for (const auto& [name, x, bins] : cases()) {
    for (const int bin : bins) {
      long double cosines = 0, sines = 0;
      for (std::size_t i = 0; i < x.size(); ++i) {
        if (x[i] == 0) continue;
        const auto at =
            exact_phasor(wrapped_product(bin, static_cast<int>(i)), static_cast<int>(x.size()));
        const auto value = static_cast<long double>(x[i]);
        cosines += value * (static_cast<long double>(at.cosine) + at.cosine_rest);
        sines += value * (static_cast<long double>(at.sine) + at.sine_rest);
      }
      const TrueSums found = close_sums(x, bin);
      const auto error =
          std::max(std::fabs(cosines - found.sums.cosines), std::fabs(sines - found.sums.sines));
      EXPECT_LE(error, found.error) << name << ' ' << bin;
      EXPECT_LE(found.error, 0x1p-50 * size_of(x)) << name << ' ' << bin;
    }
  }
}

// Worst cases are far from what happens: a sum outside a fifth of its bound would have to do with a
// rounding that was taken for another one.
TEST(CloseSums, CorrectedAreNearThePlainSums) {
  for (const auto& [name, x, bins] : cases()) {
    FourierCorrections corrections(x);
    for (const int bin : bins) {
      CorrectedBin corrected = corrections.begin(bin, close_sums(x, bin));
      const std::span one(&bin, 1);
      for (int part = 0; part < FourierCorrections::parts; ++part)
        corrections.correct(part, one, std::span(&corrected, 1));
      corrections.refine(one, std::span(&corrected, 1));
      const auto [sums, angle_error, addition_error, error] = corrected.estimate;
      const FourierSums plain = plain_fourier_sums(x, bin);
      EXPECT_EQ(angle_error, 0);
      const double bound = 0.2 * (addition_error + error);
      EXPECT_LE(std::fabs(sums.cosines - plain.cosines), bound) << name << ' ' << bin;
      EXPECT_LE(std::fabs(sums.sines - plain.sines), bound) << name << ' ' << bin;
    }
  }
}

}  // namespace
}  // namespace torve
