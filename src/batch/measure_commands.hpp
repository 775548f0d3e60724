// The commands that measure signals: what they find goes to standard output, a line "name value"
// each.
#pragma once

#include "batch/request.hpp"

namespace torve {

/// As Command::run (commands.hpp).
[[nodiscard]] int run_delay(const Request& request);
[[nodiscard]] int run_level(const Request& request);

/// run_spectrum with --average.
[[nodiscard]] int run_average_spectrum(const Request& request);

}  // namespace torve
