// How loud a signal is.
#pragma once

#include <cstdint>
#include <string>

#include "base/outcome.hpp"

namespace torve {

/// Sums are double, in the order of the samples.
struct Level {
  std::int64_t samples = 0;
  double mean = 0;
  double rms = 0;   // root of the mean of the squares, the mean included
  double peak = 0;  // largest absolute value
};

/// The level of a sample file of any length from round(start x 44100) to round(end x 44100) - 1; an
/// `end` below 0 is the end of the file. Cause::out_of_range for times that the file does not have.
Outcome measure_level(const std::string& res_name, double start_seconds, double end_seconds,
                      Level* level);

/// 20 log10 of a value, in dB of full scale, which is 1; minus infinity for 0.
[[nodiscard]] double decibels(double value);

}  // namespace torve
