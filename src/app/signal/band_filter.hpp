// Filters that rebuild a time signal from the spectrum in the work buffer.
#pragma once

#include <string>

#include "base/outcome.hpp"

namespace torve {

enum FilterMode { filter_band_pass = 0, filter_out_of_band = 1 };

/// Rebuilds as many samples as the last spectrum was computed from, out of its bins between the two
/// frequencies, both included (band pass), or out of the mean and all other bins below K, those
/// above K/2 as the buffer holds them (out of band). The result is the signal's part of the band
/// times 2 x 44100 / K. Not done if no spectrum was computed yet or the output cannot be written.
Outcome filter_stored_spectrum(const std::string& output, int low_hz, int high_hz, FilterMode mode);

/// The same, to `band_out` for filter_band_pass and else to `rest_out`; 0, or 1 if it is not done.
int filter_spectrum(const std::string& band_out, const std::string& rest_out, int low_hz,
                    int high_hz, int mode);

}  // namespace torve
