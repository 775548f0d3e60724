#include "batch/measure_commands.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "app/signal/average_spectrum.hpp"
#include "app/signal/delay.hpp"
#include "app/signal/level.hpp"
#include "app/signal/sampling_rate.hpp"
#include "base/number_text.hpp"
#include "batch/status.hpp"
#include "batch/warnings.hpp"

namespace torve {

namespace {

struct Measure {
  const char* name;
  double value;
};

void print(std::span<const Measure> measures) {
  for (const auto& [name, value] : measures) {
    std::array<char, longest_fixed6> text;
    const char* const end = put_fixed6(text.data(), value);
    std::printf("%s %.*s\n", name, static_cast<int>(end - text.data()), text.data());
  }
}

void print(const Delay& delay) {
  constexpr double metres_a_second = 343.2;  // sound in air of 20 degrees
  const double seconds = delay.samples / sampling_rate;
  print(std::array{
      Measure{"delay_samples", delay.samples},
      Measure{"delay_ms", 1000 * seconds},
      Measure{"delay_m", metres_a_second * seconds},
      Measure{"gain_db", decibels(std::max(delay.gain, 0.0))},
      Measure{"peak", delay.peak},
      Measure{"second_peak", delay.second_peak},
  });
}

/// Seconds as samples; nothing for what is none.
std::optional<std::size_t> lag_of(const std::string& word) {
  const auto seconds = number_of<double>(word);
  if (!seconds) return std::nullopt;
  const double samples = std::round(*seconds * sampling_rate);
  if (!(samples >= 1 && samples < 0x1p31)) return std::nullopt;
  return static_cast<std::size_t>(samples);
}

}  // namespace

int run_delay(const Request& request) {
  std::optional<std::size_t> most_lag;
  if (request.words.size() > 2 && !(most_lag = lag_of(request.words[2]))) return exit_usage;
  const InputName one(request.words[0]);
  if (!one.outcome().is_done()) return status_of(request, one.outcome());
  warn_about_signal(one.name(), request.range, Taken::whole);
  warn_about_signal(request.words[1], request.range, Taken::whole);
  Delay delay;
  const Outcome outcome =
      find_delay_of_files(one.name(), request.words[1], most_lag, request.range, &delay);
  if (!outcome.is_done()) return status_of(request, outcome);
  print(delay);
  const char* const doubt = doubt_about(delay);
  if (doubt == nullptr) return exit_done;
  std::fprintf(stderr, "torve-batch: delay: not certain: %s\n", doubt);
  return exit_failed;
}

int run_level(const Request& request) {
  const auto start = number_of<double>(word_or(request, 1, "0"));
  const auto end = number_of<double>(word_or(request, 2, "-1"));
  if (!start || !end || !(*start >= 0)) return exit_usage;
  if (request.words.size() > 2 && !(*end > *start)) return exit_usage;
  const InputName res(request.words[0]);
  if (!res.outcome().is_done()) return status_of(request, res.outcome());
  warn_about_signal(res.name(), {}, Taken::whole);
  Level level;
  const Outcome outcome = measure_level(res.name(), *start, *end, &level);
  if (!outcome.is_done()) return status_of(request, outcome);
  std::printf("samples %lld\n", static_cast<long long>(level.samples));
  print(std::array{
      Measure{"seconds", static_cast<double>(level.samples) / sampling_rate},
      Measure{"mean", level.mean},
      Measure{"rms", level.rms},
      Measure{"peak", level.peak},
      Measure{"rms_db", decibels(level.rms)},
      Measure{"peak_db", decibels(level.peak)},
      Measure{"crest_factor", level.peak / level.rms},
  });
  return exit_done;
}

int run_average_spectrum(const Request& request) {
  if (request.words.size() > 2) return exit_usage;  // SAMPLES are those of the direct spectrum
  const InputName res(request.words[0]);
  OutputName spe(request.words[1]);
  const Outcome& bad = first_failure(res, spe);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about_signal(res.name(), request.range, Taken::whole);
  return status_of(
      request, average_spectrum_of_file(res.name(), spe.name(), *request.average, request.range),
      spe);
}

}  // namespace torve
