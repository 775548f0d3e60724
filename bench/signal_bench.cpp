// The analyses against the plain loops that define them, in one process. Behind the usual lines
// stands a table of ratios: the best of the repetitions of each (--benchmark_repetitions=5).
//
// At 100,000 samples a plain transform takes minutes, so there both sides do only 320 bins, and the
// filters 320 samples, from the middle on; the cost of each is the same.

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <numeric>
#include <string>

#include <benchmark/benchmark.h>

#include "app/signal/band_sums.hpp"
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

constexpr int all_up_to = 20'000;
constexpr int part = 320;
static_assert(part % fourier_lanes == 0 && part % BandSums::lanes == 0);

int size_of(const State& state) {
  return static_cast<int>(state.range(0));
}

Floats signal_of(const State& state) {
  return sine_in_noise(static_cast<std::size_t>(state.range(0)), 8000, 1);
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
  const Floats y = recorded(x.size(), 2);
  for (auto _ : state)
    benchmark::DoNotOptimize(literal::lag_means(x, 1, y, 2));
}

void correlation_fast(State& state) {
  const Floats x = signal_of(state);
  const Floats y = recorded(x.size(), 2);
  for (auto _ : state)
    benchmark::DoNotOptimize(lag_means(deviations(x, 1), deviations(y, 2)));
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
    }
  }
}

void spectrum_fast(State& state) {
  const Floats x = signal_of(state);
  std::array<FourierEnds, fourier_lanes> ends;
  std::array<int, fourier_lanes> bins;
  for (auto _ : state) {
    if (size_of(state) <= all_up_to) {
      benchmark::DoNotOptimize(compute_spectrum(x, [](int, int) {}));
    } else {
      for (int j = 0; j < part; j += fourier_lanes) {
        std::iota(bins.begin(), bins.end(), size_of(state) / 4 + j);
        fourier_sum_ends(x, bins, ends);
        benchmark::DoNotOptimize(ends);
      }
    }
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
};

constexpr Pair pairs[] = {
    {"autocorrelation", autocorrelation_literal, autocorrelation_fast},
    {"correlation", correlation_literal, correlation_fast},
    {"match", match_literal, match_fast},
    {"spectrum", spectrum_literal, spectrum_fast},
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
      const auto [place, is_new] = best_.try_emplace(
          run.run_name.function_name + "/" + run.run_name.args, run.GetAdjustedRealTime());
      place->second = std::min(place->second, run.GetAdjustedRealTime());
    }
  }

  void print_ratios() const {
    std::printf(
        "\n| analysis | samples | plain loop, ms | ours, ms | ratio |\n|---|---|---|---|---|\n");
    for (const auto& [name, plain] : best_) {
      const std::size_t at = name.find(" literal/");
      if (at == std::string::npos) continue;
      const auto ours = best_.find(name.substr(0, at) + " fast/" + name.substr(at + 9));
      if (ours == best_.end()) continue;
      std::printf("| %s | %s | %.2f | %.2f | 1/%.1f |\n", name.substr(0, at).c_str(),
                  name.substr(at + 9).c_str(), plain, ours->second, plain / ours->second);
    }
  }

 private:
  std::map<std::string, double> best_;
};

void register_all() {
  for (const Pair& pair : pairs) {
    const std::string name = pair.name;
    for (const auto& [kind, run] :
         {std::pair(" literal", pair.literal), std::pair(" fast", pair.fast)}) {
      benchmark::RegisterBenchmark((name + kind).c_str(), run)
          ->Arg(20'000)
          ->Arg(100'000)
          ->Unit(benchmark::kMillisecond);
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
