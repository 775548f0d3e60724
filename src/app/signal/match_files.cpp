// my_correlation: the matching of two files, step by step.

#include <algorithm>
#include <cmath>
#include <new>

#include "app/signal/matching.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/say.hpp"
#include "base/files.hpp"

namespace torve {

namespace {

constexpr int mode_shifts = 0;

struct Signals {
  std::vector<float> a;
  std::vector<float> b;
};

int as_int(std::size_t count) {
  return static_cast<int>(count);
}

std::optional<Signals> read_signals(const std::string& path1, const std::string& path2,
                                    int budget) {
  auto a = read_sample_file(path1, budget);
  auto b = read_sample_file(path2, budget);
  if (!a || !b) return std::nullopt;
  return Signals{std::move(*a), std::move(*b)};
}

bool are_long_enough(const Signals& signals) {
  return std::min(signals.a.size(), signals.b.size()) >= least_match_samples;
}

/// Leaves no earlier result that would pass for this one's; but an input stays.
int refuse(OutputFile& output, const std::string& path1, const std::string& path2,
           const std::string& path3) {
  const bool is_input = same_file(path1, path3) || same_file(path2, path3);
  if (!is_input) static_cast<void>(output.finish());
  return 1;
}

std::vector<float> difference(std::span<const float> a, std::span<const float> b, double scale) {
  std::vector<float> result(b.size());
  std::transform(a.begin(), a.end(), b.begin(), result.begin(), [scale](float x, float y) {
    return static_cast<float>(static_cast<double>(x) - scale * static_cast<double>(y));
  });
  return result;
}

void remove_mean(std::vector<float>& values) {
  double mean = 0;
  for (const float value : values)
    mean += static_cast<double>(value);
  mean /= static_cast<double>(values.size());
  for (float& value : values)
    value = static_cast<float>(static_cast<double>(value) - mean);
  say("removed the average, ave1=%f counter=%d\n", mean, as_int(values.size()));
}

void scale_to_one(std::vector<float>& values) {
  double sum = 0;
  double largest = 0;
  for (const float value : values) {
    const double magnitude = std::fabs(static_cast<double>(value));
    sum += magnitude;
    if (magnitude > largest) largest = magnitude;
  }
  say("reduced average of absolute values ave3=%f\n", sum / static_cast<double>(values.size()));
  say("largest absolute value %f, scale to one\n", largest);
  for (float& value : values)
    value = static_cast<float>(static_cast<double>(value) / largest);
}

void write_residual(OutputFile& output, const std::string& name, std::span<const float> a,
                    std::span<const float> b, double scale) {
  std::vector<float> residual = difference(a, b, scale);
  remove_mean(residual);
  scale_to_one(residual);
  say("name3=%s\n", name.c_str());
  write_samples(output, residual);
}

/// The mean over b's length of what a from `start` on and b from each shift on differ by, against
/// the best; what lies beyond the end of either counts as 0.
void write_shifts(OutputFile& output, const Signals& signals, int start, const OffsetMatch& offset,
                  const ScaleMatch& scale, std::size_t samples) {
  const auto value_at = [](const std::vector<float>& values, std::size_t i) {
    return i < values.size() ? static_cast<double>(values[i]) : 0.0;
  };
  const auto first = static_cast<std::size_t>(start);
  for (std::size_t shift = 0; shift < samples; ++shift) {
    double sum = 0;
    for (std::size_t i = 0; i < samples; ++i) {
      sum +=
          std::fabs(value_at(signals.a, first + i) - scale.scale * value_at(signals.b, shift + i));
    }
    const double excess = sum / static_cast<double>(samples) - scale.mean;
    write_sample(output, as_int(shift), excess);
    if (first + shift == static_cast<std::size_t>(offset.offset)) {
      say("best val3=%f j1=%d offset=%d\n", excess, as_int(shift), offset.offset);
    }
  }
  say("done\n");
}

struct Results {
  float* mean;
  int* offset;
  float* scale;
};

std::optional<OffsetMatch> find_offset(Signals& signals, int start, double scale) {
  const double mean_a = normalise(signals.a);
  const double mean_b = normalise(signals.b);
  say("my_correlation, got ave1=%f ave2=%f counter1=%d counter2=%d\n", mean_a, mean_b,
      as_int(signals.a.size()), as_int(signals.b.size()));
  return best_offset(signals.a, signals.b, scale, start);
}

void write_match(const Signals& signals, const OffsetMatch& offset, OutputFile& output,
                 const std::string& path3, const Results& results, int mode, int start) {
  say("offset_best=%d ave3min=%f samples=%d\n", offset.offset, offset.mean,
      as_int(offset.last_samples));
  const auto from_offset = std::span(signals.a).subspan(static_cast<std::size_t>(offset.offset));
  const std::size_t samples = std::min(from_offset.size(), signals.b.size());
  const std::span<const float> a = from_offset.first(samples);
  const std::span<const float> b = std::span(signals.b).first(samples);
  const ScaleMatch scale = best_scale(a, b, static_cast<double>(*results.scale));
  say("scale_best=%f ave3min=%f offset=%d\n", scale.scale, scale.mean, offset.offset);
  say("counter1=%d counter2=%d counter=%d\n", as_int(signals.a.size()), as_int(signals.b.size()),
      as_int(samples));
  *results.mean = static_cast<float>(scale.mean);
  *results.offset = -offset.offset;
  *results.scale = static_cast<float>(scale.scale);
  if (mode == mode_shifts) {
    write_shifts(output, signals, start, offset, scale, samples);
  } else {
    write_residual(output, path3, a, b, scale.scale);
  }
}

}  // namespace

int my_correlation(const std::string& path1, const std::string& path2, const std::string& path3,
                   float* ave3_out, int* offset_out, float* scale_io, int mode, int start_offset,
                   const std::string& samples) try {
  say("in my_correlation, start_offset=%d\n", start_offset);
  if (start_offset < 0) {
    say("start_offset must be nonnegative\n");
    return 0;
  }
  std::optional<Signals> signals = read_signals(path1, path2, sample_budget(samples));
  if (!signals) return 1;
  OutputFile output(path3);
  if (!output) return 1;
  const Results results = {ave3_out, offset_out, scale_io};
  if (!are_long_enough(*signals)) return refuse(output, path1, path2, path3);
  const auto offset = find_offset(*signals, start_offset, static_cast<double>(*scale_io));
  if (!offset) return refuse(output, path1, path2, path3);
  write_match(*signals, *offset, output, path3, results, mode, start_offset);
  return output.finish() ? 0 : 1;
} catch (const std::bad_alloc&) {
  return 1;
}

}  // namespace torve
