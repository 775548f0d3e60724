// Where, and how much louder, a second signal lies in a first one.
//
// The measure is the mean absolute difference: for the offset j and the scale s, the mean over i of
// |a(j + i) - s b(i)|. Sums are double, in index order.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/signal/sample_file.hpp"
#include "base/outcome.hpp"

namespace torve {

/// The fewest samples of each signal that are matched.
inline constexpr std::size_t least_match_samples = 10000;

/// Offsets are tried from this many samples before the start to one less behind it.
inline constexpr int offset_reach = 1102;

/// Scales are tried from start - scale_reach / scale_steps to start + scale_reach / scale_steps.
inline constexpr int scale_reach = 1000;
inline constexpr double scale_steps = 5000.0;

/// Only means below this count as a match.
inline constexpr double worst_mean = 1000000;

struct OffsetMatch {
  int offset;
  double mean;
  std::size_t last_samples;  // how many samples the last offset tried had
};

struct ScaleMatch {
  double scale;
  double mean;
};

/// Divides by the mean absolute value, which is returned.
double normalise(std::span<float> values);

/// The first offset of the smallest mean around `start`, 0 or more. The samples that count end
/// where either signal does; offsets at which none are left are not tried. Nothing if no mean is
/// below worst_mean.
[[nodiscard]] std::optional<OffsetMatch> best_offset(std::span<const float> a,
                                                     std::span<const float> b, double scale,
                                                     int start);

/// The first scale of the smallest mean around `start` over the samples of b; a has as many. The
/// mean at `start` is below worst_mean.
[[nodiscard]] ScaleMatch best_scale(std::span<const float> a, std::span<const float> b,
                                    double start);

/// What is matched, and how.
struct MatchRequest {
  std::string path1, path2;     // the second signal is looked for in the first
  std::string path3;            // the output
  int start = 0;                // sample around which offsets are tried
  float scale = 1;              // around which scales are tried
  std::string samples = "all";  // "all" or a decimal count per file
  int mode = 1;                 // 0: path3 receives how much worse each shift is, instead
  SampleRange range = {};       // of both files
};

/// What was found.
struct Match {
  int offset = 0;
  float scale = 0;
  float mean = 0;               // mean absolute difference there
  float mean_without = 0;       // the same for the scale 0
  bool offset_is_last = false;  // the best of those tried lies at the end of their range,
  bool scale_is_last = false;   // so that there may be better ones
};

/// Matches two sample files, both divided by their mean absolute value, and writes what is left to
/// `path3`: the first from the offset on less the scaled second, without its mean, its largest
/// absolute value scaled to one (not-a-number where nothing is left). Not done for a negative
/// start; if a file cannot be opened or written, a signal has less than least_match_samples
/// samples, or no offset qualifies. In the last two cases the output is empty, unless it is an
/// input, and what was there is kept. `found` is stored only once it is known.
Outcome match_files(const MatchRequest& request, Match* found);

/// The same, with minus the offset. 0, also for a negative start_offset, or 1 if it is not done;
/// `scale_io` is where the scales start and the result.
int my_correlation(const std::string& path1, const std::string& path2, const std::string& path3,
                   float* ave3_out, int* offset_out, float* scale_io, int mode, int start_offset,
                   const std::string& samples);

}  // namespace torve
