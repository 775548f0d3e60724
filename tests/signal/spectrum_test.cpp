#include "app/signal/spectrum.hpp"

#include <numeric>
#include <random>

#include "app/signal/band_filter.hpp"
#include "app/signal/band_sums.hpp"
#include "app/signal/fourier_sums.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/number_text.hpp"
#include "bench/literal.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

class SpectrumTest : public ::testing::Test {
 protected:
  SpectrumTest() { EXPECT_TRUE(allocate_work_buffer()); }
  ~SpectrumTest() override { release_work_buffer(); }
  TemporaryDirectory directory_;
};

TEST_F(SpectrumTest, BudgetsAndRefusals) {
  literal::write("short", recorded(9'998, 1));
  literal::write("a", recorded(9'999, 1));
  write_file("spe", "good");
  const auto spectrum = [](const char* in, const char* samples) {
    return printed_by([&] { EXPECT_EQ(power_spectrum(in, "spe", samples), 1); });
  };
  EXPECT_EQ(printed_by([] { EXPECT_EQ(filter_spectrum("x", "x", 0, 1, 0), 1); }),
            "run power spectrum\n");
  EXPECT_EQ(spectrum("short", "all"), "in power_spectrum\nnot enough samples\n");
  for (const char* samples : {"9999", "0", "-5", "abc"})
    EXPECT_EQ(spectrum("a", samples), "in power_spectrum\nnot enough samples\n") << samples;
  EXPECT_EQ(spectrum("none", "all"), "in power_spectrum\ncould not open none\n");
  EXPECT_EQ(read_file("spe"), "good");
  printed_by([] { EXPECT_EQ(power_spectrum("a", "a", "10000"), 0); });
  EXPECT_TRUE(read_file("a").starts_with("size=10000\n0 ")) << "read before it is replaced";
}

TEST_F(SpectrumTest, SineOnABin) {
  constexpr int size = 10'000;
  constexpr int bin = 20;
  std::vector<float> x(size - 1);
  for (int i = 1; i < size; ++i)
    x[static_cast<std::size_t>(i - 1)] =
        static_cast<float>(100 * std::sin(2 * M_PI * bin * i / size));
  literal::write("a", x);
  EXPECT_EQ(printed_by([] { EXPECT_EQ(power_spectrum("a", "spe", "all"), 0); }),
            "in power_spectrum\n0 percent ready\n20 percent ready\n40 percent ready\n"
            "60 percent ready\n80 percent ready\n100 percent ready\n");
  EXPECT_EQ(stored_spectrum_size(), size);
  for (int j = 0; j <= size / 2; ++j) {
    const auto i = static_cast<std::size_t>(j);
    EXPECT_NEAR(static_cast<double>(stored_b()[i]), j == bin ? 100 : 0, 0.1) << j;
    EXPECT_NEAR(static_cast<double>(stored_a()[i]), 0, 0.1) << j;
    EXPECT_NEAR(static_cast<double>(stored_power()[i]), j == bin ? 1e4 : 0, 20) << j;
  }
  // 88.2 Hz: the band holds the sine, times 2 x 44100 / K.
  EXPECT_TRUE(printed_by([] {
                EXPECT_EQ(filter_spectrum("mid", "x", 80, 100, 0), 0);
              }).ends_with("90 percent ready\ndone\n"));
  const auto band = literal::read("mid");
  ASSERT_EQ(band.size(), 10'000U);
  for (std::size_t i = 1; i < band.size(); ++i)
    ASSERT_NEAR(static_cast<double>(band[i]), 8.82 * static_cast<double>(x[i - 1]), 1) << i;
}

TEST_F(SpectrumTest, DigitsOfTheLiteralSums) {
  // Beside a tone this loud some powers lie too near a rounding boundary for the quick sums.
  auto x = integers(sine_in_noise(10'016, 20'000, 6), 1);
  for (std::size_t i = 0; i < x.size(); ++i)
    x[i] += static_cast<float>(3e7 * std::sin(static_cast<double>(i) * 0.0314));
  literal::write("a", x);
  printed_by([] { EXPECT_EQ(power_spectrum("a", "spe", "all"), 0); });
  const auto c = literal::power_spectrum("a", "expected", 100'000);
  ASSERT_EQ(read_file("spe"), read_file("expected"));
  EXPECT_TRUE(std::equal(c.a.begin(), c.a.end(), stored_a().begin()));
  EXPECT_TRUE(std::equal(c.b.begin(), c.b.end(), stored_b().begin()));
  struct Band {
    int low, high, mode;
  };
  // Around 0; nothing; the highest bins; the lowest and the highest; the mean alone.
  for (const Band& band : {Band{-100, 300, 0}, Band{5000, 2200, 0}, Band{21'900, 60'000, 0},
                           Band{300, 21'900, 1}, Band{-100, 2'000'000'000, 1}}) {
    printed_by([&] { EXPECT_EQ(filter_spectrum("y", "y", band.low, band.high, band.mode), 0); });
    literal::filter_spectrum(c, "expected", band.low, band.high, band.mode);
    ASSERT_EQ(read_file("y"), read_file("expected")) << band.low << " " << band.high;
  }
}

// Beyond 46340 samples the products of the angles wrap; only some bins are summed literally.
TEST(FourierSums, WrappingProducts) {
  for (const std::size_t size : {46'341U, 99'991U, 100'000U}) {
    const auto x = sine_in_noise(size, 30'000, 8);
    for (const int first : {1, 14'000, static_cast<int>(size / 2) - 31}) {
      std::array<FourierSums, fourier_lanes> sums;
      fourier_sums(x, first, sums);
      for (const int lane : {0, 17, 31}) {
        const FourierSums literal = plain_fourier_sums(x, first + lane);
        const FourierSums& sum = sums[static_cast<std::size_t>(lane)];
        EXPECT_NEAR(sum.cosines, literal.cosines, fourier_sum_tolerance(x) / 2) << first + lane;
        EXPECT_NEAR(sum.sines, literal.sines, fourier_sum_tolerance(x) / 2) << first + lane;
      }
    }
  }
}

TEST(BandSums, LinesOnARoundingBoundary) {
  constexpr int size = 20'000;
  std::mt19937 random(3);
  std::normal_distribution<float> noise(0, 3000);
  std::vector<float> a(size);
  std::vector<float> b(size);
  for (std::size_t j = 0; j <= size / 2; ++j) {
    a[j] = noise(random);
    b[j] = noise(random);
  }
  const BandSums sums(a, b, size, 0.5, {{{1, 900}, {8'000, size - 1}}});
  std::array<double, BandSums::lanes> quick;
  std::array<double, BandSums::lanes> settled;
  for (int first = 0; first < size; first += 32 * 67) {
    sums.quick_values(first, quick);
    sums.values(first, settled);
    for (int l = 0; l < BandSums::lanes; ++l) {
      const auto i = static_cast<std::size_t>(l);
      const double literal = sums.plain_value(first + l);
      EXPECT_NEAR(quick[i], literal, sums.tolerance(literal) / 2) << first + l;
      EXPECT_TRUE(same_fixed6(settled[i], literal)) << first + l;
    }
  }
}

}  // namespace
}  // namespace torve
