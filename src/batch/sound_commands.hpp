// The commands that take sound files of any kind, and those that measure signals.
#pragma once

#include "batch/request.hpp"

namespace torve {

/// As Command::run (commands.hpp).
[[nodiscard]] int run_import(const Request& request);
[[nodiscard]] int run_export(const Request& request);

}  // namespace torve
