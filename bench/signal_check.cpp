// signal_check literal|fast DIRECTORY N...: every analysis of every kind of signal, N samples each,
// into DIRECTORY. The directories of the two kinds must be equal (diff -r). Slow, so run by hand;
// built once per instruction set with -DTORVE_ONE_TARGET it shows that all give the same digits.
//
// signal_check random SEED SECONDS: random signals of many kinds and sizes, every line against the
// plain loops; the status is 1 if one differs.
//
// signal_check squares FIRST LAST: spectra and filters of square waves of these half periods,
// likewise.
//
// For bench/peers: signal_check signal "within 1"|16-bit N writes one.res and two.res; signal_check
// time ONE.res TWO.res tells the processor time, in seconds, that the analyses take in memory.

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>

#include "app/signal/band_filter.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/lag_sums.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "bench/literal.hpp"
#include "bench/random_lines.hpp"
#include "bench/signals.hpp"
#include "bench/square_waves.hpp"

namespace {

using namespace torve;
using literal::Floats;

constexpr int low = 2200;
constexpr int high = 5000;
constexpr int start = 300;
constexpr float scale = 0.9F;

void run_literal() {
  literal::autocorrelation("one.res", "autocor1.res");
  literal::correlation("one.res", "two.res", "corre1.res");
  literal::my_correlation("one.res", "two.res", "match.res", start, scale);
  const auto coefficients = literal::power_spectrum("one.res", "spectr1.spe", 100000);
  literal::filter_spectrum(coefficients, "mid.res", low, high, 0);
  literal::filter_spectrum(coefficients, "rest.res", low, high, 1);
}

void run_fast() {
  float mean = 0;
  int offset = 0;
  float scale_io = scale;
  autocorrelation("one.res", "1");
  correlation("one.res", "two.res", "1");
  my_correlation("one.res", "two.res", "match.res", &mean, &offset, &scale_io, 1, start, "all");
  static_cast<void>(allocate_work_buffer());
  power_spectrum("one.res", "spectr1.spe", "all");
  filter_spectrum("mid.res", "", low, high, filter_band_pass);
  filter_spectrum("", "rest.res", low, high, filter_out_of_band);
}

// The first signal later and louder, with something of its own.
Floats second(const Floats& one) {
  Floats two(one.size() - 500);
  const Floats own = sine_in_noise(two.size(), 0.01, 3);
  for (std::size_t i = 0; i < two.size(); ++i)
    two[i] = 1.25F * one[i + 500] + own[i];
  return two;
}

Floats square(std::size_t n, std::size_t half_period) {
  Floats x(n);
  for (std::size_t i = 0; i < n; ++i)
    x[i] = i / half_period % 2 == 0 ? 20000.0F : -20000.0F;
  return x;
}

void write_signals(const std::string& kind, std::size_t n) {
  const double level = kind == "16-bit" ? 32000 : 1;
  const auto write = [&](const char* name, Floats x) {
    literal::write(name, level > 1 ? integers(std::move(x), level) : x);
  };
  write("one.res", recorded(n, 2));
  write("two.res", recorded(n, 4));
}

template <typename Run>
void tell_time(const char* name, Run run) {
  double best = 1e9;
  for (int i = 0; i < 5; ++i) {
    const std::clock_t begin = std::clock();
    run();
    best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
  }
  std::printf("%s memory %.9f\n", name, best);
}

void tell_times(const std::string& name1, const std::string& name2) {
  const Floats x = literal::read(name1);
  const Floats y = literal::read(name2);
  Floats shifted = x;
  shifted.insert(shifted.begin(), 0);
  shifted.resize(std::min<std::size_t>(shifted.size(), 100000));
  const auto lags = [&x](const Floats& other) {
    const double mean = mean_over(x, x.size());
    return lag_means(deviations(x, mean), deviations(other, mean));
  };
  tell_time("autocorrelation", [&] { return lags(x); });
  tell_time("correlation", [&] { return lags(y); });
  tell_time("spectrum", [&] { return compute_spectrum(shifted, [](int, int) {}); });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return 1;
  if (std::string(argv[1]) == "random") {
    const auto seed = static_cast<unsigned>(std::stoul(argv[2]));
    return check_random_lines(seed, std::stod(argv[3])) == 0 ? 0 : 1;
  }
  if (std::string(argv[1]) == "squares")
    return check_square_waves(std::stoi(argv[2]), std::stoi(argv[3])) == 0 ? 0 : 1;
  if (std::string(argv[1]) == "signal") write_signals(argv[2], std::stoul(argv[3]));
  if (std::string(argv[1]) == "time") tell_times(argv[2], argv[3]);
  const bool fast = std::string(argv[1]) == "fast";
  if (!fast && std::string(argv[1]) != "literal") return 0;
  const std::filesystem::path root = argv[2];
  for (int i = 3; i < argc; ++i) {
    const std::size_t n = std::stoul(argv[i]);
    const std::pair<const char*, Floats> signals[] = {
        {"sine", sine_in_noise(n, 8000, 1)},
        {"recorded", recorded(n, 2)},
        {"integers", integers(recorded(n, 2), 32000)},
        {"constant", Floats(n, 5)},
        {"square", square(n, 50)},
    };
    for (const auto& [name, one] : signals) {
      const std::filesystem::path directory = root / argv[i] / name;
      std::filesystem::create_directories(directory);
      const auto back = std::filesystem::current_path();
      std::filesystem::current_path(directory);
      literal::write("one.res", one);
      literal::write("two.res", second(one));
      if (fast) {
        run_fast();
      } else {
        run_literal();
      }
      std::filesystem::current_path(back);
      std::fprintf(stderr, "%s %s %s\n", argv[1], argv[i], name);
    }
  }
}
