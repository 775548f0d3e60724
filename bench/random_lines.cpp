#include "bench/random_lines.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <optional>
#include <random>
#include <vector>

#include "app/signal/band_corrections.hpp"
#include "app/signal/band_values.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/fourier_corrections.hpp"
#include "app/signal/lag_estimate.hpp"
#include "app/signal/lag_narrowing.hpp"
#include "app/signal/lag_sums.hpp"
#include "app/signal/open_bins.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/transforms/band_proposal.hpp"
#include "app/signal/transforms/close_sums.hpp"
#include "app/signal/transforms/fourier_proposal.hpp"
#include "app/signal/transforms/lag_proposal.hpp"
#include "base/number_text.hpp"
#include "bench/literal.hpp"
#include "bench/signals.hpp"

namespace torve {

namespace {

using literal::Floats;
using transforms::CloseSums;
using transforms::FourierProposal;

class Checker {
 public:
  explicit Checker(unsigned seed) : random_(seed) {}

  void check_lags();
  void check_spectrum(int size, int most_bins);
  void check_bands(int size, int most_lines);
  void print() const;
  [[nodiscard]] long differing() const { return differing_; }

  int number(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random_);
  }

 private:
  struct Step {
    const char* name;
    long lines;
    long open;
  };
  enum Steps {
    all_lags,
    lags,
    narrowed_to,
    powers,                     // proposed, corrected, ends, close ends
    coefficients = powers + 4,  // of close sums, refined, ends, close ends
    bands = coefficients + 4,
    steps = bands + 4
  };

  unsigned seed() { return static_cast<unsigned>(random_()); }
  double uniform() { return std::uniform_real_distribution<double>(-1, 1)(random_); }
  /// Mostly small, now and then about a power of two.
  int size() {
    if (number(0, 2) > 0) return number(1, number(1, 3) == 1 ? 5000 : 400);
    return std::max(1, (1 << number(0, 12)) + number(-2, 2));
  }
  Floats signal(int size);
  void count_open_lags(std::span<const double> a, std::span<const double> b,
                       std::span<const float> plain);
  void compare(const char* what, int size, int index, float ours, float plain);
  void check_within(const FourierEnds& ends, const FourierSums& sums, int bin, int size);
  void count_open(const Floats& x, int bin, const FourierEstimate* proposed, const TrueSums* close,
                  const FourierSums& sums);
  void count_open(const BandSums& sums, int t, int size, const BandEstimate* proposed,
                  const BandCorrections* corrections, double plain);

  std::mt19937 random_;
  std::array<Step, steps> steps_ = {{{"lags", 0, 0},
                                     {"lags, proposed", 0, 0},
                                     {"lags, narrowed", 0, 0},
                                     {"powers, proposed", 0, 0},
                                     {"powers, corrected", 0, 0},
                                     {"powers, ends", 0, 0},
                                     {"powers, close ends", 0, 0},
                                     {"coefficients, of close sums", 0, 0},
                                     {"coefficients, refined", 0, 0},
                                     {"coefficients, ends", 0, 0},
                                     {"coefficients, close ends", 0, 0},
                                     {"bands, proposed", 0, 0},
                                     {"bands, corrected", 0, 0},
                                     {"bands, ends", 0, 0},
                                     {"bands, close ends", 0, 0}}};
  long differing_ = 0;
};

Floats Checker::signal(int size) {
  const auto n = static_cast<std::size_t>(size);
  const double level = std::pow(10, 6 * uniform());
  Floats x(n);
  const auto fill = [&x](const auto& value) {
    for (std::size_t i = 0; i < x.size(); ++i)
      x[i] = static_cast<float>(value(static_cast<double>(i)));
  };
  const double period = number(1, 600);
  switch (number(0, 11)) {
    case 0:
      return sine_in_noise(n, level, seed());
    case 1:
      return recorded(n, seed());
    case 2:
      return integers(recorded(n, seed()), 32000);
    case 3:
      return integers(sine_in_noise(n, 20000, seed()), 1);
    case 4:
      fill([this](double) { return number(-32768, 32767); });
      break;
    case 5:
      fill([level](double) { return level; });
      break;
    case 6:
      fill([=](double i) { return std::fmod(i, 2 * period) < period ? level : -level; });
      break;
    case 7:
      fill([=](double i) { return i < period ? level : -3 * level; });
      break;
    case 8:
      fill([this](double) { return number(0, 50) == 0 ? number(-9, 9) : 0; });
      break;
    case 9:
      fill([=](double i) { return level * std::sin(i * 6.283185307179586 / period); });
      break;
    case 10:
      x = recorded(n, seed());
      x[static_cast<std::size_t>(number(0, size - 1))] = number(0, 1) == 0 ? 1e38F : 1e30F;
      break;
    default:
      x[static_cast<std::size_t>(number(0, size - 1))] = static_cast<float>(level);
  }
  return x;
}

void Checker::compare(const char* what, int size, int index, float ours, float plain) {
  char texts[2][64];
  std::snprintf(texts[0], sizeof texts[0], "%f", static_cast<double>(ours));
  std::snprintf(texts[1], sizeof texts[1], "%f", static_cast<double>(plain));
  if (std::strcmp(texts[0], texts[1]) == 0) return;
  ++differing_;
  std::printf("%s %d of %d: %s, not %s\n", what, index, size, texts[0], texts[1]);
}

void Checker::check_lags() {
  const int n = size();
  const Floats x = signal(n);
  const Floats y = number(0, 2) == 0 ? signal(n) : x;
  const double mean1 = mean_over(x, x.size());
  const double mean2 = mean_over(y, y.size());
  const auto a = deviations(x, mean1);
  const auto b = deviations(y, mean2);
  const Floats plain = literal::lag_means(x, mean1, y, mean2);
  const Floats ours = lag_means(a, b);
  steps_[all_lags].lines += n;
  count_open_lags(a, b, plain);
  for (std::size_t k = 0; k < ours.size(); ++k)
    compare("lag", n, static_cast<int>(k), ours[k], plain[k]);
}

void Checker::count_open_lags(std::span<const double> a, std::span<const double> b,
                              std::span<const float> plain) {
  std::vector<LagEstimate> proposed;
  std::vector<std::size_t> all;
  const auto add = [&](const transforms::LagTile& tile) {
    for (std::size_t l = 0; l < tile.sums.size(); ++l) {
      proposed.push_back({tile.sums[l], tile.error, tile.roundings[l]});
      all.push_back(all.size());
    }
  };
  if (!transforms::propose_lags(a, b, add)) return;
  const auto narrowed = narrowed_lags(a, b, all);
  const auto settled = [&](std::size_t k, const LagEnds& ends) {
    float mean = 0;
    if (!settle_mean(ends, static_cast<double>(all.size() - k), mean)) return false;
    compare("proved lag", static_cast<int>(all.size()), static_cast<int>(k), mean, plain[k]);
    return true;
  };
  for (const std::size_t k : all) {
    const LagEstimate& closer = (*narrowed)[k];
    static_cast<void>(settled(k, ends_of(closer)));
    ++steps_[lags].lines;
    if (settled(k, ends_of(proposed[k]))) continue;
    ++steps_[lags].open;
    ++steps_[narrowed_to].lines;
    if (!settled(k, ends_of(proposed[k], closer))) ++steps_[narrowed_to].open;
  }
}

void Checker::check_within(const FourierEnds& ends, const FourierSums& sums, int bin, int size) {
  const auto& [low, high] = ends;
  if (low.cosines > sums.cosines || sums.cosines > high.cosines || low.sines > sums.sines ||
      sums.sines > high.sines) {
    ++differing_;
    std::printf("bin %d of %d lies outside its ends\n", bin, size);
  }
}

void Checker::count_open(const Floats& x, int bin, const FourierEstimate* proposed,
                         const TrueSums* close, const FourierSums& sums) {
  const int size = static_cast<int>(x.size());
  const auto one = std::span(&bin, 1);
  FourierCorrections corrections(x);
  const auto correct = [&](CorrectedBin corrected) {
    for (int part = 0; part < FourierCorrections::parts; ++part) {
      corrections.correct(part, one, std::span(&corrected, 1));
      check_within(ends_of(corrected.estimate), sums, bin, size);
    }
    return corrected;
  };
  std::array<FourierEnds, 4> ends_of_powers;
  std::array<FourierEnds, 4> ends_of_coefficients;
  if (proposed != nullptr) {
    ends_of_powers[0] = ends_of(*proposed);
    ends_of_powers[1] = ends_of(correct(CorrectedBin(*proposed)).estimate);
  }
  fourier_sum_ends(x, one, std::span(&ends_of_powers[2], 1));
  fourier_close_ends(x, one, std::span(&ends_of_powers[3], 1));
  if (close != nullptr) {
    CorrectedBin corrected = correct(corrections.begin(bin, *close));
    ends_of_coefficients[0] = ends_of(corrected.estimate);
    corrections.refine(one, std::span(&corrected, 1));
    ends_of_coefficients[1] = ends_of(corrected.estimate);
  }
  ends_of_coefficients[2] = ends_of_powers[2];
  ends_of_coefficients[3] = ends_of_powers[3];
  bool power = false;
  bool both = false;
  const auto count = [this](std::size_t step, bool certain) {
    ++steps_[step].lines;
    if (!certain) ++steps_[step].open;
    return certain;
  };
  for (std::size_t i = 0; i < ends_of_powers.size(); ++i) {
    if (i >= 2 || proposed != nullptr) {
      check_within(ends_of_powers[i], sums, bin, size);
      const BinVerdict verdict = judge_bin(ends_of_powers[i], size);
      if (!power) power = count(powers + i, verdict.power_is_certain);
    }
    if (i >= 2 || close != nullptr) {
      check_within(ends_of_coefficients[i], sums, bin, size);
      const BinVerdict verdict = judge_bin(ends_of_coefficients[i], size);
      if (!both) both = count(coefficients + i, verdict.coefficients_are_certain);
    }
  }
}

void Checker::check_spectrum(int size, int most_bins) {
  Floats x = signal(size);
  x[0] = 0;
  Spectrum spectrum = compute_spectrum(x, [](int, int) {});
  settle_coefficients(x, {spectrum.a, spectrum.b, {}, spectrum.open}, 1, size / 2);
  const auto proposal = FourierProposal::make(x);
  std::vector<FourierEstimate> estimates(FourierProposal::tile);
  const int step = std::max(1, size / 2 / most_bins);
  const int first = number(1, step);
  const auto close_sums = CloseSums::make(x, first, size / 2);
  std::vector<TrueSums> close(CloseSums::tile);
  int tile = -1;
  int close_tile = -1;
  for (int j = first; j <= size / 2; j += step) {
    const int place = j - first;
    if (close_sums && close_tile != place / CloseSums::tile) {
      close_tile = place / CloseSums::tile;
      close_sums->find(first + close_tile * CloseSums::tile,
                       std::span<TrueSums, CloseSums::tile>(close));
    }
    if (proposal && tile != j / FourierProposal::tile) {
      tile = j / FourierProposal::tile;
      proposal->propose(tile * FourierProposal::tile,
                        std::span<FourierEstimate, FourierProposal::tile>(estimates));
    }
    const auto i = static_cast<std::size_t>(j);
    const FourierSums sums = plain_fourier_sums(x, j);
    count_open(x, j, proposal ? &estimates[i % FourierProposal::tile] : nullptr,
               close_sums ? &close[static_cast<std::size_t>(place % CloseSums::tile)] : nullptr,
               sums);
    const double a = 2 * sums.cosines / size;
    const double b = 2 * sums.sines / size;
    compare("power", size, j, spectrum.power[i], static_cast<float>(a * a + b * b));
    for (const auto& [ours, plain] : {std::pair(spectrum.a[i], a), std::pair(spectrum.b[i], b)}) {
      const auto stated = static_cast<float>(plain);
      if (std::memcmp(&ours, &stated, sizeof stated) == 0) continue;
      ++differing_;
      std::printf("coefficient %d of %d: %a, not %a\n", j, size, static_cast<double>(ours),
                  static_cast<double>(stated));
    }
  }
}

void Checker::count_open(const BandSums& sums, int t, int size, const BandEstimate* proposed,
                         const BandCorrections* corrections, double plain) {
  std::array<BandSums::Ends, 4> ends;
  sums.ends(std::span(&t, 1), std::span(&ends[2], 1));
  sums.close_ends(std::span(&t, 1), std::span(&ends[3], 1));
  if (proposed != nullptr) {
    BandEstimate corrected = *proposed;
    corrections->correct(std::span(&t, 1), std::span(&corrected, 1));
    ends[0] = ends_of(*proposed);
    ends[1] = ends_of(corrected);
  }
  bool certain = false;
  for (std::size_t i = proposed != nullptr ? 0 : 2; i < ends.size(); ++i) {
    if (!(ends[i].low <= plain && plain <= ends[i].high) && std::isfinite(ends[i].low)) {
      ++differing_;
      std::printf("band %d of %d lies outside its ends %zu\n", t, size, i);
    }
    if (certain) continue;
    ++steps_[bands + i].lines;
    certain = same_fixed6(ends[i].low, ends[i].high);
    if (!certain) ++steps_[bands + i].open;
  }
}

void Checker::check_bands(int n, int most_lines) {
  // Mostly of a size that text can be proved of.
  const auto smaller = static_cast<float>(std::pow(10, -number(0, 6)));
  Floats a = signal(n);
  Floats b = signal(n);
  for (Floats* values : {&a, &b})
    std::ranges::transform(*values, values->begin(), [=](float v) { return v * smaller; });
  const int low = number(1, n - 1);
  const int high = number(1, n - 1);
  const std::array<BinRange, 2> ranges = {{{1, low}, {high, n - 1}}};
  const BandSums sums(a, b, n, number(0, 1) * uniform(), ranges);
  const auto ours = band_values(sums, 0, n, [](int) {});
  const auto proposal = transforms::BandProposal::make(sums.terms());
  std::optional<BandCorrections> corrections;
  if (proposal) corrections.emplace(sums.terms());
  std::vector<BandEstimate> estimates(transforms::BandProposal::tile);
  const int step = std::max(1, n / most_lines);
  int tile = -1;
  for (int t = number(0, step - 1); t < n; t += step) {
    const auto i = static_cast<std::size_t>(t % transforms::BandProposal::tile);
    if (proposal && tile != t / transforms::BandProposal::tile) {
      tile = t / transforms::BandProposal::tile;
      proposal->propose(tile * transforms::BandProposal::tile,
                        std::span<BandEstimate, transforms::BandProposal::tile>(estimates));
    }
    const double plain = sums.plain_value(t);
    count_open(sums, t, n, proposal ? &estimates[i] : nullptr,
               corrections ? &*corrections : nullptr, plain);
    char texts[2][400];
    std::snprintf(texts[0], sizeof texts[0], "%f", ours[static_cast<std::size_t>(t)]);
    std::snprintf(texts[1], sizeof texts[1], "%f", plain);
    if (std::strcmp(texts[0], texts[1]) == 0) continue;
    ++differing_;
    std::printf("band %d of %d: %s, not %s\n", t, n, texts[0], texts[1]);
  }
}

void Checker::print() const {
  for (const Step& step : steps_) {
    std::printf("%s: %ld, open %ld (%.3f %%)\n", step.name, step.lines, step.open,
                step.lines > 0
                    ? 100.0 * static_cast<double>(step.open) / static_cast<double>(step.lines)
                    : 0.0);
  }
  std::printf("%ld differ\n", differing_);
}

}  // namespace

long check_random_lines(unsigned seed, double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  Checker checker(seed);
  // From 46341 on products wrap around.
  constexpr std::array large = {46'340, 46'341, 65'536, 100'000};
  for (std::size_t i = 0; Clock::now() < end; ++i) {
    for (int k = 0; k < 20; ++k)
      checker.check_lags();
    checker.check_spectrum(checker.number(2, 3000), 200);
    checker.check_bands(checker.number(2, i % 2 == 0 ? 600 : 5000), 200);
    if (i % 50 == 49) {
      checker.check_spectrum(large[i / 50 % large.size()], 50);
      checker.check_bands(large[i / 50 % large.size()], 20);
    }
  }
  checker.print();
  return checker.differing();
}

}  // namespace torve
