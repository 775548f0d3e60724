// The matching of two files, step by step.

#include <algorithm>
#include <cmath>
#include <new>

#include "app/signal/matching.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/say.hpp"
#include "base/files.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr int mode_shifts = 0;
constexpr double offset_part = 0.9;  // of the work: to find the offset

struct Signals {
  std::vector<float> a;
  std::vector<float> b;
};

int as_int(std::size_t count) {
  return static_cast<int>(count);
}

bool are_long_enough(const Signals& signals) {
  return std::min(signals.a.size(), signals.b.size()) >= least_match_samples;
}

/// Leaves no earlier result that would pass for this one's; but an input stays.
Outcome refuse(OutputFile& output, Cause cause, const std::string& name,
               const MatchRequest& request) {
  const bool is_input =
      same_file(request.path1, request.path3) || same_file(request.path2, request.path3);
  return is_input ? Outcome{.cause = cause, .name = name} : output.refuse(cause, name);
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
  const PartOfWork shifts(offset_part, 1);
  for (std::size_t shift = 0; shift < samples; ++shift) {
    tell_done(static_cast<double>(shift) / static_cast<double>(samples));
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

std::optional<OffsetMatch> find_offset(Signals& signals, int start, double scale) {
  const double mean_a = normalise(signals.a);
  const double mean_b = normalise(signals.b);
  say("my_correlation, got ave1=%f ave2=%f counter1=%d counter2=%d\n", mean_a, mean_b,
      as_int(signals.a.size()), as_int(signals.b.size()));
  const PartOfWork offsets(0, offset_part);
  return best_offset(signals.a, signals.b, scale, start);
}

double mean_magnitude(std::span<const float> values) {
  double sum = 0;
  for (const float value : values)
    sum += std::fabs(static_cast<double>(value));
  return sum / static_cast<double>(values.size());
}

// Offset 0 is the end of what there is, not of what was tried.
bool is_last_offset(int offset, int start) {
  return offset == start + offset_reach - 1 || (offset == start - offset_reach && offset > 0);
}

Match write_match(const Signals& signals, const OffsetMatch& offset, OutputFile& output,
                  const MatchRequest& request) {
  say("offset_best=%d ave3min=%f samples=%d\n", offset.offset, offset.mean,
      as_int(offset.last_samples));
  const auto from_offset = std::span(signals.a).subspan(static_cast<std::size_t>(offset.offset));
  const std::size_t samples = std::min(from_offset.size(), signals.b.size());
  const std::span<const float> a = from_offset.first(samples);
  const std::span<const float> b = std::span(signals.b).first(samples);
  const auto start_scale = static_cast<double>(request.scale);
  const ScaleMatch scale = best_scale(a, b, start_scale);
  say("scale_best=%f ave3min=%f offset=%d\n", scale.scale, scale.mean, offset.offset);
  say("counter1=%d counter2=%d counter=%d\n", as_int(signals.a.size()), as_int(signals.b.size()),
      as_int(samples));
  if (request.mode == mode_shifts) {
    write_shifts(output, signals, request.start, offset, scale, samples);
  } else {
    write_residual(output, request.path3, a, b, scale.scale);
  }
  constexpr double almost = (scale_reach - 0.5) / scale_steps;
  return {.offset = offset.offset,
          .scale = static_cast<float>(scale.scale),
          .mean = static_cast<float>(scale.mean),
          .mean_without = static_cast<float>(mean_magnitude(a)),
          .offset_is_last = is_last_offset(offset.offset, request.start),
          .scale_is_last = std::fabs(scale.scale - start_scale) > almost};
}

Outcome match(const MatchRequest& request, Match* found) {
  say("in my_correlation, start_offset=%d\n", request.start);
  if (request.start < 0) {
    say("start_offset must be nonnegative\n");
    return {.cause = Cause::negative_start};
  }
  const int budget = sample_budget(request.samples);
  auto a = read_sample_file(request.path1, budget, request.range);
  if (!a) return input_failure(request.path1);
  auto b = read_sample_file(request.path2, budget, request.range);
  if (!b) return input_failure(request.path2);
  Signals signals = {std::move(*a), std::move(*b)};
  OutputFile output(request.path3);
  if (!output) return output.outcome();
  if (!are_long_enough(signals)) {
    const bool first_is_short = signals.a.size() < least_match_samples;
    return refuse(output, Cause::too_few_samples, first_is_short ? request.path1 : request.path2,
                  request);
  }
  const auto offset = find_offset(signals, request.start, static_cast<double>(request.scale));
  if (!offset) return refuse(output, Cause::no_match, request.path2, request);
  *found = write_match(signals, *offset, output, request);
  static_cast<void>(output.finish());
  return output.outcome();
}

}  // namespace

Outcome match_files(const MatchRequest& request, Match* found) try {
  return watched(request.path3, [&] { return match(request, found); });
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

int my_correlation(const std::string& path1, const std::string& path2, const std::string& path3,
                   float* ave3_out, int* offset_out, float* scale_io, int mode, int start_offset,
                   const std::string& samples) {
  Match found = {.offset = -*offset_out, .scale = *scale_io, .mean = *ave3_out};
  const Outcome outcome = match_files({.path1 = path1,
                                       .path2 = path2,
                                       .path3 = path3,
                                       .start = start_offset,
                                       .scale = *scale_io,
                                       .samples = samples,
                                       .mode = mode},
                                      &found);
  *ave3_out = found.mean;
  *offset_out = -found.offset;
  *scale_io = found.scale;
  return outcome.is_done() || outcome.cause == Cause::negative_start ? 0 : 1;
}

}  // namespace torve
