#include "batch/status.hpp"

#include <cstdio>

namespace torve {

int status_of(const Request& request, Outcome outcome) {
  if (!outcome.kept_as.empty()) {
    std::fprintf(stderr, "torve-batch: kept as %s\n", outcome.kept_as.c_str());
  }
  if (outcome.is_done()) return exit_done;
  outcome.name = shown_name(outcome.name);
  std::fprintf(stderr, "torve-batch: %s: %s\n", request.command, sentence(outcome).c_str());
  return outcome.cause == Cause::out_of_range ? exit_usage : exit_failed;
}

int status_of(const Request& request, const Outcome& outcome, OutputName& output) {
  const int status = status_of(request, outcome);
  return status == exit_done ? status_of(request, output.deliver()) : status;
}

const Outcome& first_failure(const InputName& input, const OutputName& output) {
  return input.outcome().is_done() ? output.outcome() : input.outcome();
}

}  // namespace torve
