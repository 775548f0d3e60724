// The command that reads a diagram as a queueing network.
#pragma once

#include "batch/request.hpp"

namespace torve {

/// As Command::run (commands.hpp). The status is exit_failed, too, when something is wrong with the
/// network.
[[nodiscard]] int run_model(const Request& request);

}  // namespace torve
