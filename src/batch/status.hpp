// What the commands of torve-batch have in common: their inputs, and the status they end with.
#pragma once

#include <string>

#include "base/outcome.hpp"
#include "batch/request.hpp"
#include "batch/streams.hpp"

namespace torve {

/// What main returns.
enum ExitStatus { exit_done = 0, exit_usage = 1, exit_failed = 2 };

/// Says on standard error what has been kept and what went wrong; the status. A part that a file
/// does not have is wrong usage.
[[nodiscard]] int status_of(const Request& request, Outcome outcome);

/// The status of a procedure that has run and written `output`: only then can that be delivered.
[[nodiscard]] int status_of(const Request& request, const Outcome& outcome, OutputName& output);

/// Why a command cannot begin; done if it can.
[[nodiscard]] const Outcome& first_failure(const InputName& input, const OutputName& output);

}  // namespace torve
