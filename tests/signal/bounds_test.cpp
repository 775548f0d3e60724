// How wide the bounds are by which digits are proved. A bound that is a little too narrow shows in
// no digit for years, and one that is too wide only takes time: so who changes one changes a row
// here, too, and gives the reason in the header that derives it.

#include <cstdio>
#include <functional>
#include <numeric>

#include "app/signal/band_corrections.hpp"
#include "app/signal/band_sums.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/fourier_corrections.hpp"
#include "app/signal/lag_narrowing.hpp"
#include "app/signal/transforms/band_proposal.hpp"
#include "app/signal/transforms/close_sums.hpp"
#include "app/signal/transforms/fourier_proposal.hpp"
#include "app/signal/transforms/lag_proposal.hpp"
#include "bench/signals.hpp"
#include "support/screen.hpp"

namespace torve {
namespace {

using Floats = std::vector<float>;

/// The sum over some estimates of each of their parts, in so few digits that it does not matter
/// what the processor fuses.
template <typename Estimates, typename... Parts>
std::string sums_of(int digits, const Estimates& estimates, Parts... parts) {
  std::string text;
  const auto add = [&](auto part) {
    double sum = 0;
    for (const auto& estimate : estimates)
      sum += std::invoke(part, estimate);
    char sum_text[32];
    std::snprintf(sum_text, sizeof sum_text, "%.*g ", digits, sum);
    text += sum_text;
  };
  (add(parts), ...);
  return text;
}

template <typename Estimate>
std::string bounds_of(const std::vector<Estimate>& estimates) {
  return sums_of(3, estimates, &Estimate::angle_error, &Estimate::addition_error, &Estimate::error);
}

/// `count` estimates from one tile on.
template <typename Proposal, typename Estimate>
std::vector<Estimate> proposed(Proposal& proposal, int first, int count) {
  std::vector<Estimate> tile(Proposal::tile);
  const int place = first % Proposal::tile;
  proposal.propose(first - place, std::span<Estimate, Proposal::tile>(tile));
  return {tile.begin() + place, tile.begin() + place + count};
}

std::vector<int> numbers_from(int first, int count) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

std::string bounds_of(const std::vector<CorrectedBin>& bins) {
  std::vector<FourierEstimate> estimates;
  for (const CorrectedBin& bin : bins)
    estimates.push_back(bin.estimate);
  return bounds_of(estimates);
}

/// Of 32 bins: proposed, corrected in one part, in all; of close sums to begin with, and when
/// corrected and refined; ends, close ends.
std::string fourier_bounds(const Floats& x, int first_bin) {
  const auto estimates = proposed<transforms::FourierProposal, FourierEstimate>(
      *transforms::FourierProposal::make(x), first_bin, fourier_lanes);
  const std::vector<int> bins = numbers_from(first_bin, fourier_lanes);
  std::string text = bounds_of(estimates);
  std::vector<CorrectedBin> corrected(estimates.begin(), estimates.end());
  FourierCorrections corrections(x);
  for (int part = 0; part < FourierCorrections::parts; ++part) {
    corrections.correct(part, bins, corrected);
    if (part == 0 || part + 1 == FourierCorrections::parts) text += bounds_of(corrected);
  }
  std::vector<TrueSums> close(transforms::CloseSums::tile);
  transforms::CloseSums::make(x, first_bin, bins.back())
      ->find(first_bin, std::span<TrueSums, transforms::CloseSums::tile>(close));
  for (std::size_t l = 0; l < bins.size(); ++l)
    corrected[l] = corrections.begin(bins[l], close[l]);
  text += bounds_of(corrected);
  for (int part = 0; part < FourierCorrections::parts; ++part)
    corrections.correct(part, bins, corrected);
  corrections.refine(bins, corrected);
  text += bounds_of(corrected);
  std::vector<FourierEnds> ends(bins.size());
  for (const auto find : {fourier_sum_ends, fourier_close_ends}) {
    find(x, bins, ends);
    text += sums_of(1, ends, [](const FourierEnds& e) { return e.high.sines - e.low.sines; });
  }
  return text;
}

TEST(Bounds, OfFourierSums) {
  Floats loud_place = recorded(3'000, 2);
  loud_place[700] = 1e9F;
  const struct {
    const char* name;
    Floats x;
    int first_bin;
    std::string expected;
  } cases[] = {{"voice", integers(recorded(5'000, 2), 32'000), 1'000,
                "0.000459 8.04e-05 1.42e-05 0.000332 8.04e-05 1.6e-05 0 1.17e-07 1.81e-05 0.000345 "
                "0.000392 1.11e-07 0 5.85e-08 1.14e-07 2e-06 8e-09 "},
               {"a tone in noise", sine_in_noise(5'000, 2, 3), 1'900,
                "2.76e-07 2.36e-08 3.84e-09 1.27e-07 2.36e-08 3.84e-09 0 2.91e-10 4.66e-09 "
                "2.08e-07 1.16e-07 3.32e-11 0 1.73e-10 3.57e-11 5e-10 2e-12 "},
               {"one loud place", loud_place, 300,
                "0.00657 0.0108 0.0192 0.00309 0.0108 0.0192 0 0.00464 0.0223 0.00309 0.0108 "
                "1.78e-05 0 0.00443 5.36e-05 8e-05 7e-07 "},
               {"products that wrap", integers(recorded(60'000, 4), 32'000), 28'000,
                "0.0513 0.000573 0.000852 0.0331 0.000573 0.00106 0 2.71e-06 0.00206 0.0548 0.0334 "
                "1.93e-06 0 1.72e-06 2.37e-06 1e-05 6e-08 "}};
  for (const auto& c : cases)
    EXPECT_EQ(fourier_bounds(c.x, c.first_bin), c.expected) << c.name;
}

/// Of 32 samples: proposed, corrected, ends, close ends.
std::string band_bounds(const BandSums& sums, int first) {
  auto estimates = proposed<transforms::BandProposal, BandEstimate>(
      *transforms::BandProposal::make(sums.terms()), first, BandSums::lanes);
  const std::vector<int> times = numbers_from(first, BandSums::lanes);
  std::string text = bounds_of(estimates);
  BandCorrections(sums.terms()).correct(times, estimates);
  text += bounds_of(estimates);
  std::vector<BandSums::Ends> ends(times.size());
  const auto apart = [](const BandSums::Ends& e) { return e.high - e.low; };
  sums.ends(times, ends);
  text += sums_of(1, ends, apart);
  sums.close_ends(times, ends);
  return text + sums_of(1, ends, apart);
}

TEST(Bounds, OfBands) {
  const struct {
    int size, first;
    double level;
    BinRange low, high;
    std::string expected;
  } cases[] = {
      {5'000,
       3'000,
       2,
       {1, 700},
       {900, 2'500},
       "4.12e-06 2.11e-07 2.76e-09 0 3.38e-08 2.34e-08 1e-08 1e-09 "},
      {5'000,
       4'900,
       1e-3,
       {1, 700},
       {900, 2'500},
       "2.69e-09 1.09e-10 1.39e-12 0 1.37e-10 2.24e-09 6e-12 6e-13 "},
      {20'000,
       17'000,
       100,
       {4'000, 9'999},
       {1, 0},
       "0.000716 9.01e-06 9.04e-08 0 3.95e-07 1.01e-07 4e-07 4e-08 "},
  };
  for (const auto& c : cases) {
    Floats a = sine_in_noise(static_cast<std::size_t>(c.size), c.level, 1);
    Floats b = sine_in_noise(a.size(), c.level, 2);
    std::fill(a.begin() + 950, a.begin() + 1'000, 0.0F);
    b[960] = 0.01F;
    EXPECT_EQ(band_bounds({a, b, c.size, 0.5, {c.low, c.high}}, c.first), c.expected) << c.level;
  }
}

/// Of all lags: as they are proposed, and as whole numbers narrow them.
std::string lag_bounds(const std::vector<double>& a, const std::vector<double>& b) {
  std::vector<LagEstimate> estimates;
  EXPECT_TRUE(transforms::propose_lags(a, b, [&](const transforms::LagTile& tile) {
    for (const double roundings : tile.roundings)
      estimates.push_back({0, tile.error, roundings});
  }));
  std::vector<std::size_t> lags(estimates.size());
  std::iota(lags.begin(), lags.end(), std::size_t{0});
  const auto sums = [](const std::vector<LagEstimate>& of) {
    return sums_of(3, of, &LagEstimate::error, &LagEstimate::roundings);
  };
  return sums(estimates) + sums(*narrowed_lags(a, b, lags));
}

TEST(Bounds, OfLags) {
  const Floats voice = integers(recorded(5'000, 2), 32'000);
  const struct {
    const char* name;
    Floats x, y;
    double mean1, mean2;
    std::string expected;
  } cases[] = {{"a voice", voice, voice, 0.3, 0.3, "14.4 158 0.572 28.5 "},
               {"far off", voice, integers(sine_in_noise(5'000, 9'000, 3), 1), 0.3, 12'345.6,
                "41.8 381 1.66 35.4 "},
               {"no whole numbers", sine_in_noise(5'000, 0.3, 5), voice, 0, 0,
                "0.000459 0.00492 7.42e+05 0.00043 "}};
  for (const auto& c : cases) {
    EXPECT_EQ(lag_bounds(deviations(c.x, c.mean1), deviations(c.y, c.mean2)), c.expected) << c.name;
  }
}

}  // namespace
}  // namespace torve
