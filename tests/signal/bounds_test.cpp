// How wide the bounds are by which digits are proved. A bound that is a little too narrow shows in
// no digit for years, and one that is too wide only takes time: so who changes one changes a row
// here, too, and gives the reason in the header that derives it.

#include <cstdio>
#include <numeric>

#include "app/signal/band_corrections.hpp"
#include "app/signal/band_sums.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/fourier_corrections.hpp"
#include "app/signal/lag_narrowing.hpp"
#include "app/signal/transforms/band_proposal.hpp"
#include "app/signal/transforms/fourier_proposal.hpp"
#include "app/signal/transforms/lag_proposal.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Floats = std::vector<float>;

/// Parts of bounds, added up over many sums.
struct Total {
  const char* name;
  double angles = 0, additions = 0, rest = 0;

  template <typename Estimate>
  void add(const Estimate& estimate) {
    angles += estimate.angle_error;
    additions += estimate.addition_error;
    rest += estimate.error;
  }
  void add(double low, double high) { rest += high - low; }
};

/// In four digits, so that the last bits of sines do not matter.
std::string text_of(std::initializer_list<Total> totals) {
  std::string text;
  for (const Total& total : totals) {
    char digits[200];
    std::snprintf(digits, sizeof digits, "%s %.4g %.4g %.4g; ", total.name, total.angles,
                  total.additions, total.rest);
    text += digits;
  }
  return text;
}

/// The bounds of 32 bins: proposed, corrected in one part and in all, both kinds of ends.
std::string fourier_bounds(const Floats& x, int first_bin) {
  constexpr int tile_size = transforms::FourierProposal::tile;
  std::vector<FourierEstimate> tile(tile_size);
  const int place = first_bin % tile_size;
  transforms::FourierProposal::make(x)->propose(first_bin - place,
                                                std::span<FourierEstimate, tile_size>(tile));
  std::array<int, fourier_lanes> bins;
  std::iota(bins.begin(), bins.end(), first_bin);
  std::vector<CorrectedBin> corrected;
  Total proposed = {"proposed"}, in_part = {"one part"}, in_all = {"all parts"};
  Total ends_apart = {"ends"}, close_ends_apart = {"close ends"};
  for (int l = 0; l < fourier_lanes; ++l) {
    corrected.emplace_back(tile[static_cast<std::size_t>(place + l)]);
    proposed.add(corrected.back().estimate);
  }
  FourierCorrections corrections(x);
  for (int part = 0; part < FourierCorrections::parts; ++part) {
    corrections.correct(part, bins, corrected);
    for (const CorrectedBin& bin : corrected) {
      if (part == 0) in_part.add(bin.estimate);
      if (part + 1 == FourierCorrections::parts) in_all.add(bin.estimate);
    }
  }
  std::array<FourierEnds, fourier_lanes> ends, close_ends;
  fourier_sum_ends(x, bins, ends);
  fourier_close_ends(x, bins, close_ends);
  for (std::size_t l = 0; l < fourier_lanes; ++l) {
    ends_apart.add(ends[l].low.cosines, ends[l].high.cosines);
    close_ends_apart.add(close_ends[l].low.sines, close_ends[l].high.sines);
  }
  return text_of({proposed, in_part, in_all, ends_apart, close_ends_apart});
}

TEST(Bounds, OfFourierSums) {
  Floats loud_place = recorded(3'000, 2);
  loud_place[700] = 1e9F;
  const struct {
    const char* name;
    Floats x;
    int first_bin;
    std::string expected;
  } cases[] = {
      {"voice", integers(recorded(5'000, 2), 32'000), 1'000,
       "proposed 0.0004592 8.043e-05 1.42e-05; one part 0.0003311 8.043e-05 1.753e-05; all parts 0 "
       "6.655e-07 2.164e-05; ends 0 0 1.708e-06; close ends 0 0 2.328e-07; "},
      {"a tone in noise", sine_in_noise(5'000, 2, 3), 1'900,
       "proposed 2.758e-07 2.362e-08 3.837e-09; one part 1.363e-07 2.362e-08 4.109e-09; all parts "
       "0 3.734e-10 5.271e-09; ends 0 0 5.072e-10; close ends 0 0 6.965e-11; "},
      {"one loud place", loud_place, 300,
       "proposed 0.006575 0.01078 0.01917; one part 0.003327 0.01078 0.01919; all parts 0 0.004486 "
       "0.02139; ends 0 0 7.783e-05; close ends 0 0 1.113e-05; "},
      {"products that wrap", integers(recorded(60'000, 4), 32'000), 28'000,
       "proposed 0.0513 0.0005728 0.0008517; one part 0.03233 0.0005728 0.001115; all parts 0 "
       "1.707e-05 0.002247; ends 0 0 1.211e-05; close ends 0 0 1.652e-06; "},
  };
  for (const auto& c : cases)
    EXPECT_EQ(fourier_bounds(c.x, c.first_bin), c.expected) << c.name;
}

/// The same of 32 samples.
std::string band_bounds(const BandSums& sums, int first) {
  constexpr int tile_size = transforms::BandProposal::tile;
  std::vector<BandEstimate> tile(tile_size);
  const int place = first % tile_size;
  transforms::BandProposal::make(sums.terms())
      ->propose(first - place, std::span<BandEstimate, tile_size>(tile));
  std::array<int, BandSums::lanes> times;
  std::iota(times.begin(), times.end(), first);
  Total proposed = {"proposed"}, corrected = {"corrected"};
  Total ends_apart = {"ends"}, close_ends_apart = {"close ends"};
  const auto estimates = std::span(tile).subspan(static_cast<std::size_t>(place), times.size());
  for (const BandEstimate& estimate : estimates)
    proposed.add(estimate);
  BandCorrections(sums.terms()).correct(times, estimates);
  for (const BandEstimate& estimate : estimates)
    corrected.add(estimate);
  std::array<BandSums::Ends, BandSums::lanes> ends, close_ends;
  sums.ends(times, ends);
  sums.close_ends(times, close_ends);
  for (std::size_t l = 0; l < times.size(); ++l) {
    ends_apart.add(ends[l].low, ends[l].high);
    close_ends_apart.add(close_ends[l].low, close_ends[l].high);
  }
  return text_of({proposed, corrected, ends_apart, close_ends_apart});
}

TEST(Bounds, OfBands) {
  const struct {
    const char* name;
    int size;
    double level;
    BinRange bins[2];
    int first;
    std::string expected;
  } cases[] = {
      {"both ranges",
       5'000,
       2,
       {{1, 700}, {900, 2'500}},
       3'000,
       "proposed 4.12e-06 2.113e-07 6.245e-08; corrected 0 3.3e-08 9.285e-08; ends 0 0 1.187e-08; "
       "close ends 0 0 1.114e-09; "},
      {"faint",
       5'000,
       1e-3,
       {{1, 700}, {900, 2'500}},
       4'900,
       "proposed 2.688e-09 1.086e-10 3.171e-11; corrected 0 1.249e-10 2.217e-09; ends 0 0 "
       "5.958e-12; close ends 0 0 5.636e-13; "},
      {"one range",
       20'000,
       100,
       {{4'000, 9'999}, {1, 0}},
       17'000,
       "proposed 0.0007608 8.798e-06 1.426e-06; corrected 0 1.543e-07 1.613e-06; ends 0 0 "
       "3.888e-07; close ends 0 0 3.669e-08; "},
  };
  for (const auto& c : cases) {
    Floats a = sine_in_noise(static_cast<std::size_t>(c.size), c.level, 1);
    Floats b = sine_in_noise(a.size(), c.level, 2);
    std::fill(a.begin() + 950, a.begin() + 1'000, 0.0F);
    b[960] = 0.01F;
    const BandSums sums(a, b, c.size, 0.5, {c.bins[0], c.bins[1]});
    EXPECT_EQ(band_bounds(sums, c.first), c.expected) << c.name;
  }
}

/// Of all lags: as they are proposed, and as whole numbers narrow them.
std::string lag_bounds(const std::vector<double>& a, const std::vector<double>& b) {
  std::vector<std::size_t> lags;
  Total proposed = {"proposed"}, narrowed = {"narrowed"};
  EXPECT_TRUE(transforms::propose_lags(a, b, [&](const transforms::LagTile& tile) {
    for (const double roundings : tile.roundings) {
      lags.push_back(lags.size());
      proposed.additions += roundings;
      proposed.rest += tile.error;
    }
  }));
  const auto closer = narrowed_lags(a, b, lags);
  for (const LagEstimate& lag : *closer) {
    narrowed.additions += lag.roundings;
    narrowed.rest += lag.error;
  }
  return text_of({proposed, narrowed});
}

TEST(Bounds, OfLags) {
  const Floats voice = integers(recorded(5'000, 2), 32'000);
  const struct {
    const char* name;
    Floats x, y;
    double mean1, mean2;
    std::string expected;
  } cases[] = {
      {"a voice", voice, voice, 0.3, 0.3, "proposed 0 158 14.44; narrowed 0 28.47 0.5717; "},
      {"far off", voice, integers(sine_in_noise(5'000, 9'000, 3), 1), 0.3, 12'345.6,
       "proposed 0 381.1 41.81; narrowed 0 35.42 1.658; "},
      {"no whole numbers", sine_in_noise(5'000, 0.3, 5), voice, 0, 0,
       "proposed 0 0.004924 0.0004585; narrowed 0 0.0004296 7.416e+05; "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(lag_bounds(deviations(c.x, c.mean1), deviations(c.y, c.mean2)), c.expected) << c.name;
  }
}

}  // namespace
}  // namespace torve
