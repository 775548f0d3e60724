// Correlations, matches, spectra and bands: the digits of the literal sums, and what is refused.

#include "app/signal/band_corrections.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/band_values.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/fourier_corrections.hpp"
#include "app/signal/fourier_sums.hpp"
#include "app/signal/lag_narrowing.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/proof.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/transforms/band_proposal.hpp"
#include "app/signal/transforms/fourier_proposal.hpp"
#include "app/signal/transforms/lag_proposal.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/number_text.hpp"
#include "bench/literal.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Floats = std::vector<float>;

class Analyses : public ::testing::Test {
 protected:
  Analyses() { EXPECT_TRUE(allocate_work_buffer()); }
  ~Analyses() override { release_work_buffer(); }
  TemporaryDirectory directory_;
};

// Of half period h; sums of it cancel, or their roundings all go one way.
Floats square_wave(std::size_t n, std::size_t h, float level) {
  Floats x(n);
  for (std::size_t i = 0; i < n; ++i)
    x[i] = i / h % 2 == 0 ? level : -level;
  return x;
}

TEST_F(Analyses, CorrelationsHaveTheDigitsOfTheLiteralSums) {
  for (const std::size_t n : {1U, 31U, 32U, 33U, 64U, 1000U, 3000U, 4097U, 8200U}) {
    literal::write("a", integers(sine_in_noise(n, 20'000, static_cast<unsigned>(n)), 1));
    literal::write("b", sine_in_noise(n + n / 3, 3, 9));
    literal::write("c", square_wave(n, 2, 2e6F));
    for (const auto& [one, two] : {std::pair("a", "b"), {"b", "a"}, {"c", "c"}}) {
      const std::string said =
          printed_by([one = one, two = two] { literal::correlation(one, two, "expected"); });
      EXPECT_EQ(printed_by([one = one, two = two] { EXPECT_EQ(correlation(one, two, "1"), 0); }),
                "in correlation\n" + said + "done\n");
      ASSERT_EQ(read_file("corre1.res"), read_file("expected")) << n;
      literal::autocorrelation(one, "expected");
      EXPECT_EQ(printed_by([one = one] { EXPECT_EQ(autocorrelation(one, "1"), 0); }),
                "in autocorrelation\ngot ave and variance\ndone\n");
      ASSERT_EQ(read_file("autocor1.res"), read_file("expected")) << n;
    }
  }
}

struct Found {
  int result, offset;
  float scale;
  std::string printed;
};

Found match(int start, float scale, const std::string& out = "c", int mode = 1,
            const std::string& samples = "all") {
  Found found = {-1, 0, scale, ""};
  float mean = 0;
  found.printed = printed_by([&] {
    found.result =
        my_correlation("a", "b", out, &mean, &found.offset, &found.scale, mode, start, samples);
  });
  return found;
}

Floats shifted(Floats x, int by) {
  std::rotate(x.begin(), x.begin() + by, x.end());
  return x;
}

TEST_F(Analyses, MatchesHaveTheDigitsOfTheLiteralSearch) {
  // All scales between the two levels are equally good, but for rounding.
  Floats levels(10'000, 0.95F);
  std::fill(levels.begin() + 5'000, levels.end(), 1.05F);
  const std::pair<Floats, Floats> pairs[] = {
      {sine_in_noise(11'500, 8000, 1), shifted(recorded(10'050, 2), 77)},
      {recorded(10'000, 2), recorded(10'000, 2)},
      {Floats(10'500, 5), Floats(10'000, -5)},
      {levels, Floats(10'000, 3)},
  };
  for (const auto& [a, b] : pairs) {
    literal::write("a", a);
    literal::write("b", b);
    // Within reach, beyond it on the low side, and where the first signal ends.
    for (const auto& place : {std::pair(300, 0.9F), {9'000, -2.0F}}) {
      const auto [start, scale] = place;
      const std::string lines = printed_by(
          [&place] { literal::my_correlation("a", "b", "c", place.first, place.second); });
      std::filesystem::rename("c", "expected");
      EXPECT_TRUE(match(start, scale).printed.ends_with(lines)) << start;
      ASSERT_EQ(read_file("c"), read_file("expected")) << start;
    }
  }
}

TEST_F(Analyses, MatchesOverAnInputAndByShifts) {
  const Floats b = recorded(10'000, 3);
  literal::write("a", shifted(b, 9'990));
  literal::write("b", b);
  const Found shifts = match(0, 1, "c", 0);
  EXPECT_TRUE(shifts.printed.ends_with(" j1=10 offset=10\ndone\n")) << shifts.printed;
  EXPECT_EQ(std::tuple(shifts.result, shifts.offset, shifts.scale), std::tuple(0, -10, 1.0F));
  EXPECT_EQ(literal::read("c").size(), 9'990U);
  EXPECT_EQ(match(0, 1, "c").result + match(0, 1, "a").result, 0);
  EXPECT_EQ(read_file("a"), read_file("c")) << "the input is read before it is replaced";
}

TEST_F(Analyses, MatchesThatAreRefused) {
  literal::write("a", recorded(10'000, 2));
  literal::write("b", recorded(10'000, 3));
  write_file("c", "good");
  EXPECT_EQ(match(-5, 1).result, 0);
  for (const Found& none : {match(0, 1, "c", 1, "9999"), match(0, 1, "no/c"), match(50'000, 1),
                            match(0, 1e30F), match(0, NAN)}) {
    EXPECT_EQ(none.result, 1);
    EXPECT_EQ(none.printed.find("offset_best"), std::string::npos);
  }
  EXPECT_EQ(read_file("c") + read_file("c.bak"), "good") << "it would pass for the result";
}

TEST_F(Analyses, SpectraHaveTheirLeastSize) {
  literal::write("short", recorded(9'998, 1));
  literal::write("a", recorded(9'999, 1));
  printed_by([] { EXPECT_EQ(filter_spectrum("x", "x", 0, 1, 0), 1); });
  const std::string input = read_file("a");
  const struct {
    const char *in, *samples, *out;
    std::string left;
  } too_few[] = {{"short", "all", "spe", ""}, {"a", "9999", "spe", ""}, {"a", "9999", "a", input}};
  for (const auto& c : too_few) {
    write_file("spe", "older");
    EXPECT_EQ(printed_by([&c] { EXPECT_EQ(power_spectrum(c.in, c.out, c.samples), 1); }),
              "in power_spectrum\nnot enough samples\n");
    EXPECT_EQ(read_file(c.out), c.left) << c.in << ' ' << c.out;
  }
  EXPECT_EQ(printed_by([] { EXPECT_EQ(power_spectrum("a", "a", "10000"), 0); }),
            "in power_spectrum\n0 percent ready\n20 percent ready\n40 percent ready\n"
            "60 percent ready\n80 percent ready\n100 percent ready\n");
  EXPECT_TRUE(read_file("a").starts_with("size=10000\n0 ")) << "read before it is replaced";
}

struct Band {
  int low, high, mode;
};

// The spectrum of x, then bands. Above its last bin the buffer holds those of `older`.
void check_spectrum_and_bands(const Floats& x, std::initializer_list<Band> bands,
                              const literal::Coefficients& older = {}) {
  literal::write("a", x);
  printed_by([] { EXPECT_EQ(power_spectrum("a", "spe", "all"), 0); });
  auto c = literal::power_spectrum("a", "expected", 100'000);
  ASSERT_EQ(read_file("spe"), read_file("expected"));
  const std::size_t bins = c.power.size();
  if (older.size > c.size) {
    std::copy(older.a.begin() + static_cast<int>(bins), older.a.begin() + c.size,
              c.a.begin() + static_cast<int>(bins));
    std::copy(older.b.begin() + static_cast<int>(bins), older.b.begin() + c.size,
              c.b.begin() + static_cast<int>(bins));
  }
  for (const Band& band : bands) {
    EXPECT_TRUE(printed_by([&] {
                  EXPECT_EQ(filter_spectrum("y", "y", band.low, band.high, band.mode), 0);
                }).ends_with("99 percent ready\ndone\n"));
    literal::filter_spectrum(c, "expected", band.low, band.high, band.mode);
    ASSERT_EQ(read_file("y"), read_file("expected")) << band.low << " " << band.high;
  }
  settle_stored_coefficients(1, c.size - 1);
  EXPECT_TRUE(std::equal(c.a.begin(), c.a.end(), stored_a().begin()));
  EXPECT_TRUE(std::equal(c.b.begin(), c.b.end(), stored_b().begin()));
}

TEST_F(Analyses, SpectraAndBandsHaveTheDigitsOfTheLiteralSums) {
  // Beside a tone this loud some powers lie too near a rounding boundary for the quick sums.
  Floats x = integers(sine_in_noise(10'016, 20'000, 6), 1);
  for (std::size_t i = 0; i < x.size(); ++i)
    x[i] += static_cast<float>(3e7 * std::sin(static_cast<double>(i) * 0.0314));
  check_spectrum_and_bands(x, {
                                  {-100, 300, 0},            // around 0
                                  {5000, 2200, 0},           // nothing
                                  {21'900, 60'000, 0},       // the highest bins
                                  {300, 21'900, 1},          // the lowest and the highest
                                  {-100, 2'000'000'000, 1},  // the mean alone
                              });
}

TEST_F(Analyses, BandsOfSquareWavesHaveTheDigitsOfTheLiteralSums) {
  literal::write("a", integers(recorded(12'345, 5), 32'000));
  printed_by([] { EXPECT_EQ(power_spectrum("a", "spe", "all"), 0); });
  const auto older = literal::power_spectrum("a", "expected", 100'000);
  check_spectrum_and_bands(square_wave(10'000, 50, 20'000), {{2200, 5000, 1}}, older);
}

// Beyond 46340 samples the products of the angles wrap; only some bins are summed literally.
TEST(FourierSums, WrappingProducts) {
  for (const std::size_t size : {46'341U, 99'991U, 100'000U}) {
    Floats x = sine_in_noise(size, 30'000, 8);
    x[size / 3] = 3e7F;  // what the rounding of its angle does is seen
    const int half = static_cast<int>(size / 2);
    const std::array bins = {1, 17, 14'000, half / 2, half - 1, half};
    std::array<FourierEnds, bins.size()> ends, close;
    std::array<FourierSums, bins.size()> sums;
    FourierCorrections corrections(x);
    fourier_sum_ends(x, bins, ends);
    fourier_close_ends(x, bins, close);
    literal_fourier_sums(x, bins, sums);
    const auto proposal = transforms::FourierProposal::make(x);
    std::vector<FourierEstimate> tile(transforms::FourierProposal::tile);
    for (std::size_t l = 0; l < bins.size(); ++l) {
      const auto [cosines, sines] = plain_fourier_sums(x, bins[l]);
      EXPECT_EQ(std::tuple(sums[l].cosines, sums[l].sines), std::tuple(cosines, sines)) << bins[l];
      const int place = bins[l] % transforms::FourierProposal::tile;
      proposal->propose(bins[l] - place, std::span<FourierEstimate, 2048>(tile));
      const FourierEstimate& estimate = tile[static_cast<std::size_t>(place)];
      CorrectedBin corrected(estimate);
      for (int part = 0; part < FourierCorrections::parts; ++part) {
        corrections.correct(part, std::span(&bins[l], 1), std::span(&corrected, 1));
        const auto [low, high] = ends_of(corrected.estimate);
        EXPECT_TRUE(low.cosines <= cosines && cosines <= high.cosines) << bins[l] << ' ' << part;
      }
      const FourierEnds all[] = {ends[l], ends_of(estimate), ends_of(corrected.estimate), close[l]};
      for (const auto& [low, high] : all) {
        EXPECT_TRUE(low.cosines <= cosines && cosines <= high.cosines) << bins[l];
        EXPECT_TRUE(low.sines <= sines && sines <= high.sines) << bins[l];
      }
      EXPECT_LT(all[2].high.sines - all[2].low.sines, (all[1].high.sines - all[1].low.sines) / 2);
    }
  }
}

// The whole of a bound never proves wrong digits of a coefficient; a millionth of it does, where
// roundings do not cancel.
TEST(FourierSums, ANarrowerBoundWouldProveWrongDigits) {
  constexpr int size = 10'000;
  std::vector<FourierEstimate> tile(transforms::FourierProposal::tile);
  const auto coefficient = [](double sum) { return static_cast<float>(2 * sum / size); };
  int proved = 0, wrong = 0, wrong_by_millionth = 0;
  for (const Floats& x : {sine_in_noise(size, 30'000, 3), square_wave(size, 50, 20'000)}) {
    transforms::FourierProposal::make(x)->propose(2048, std::span<FourierEstimate, 2048>(tile));
    for (int bin = 2048; bin < 2648; ++bin) {
      const float right = coefficient(plain_fourier_sums(x, bin).cosines);
      for (const double share : {1.0, 1e-6}) {
        FourierEstimate estimate = tile[static_cast<std::size_t>(bin - 2048)];
        for (double* error : {&estimate.angle_error, &estimate.addition_error, &estimate.error})
          *error *= share;
        const auto [low, high] = ends_of(estimate);
        const float digits = coefficient(low.cosines);
        if (!same_float(digits, coefficient(high.cosines))) continue;
        if (share == 1) ++proved;
        if (digits != right) ++(share == 1 ? wrong : wrong_by_millionth);
      }
    }
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_GT(proved, 500);
  EXPECT_GT(wrong_by_millionth, 0);
}

// The same of means of lags, as transforms propose them, as whole numbers narrow them, and by both.
TEST(LagSums, ANarrowerBoundWouldProveWrongDigits) {
  constexpr std::size_t size = 8'000;
  const Floats voice = integers(recorded(size, 2), 32'000);
  // Sums of four products are nothing, but for their roundings.
  Floats held = sine_in_noise(size, 2e6, 4), cancelling = integers(held, 0.1);
  for (std::size_t i = 0; i < size; i += 4) {
    std::fill_n(&held[i], 4, held[i]);
    cancelling[i + 3] = -(cancelling[i] + cancelling[i + 1] + cancelling[i + 2]);
  }
  // Means just below the middle of two floats, whose roundings go up, nearly all of them.
  const double between = -std::sqrt(0x1.000001p20 * (1 - 4e-14));
  Floats swing(size, -2.8e-10F);
  for (std::size_t i = 0; i < size; i += 3)
    swing[i] = 5.6e-10F;
  const struct {
    Floats x, y;
    double mean1, mean2;
  } pairs[] = {{voice, voice, 0.3, 0.3},
               {voice, integers(sine_in_noise(size, 9'000, 3), 1), 0.3, 12'345.6},  // far off
               {sine_in_noise(size, 30'000, 5), voice, 0, 0},
               {held, cancelling, 0, 0},
               {Floats(size), swing, between, between}};
  int proved[3] = {}, wrong[3] = {}, wrong_by_millionth[3] = {};
  for (const auto& [x, y, mean1, mean2] : pairs) {
    const auto a = deviations(x, mean1);
    const auto b = deviations(y, mean2);
    const Floats right = literal::lag_means(x, mean1, y, mean2);
    std::vector<LagEstimate> proposed;
    std::vector<std::size_t> lags;
    EXPECT_TRUE(transforms::propose_lags(a, b, [&](const transforms::LagTile& tile) {
      for (std::size_t l = 0; l < tile.sums.size(); ++l) {
        proposed.push_back({tile.sums[l], tile.error, tile.roundings[l]});
        lags.push_back(tile.first + l);
      }
    }));
    const auto narrowed = narrowed_lags(a, b, lags);
    for (const std::size_t k : lags) {
      for (const double share : {1.0, 1e-6}) {
        LagEstimate one = proposed[k], other = (*narrowed)[k];
        for (double* bound : {&one.error, &one.roundings, &other.error, &other.roundings})
          *bound *= share;
        const LagEnds ends[] = {ends_of(one), ends_of(other), ends_of(one, other)};
        for (int tier = 0; tier < 3; ++tier) {
          float digits = 0;
          if (!settle_mean(ends[tier], static_cast<double>(size - k), digits)) continue;
          if (share == 1) ++proved[tier];
          if (std::to_string(digits) == std::to_string(right[k])) continue;
          ++(share == 1 ? wrong : wrong_by_millionth)[tier];
        }
      }
    }
  }
  for (int tier = 0; tier < 3; ++tier) {
    EXPECT_EQ(wrong[tier], 0) << tier;
    EXPECT_GT(proved[tier], 15'000);
    EXPECT_GT(wrong_by_millionth[tier], 0);
  }
}

// Products of terms so large do not fit single precision, and ends that are no numbers prove
// nothing, though they have one text. Whether both have one sign is up to the compiler.
TEST(BandSums, TermsTooLargeForSinglePrecision) {
  constexpr int size = 16'384, first_bin = 8'100, last_bin = 8'190, first = size - 32;
  Floats a(size), b(size);
  for (int j = first_bin; j <= last_bin; ++j)
    a[static_cast<std::size_t>(j)] = static_cast<float>(j % 7 - 3) * 1e32F;
  const BandSums sums(a, b, size, 0, {{{first_bin, last_bin}, {1, 0}}});
  const std::vector<double> values = band_values(sums, first, BandSums::lanes, [](int) {});
  for (int t = 0; t < BandSums::lanes; ++t)
    EXPECT_TRUE(same_fixed6(values[static_cast<std::size_t>(t)], sums.plain_value(first + t))) << t;
}

// The same for samples of a band; and what the roundings of angles add is nearly all that they
// miss.
TEST(BandSums, ANarrowerBoundWouldProveWrongDigits) {
  std::vector<BandEstimate> tile(transforms::BandProposal::tile);
  int proved = 0, proved_corrected = 0, wrong = 0, wrong_by_millionth = 0;
  double missed = 0, missed_corrected = 0;
  const struct {
    int size;
    double level, tone;
    BinRange bins[2];
  } cases[] = {{3'000, 12, 0, {{1, 700}, {900, 1'500}}},
               {3'000, 120, 0, {{1, 700}, {900, 1'500}}},
               {20'000, 0.01, 5'000, {{9'000, 9'100}, {1, 0}}}};
  for (const auto& c : cases) {
    Floats a = sine_in_noise(static_cast<std::size_t>(c.size), c.level, 1);
    const Floats b = sine_in_noise(a.size(), c.level, 2);
    a[9'050 % a.size()] += static_cast<float>(c.tone);
    const BandSums sums(a, b, c.size, 0.5, {c.bins[0], c.bins[1]});
    const BandCorrections corrections(sums.terms());
    transforms::BandProposal::make(sums.terms())->propose(0, std::span<BandEstimate, 2048>(tile));
    for (int t = 1'048; t < 2'048; ++t) {
      const double right = sums.plain_value(t);
      const auto proves = [right](const BandEstimate& estimate, int& wrong_ones) {
        const auto [low, high] = ends_of(estimate);
        const bool one_text = same_fixed6(low, high);
        if (one_text ? !same_fixed6(low, right) : low > right || right > high) ++wrong_ones;
        return one_text ? 1 : 0;
      };
      BandEstimate estimate = tile[static_cast<std::size_t>(t)];
      proved += proves(estimate, wrong);
      missed += std::fabs(estimate.value - right);
      BandEstimate narrow = estimate;
      for (double* error : {&narrow.angle_error, &narrow.addition_error, &narrow.error})
        *error *= 1e-6;
      proves(narrow, wrong_by_millionth);
      corrections.correct(std::span(&t, 1), std::span(&estimate, 1));
      proved_corrected += proves(estimate, wrong);
      missed_corrected += std::fabs(estimate.value - right);
    }
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_GT(proved, 100);
  EXPECT_GT(proved_corrected, 1'500);
  EXPECT_GT(wrong_by_millionth, 0);
  EXPECT_LT(missed_corrected, missed / 50);
}

}  // namespace
}  // namespace torve
