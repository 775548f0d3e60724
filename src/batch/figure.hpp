// The command that makes figures.
#pragma once

#include "batch/request.hpp"

namespace torve {

/// As Command::run (commands.hpp).
[[nodiscard]] int run_figure(const Request& request);

}  // namespace torve
