// The analyses against the plain loops that define them, in one process. Behind the usual lines
// stands a table of ratios: the best processor time of the
// repetitions of each (--benchmark_repetitions=5).
//
// At 100,000 samples a plain transform takes more than a minute, so the plain loop does 320 bins
// there and its time is multiplied; both sides of the filters do 320 samples, from the middle on.
//
// How much is proved and how much must be summed depends on the signal, so what transforms propose
// is timed for several kinds. The plain loops take the same time for all.

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "app/signal/band_values.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/fourier_sums.hpp"
#include "app/signal/lag_sums.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/spectrum.hpp"
#include "base/files.hpp"
#include "bench/literal.hpp"
#include "bench/signals.hpp"

namespace torve {
namespace {

using benchmark::State;
using literal::Floats;

constexpr int sizes[] = {20'000, 100'000};
constexpr int all_up_to = 20'000;
constexpr int part = 320;

int size_of(const State& state) {
  return static_cast<int>(state.range(0));
}

enum Kind { loud_sine, within_one, speech_16_bit, white_16_bit, square, kinds };
constexpr const char* kind_names[kinds] = {"sine of 8000", "within 1", "16-bit speech",
                                           "16-bit white noise", "square wave"};

Floats signal_of_kind(std::size_t n, long kind, unsigned seed) {
  std::mt19937 random(seed);
  Floats x(n);
  switch (kind) {
    case within_one:
      return sine_in_noise(n, 0.5, seed);
    case speech_16_bit:
      return integers(recorded(n, seed), 32000);
    case white_16_bit:
      for (float& value : x)
        value = static_cast<float>(static_cast<int>(random() % 40'001) - 20'000);
      return x;
    case square:
      for (std::size_t i = 0; i < n; ++i)
        x[i] = i / 50 % 2 == 0 ? 20'000.0F : -20'000.0F;
      return x;
    default:
      return sine_in_noise(n, 8000, seed);
  }
}

Floats signal_of(const State& state, unsigned seed = 1) {
  return signal_of_kind(static_cast<std::size_t>(state.range(0)), state.range(1), seed);
}

void autocorrelation_literal(State& state) {
  const Floats x = signal_of(state);
  const double m = literal::mean(x, x.size());
  for (auto _ : state)
    benchmark::DoNotOptimize(literal::lag_means(x, m, x, m));
}

void autocorrelation_fast(State& state) {
  const Floats x = signal_of(state);
  for (auto _ : state) {
    const auto d = deviations(x, mean_over(x, x.size()));
    benchmark::DoNotOptimize(lag_means(d, d));
  }
}

void correlation_literal(State& state) {
  const Floats x = signal_of(state);
  const Floats y = signal_of(state, 2);
  for (auto _ : state)
    benchmark::DoNotOptimize(literal::lag_means(x, 0, y, 0));
}

void correlation_fast(State& state) {
  const Floats x = signal_of(state);
  const Floats y = signal_of(state, 2);
  const double mean = mean_over(x, x.size());
  for (auto _ : state)
    benchmark::DoNotOptimize(lag_means(deviations(x, mean), deviations(y, mean)));
}

// Both searches, about a start where the second signal lies.
constexpr int start = 300;

Floats second_of(const Floats& x) {
  Floats y(x.begin() + 500, x.end());
  const Floats own = recorded(y.size(), 2);
  for (std::size_t i = 0; i < y.size(); ++i)
    y[i] += 1000 * own[i];
  return y;
}

void match_literal(State& state) {
  const Floats x = signal_of(state);
  const Floats y = second_of(x);
  for (auto _ : state) {
    const auto offset = literal::best_offset(x, y, 0.9, start);
    benchmark::DoNotOptimize(literal::best_scale_step(x, y, offset.place, 0.9));
  }
}

void match_fast(State& state) {
  const Floats x = signal_of(state);
  const Floats y = second_of(x);
  for (auto _ : state) {
    const auto offset = best_offset(x, y, 0.9, start).value();
    const auto from = std::span(x).subspan(static_cast<std::size_t>(offset.offset));
    const std::size_t count = std::min(from.size(), y.size());
    benchmark::DoNotOptimize(best_scale(from.first(count), std::span(y).first(count), 0.9));
  }
}

void spectrum_literal(State& state) {
  const Floats x = signal_of(state);
  for (auto _ : state) {
    if (size_of(state) <= all_up_to) {
      benchmark::DoNotOptimize(literal::spectrum(x));
    } else {
      for (int j = 0; j < part; ++j)
        benchmark::DoNotOptimize(plain_fourier_sums(x, size_of(state) / 4 + j));
      state.counters["times"] = static_cast<double>(size_of(state)) / 2 / part;
    }
  }
}

void spectrum_fast(State& state) {
  const Floats x = signal_of(state);
  for (auto _ : state)
    benchmark::DoNotOptimize(compute_spectrum(x, [](int, int) {}));
}

// What the first filter of the whole spectrum costs besides.
void settling_fast(State& state) {
  const Floats x = signal_of(state);
  const Spectrum spectrum = compute_spectrum(x, [](int, int) {});
  for (auto _ : state) {
    Spectrum s = spectrum;
    settle_coefficients(x, {s.a, s.b, {}, s.open}, 1, size_of(state) / 2);
    benchmark::DoNotOptimize(s);
  }
}

// 2200 to 5000 Hz of a spectrum as noise has it; the bins above K/2 are zero.
BandSums band_of(const State& state, bool out_of_band, Floats& a, Floats& b) {
  const int size = size_of(state);
  a = sine_in_noise(static_cast<std::size_t>(size), 100, 1);
  b = sine_in_noise(static_cast<std::size_t>(size), 100, 2);
  std::fill(a.begin() + size / 2 + 1, a.end(), 0.0F);
  std::fill(b.begin() + size / 2 + 1, b.end(), 0.0F);
  const int low = static_cast<int>(std::int64_t{2200} * size / 44100);
  const int high = static_cast<int>(std::int64_t{5000} * size / 44100);
  if (out_of_band) return {a, b, size, 1, {{{1, low - 1}, {high + 1, size - 1}}}};
  return {a, b, size, 0, {{{low, high}, {1, 0}}}};
}

template <bool out_of_band>
void filter_literal(State& state) {
  Floats a, b;
  const BandSums sums = band_of(state, out_of_band, a, b);
  const int first = size_of(state) <= all_up_to ? 0 : size_of(state) / 2;
  const int count = size_of(state) <= all_up_to ? size_of(state) : part;
  for (auto _ : state) {
    for (int t = first; t < first + count; ++t)
      benchmark::DoNotOptimize(sums.plain_value(t));
  }
}

template <bool out_of_band>
void filter_fast(State& state) {
  Floats a, b;
  const BandSums sums = band_of(state, out_of_band, a, b);
  const int first = size_of(state) <= all_up_to ? 0 : size_of(state) / 2;
  const int count = size_of(state) <= all_up_to ? size_of(state) : part;
  for (auto _ : state)
    benchmark::DoNotOptimize(band_values(sums, first, count, [](int) {}));
}

constexpr const char* file_name = "/tmp/torve_signal_bench.res";

void read_literal(State& state) {
  literal::write(file_name, signal_of(state));
  for (auto _ : state)
    benchmark::DoNotOptimize(literal::read(file_name));
  std::remove(file_name);
}

void read_fast(State& state) {
  literal::write(file_name, signal_of(state));
  for (auto _ : state)
    benchmark::DoNotOptimize(read_sample_file(file_name));
  std::remove(file_name);
}

void write_literal(State& state) {
  const Floats x = signal_of(state);
  for (auto _ : state)
    literal::write(file_name, x);
  std::remove(file_name);
}

void write_fast(State& state) {
  const Floats x = signal_of(state);
  for (auto _ : state) {
    OutputFile file(file_name);
    write_samples(file, x);
    if (!file.finish()) state.SkipWithError("not written");
  }
  std::remove(file_name);
}

struct Pair {
  const char* name;
  void (*literal)(State&);
  void (*fast)(State&);
  bool by_kind = false;
};

constexpr Pair pairs[] = {
    {"autocorrelation", autocorrelation_literal, autocorrelation_fast, true},
    {"correlation", correlation_literal, correlation_fast, true},
    {"match", match_literal, match_fast},
    {"spectrum", spectrum_literal, spectrum_fast, true},
    {"settling a and b", spectrum_literal, settling_fast, true},
    {"band-pass", filter_literal<false>, filter_fast<false>},
    {"out-of-band", filter_literal<true>, filter_fast<true>},
    {"read", read_literal, read_fast},
    {"write", write_literal, write_fast},
};

/// Keeps the best time of each benchmark.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const auto times = run.counters.find("times");
      const double time = run.GetAdjustedCPUTime() *
                          (times == run.counters.end() ? 1.0 : static_cast<double>(times->second));
      const auto [place, is_new] =
          best_.try_emplace(run.run_name.function_name + "/" + run.run_name.args, time);
      place->second = std::min(place->second, time);
    }
  }

  void print_ratios() const {
    std::printf(
        "\n| analysis | samples | signal | plain loop, ms | ours, ms | ratio |\n"
        "|---|---|---|---|---|---|\n");
    for (const Pair& pair : pairs) {
      for (const int size : sizes) {
        std::string arguments = std::to_string(size);
        arguments = "/" + arguments + "/";
        const auto plain = best_.find(std::string(pair.name) + " literal" + arguments + "0");
        if (plain == best_.end()) continue;
        for (int kind = 0; kind < kinds; ++kind) {
          const auto ours =
              best_.find(std::string(pair.name) + " fast" + arguments + std::to_string(kind));
          if (ours == best_.end()) continue;
          std::printf("| %s | %d | %s | %.2f | %.2f | 1/%.1f |\n", pair.name, size,
                      kind_names[kind], plain->second, ours->second, plain->second / ours->second);
        }
      }
    }
  }

 private:
  std::map<std::string, double> best_;
};

void register_all() {
  for (const Pair& pair : pairs) {
    const std::string name = pair.name;
    for (const int size : sizes) {
      benchmark::RegisterBenchmark((name + " literal").c_str(), pair.literal)
          ->Args({size, 0})
          ->Unit(benchmark::kMillisecond);
      for (int kind = 0; kind < (pair.by_kind ? kinds : 1); ++kind) {
        benchmark::RegisterBenchmark((name + " fast").c_str(), pair.fast)
            ->Args({size, kind})
            ->Unit(benchmark::kMillisecond);
      }
    }
  }
}

}  // namespace
}  // namespace torve

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  torve::register_all();
  torve::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.print_ratios();
}
