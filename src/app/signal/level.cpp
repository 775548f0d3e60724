#include "app/signal/level.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "base/files.hpp"

namespace torve {

namespace {

/// Beyond every file for what is too large or no number.
int sample_at(double seconds) {
  constexpr int last = std::numeric_limits<int>::max();
  const double sample = std::round(seconds * sampling_rate);
  return sample < last ? static_cast<int>(std::max(sample, 0.0)) : last;
}

Level level_of(LongSampleReader& reader) {
  Level level;
  double sum = 0;
  double squares = 0;
  static std::array<float, 1 << 14> block;
  for (std::size_t got; (got = reader.read(block)) > 0;) {
    for (const float sample : std::span(block).first(got)) {
      const auto value = static_cast<double>(sample);
      sum += value;
      squares += value * value;
      level.peak = std::max(level.peak, std::fabs(value));
    }
    level.samples += static_cast<std::int64_t>(got);
  }
  const auto count = static_cast<double>(std::max<std::int64_t>(level.samples, 1));
  level.mean = sum / count;
  level.rms = std::sqrt(squares / count);
  return level;
}

}  // namespace

Outcome measure_level(const std::string& res_name, double start_seconds, double end_seconds,
                      Level* level) {
  const FilePtr file = open_regular_file(res_name, "rb");
  if (!file) return input_failure(res_name);
  SampleRange range = {.first = sample_at(start_seconds)};
  if (end_seconds >= 0) range.end = sample_at(end_seconds);
  LongSampleReader reader(file.get(), range);
  *level = level_of(reader);
  if (level->samples == 0 && range.first == 0) {
    return {.cause = Cause::too_few_samples, .name = res_name};
  }
  const bool is_short = end_seconds >= 0 && level->samples < range.end - range.first;
  if (level->samples > 0 && !is_short) return {};
  return {.cause = Cause::out_of_range,
          .name = res_name,
          .reason = "it has " + std::to_string(level->samples) + " samples from there on"};
}

double decibels(double value) {
  return 20 * std::log10(value);
}

}  // namespace torve
