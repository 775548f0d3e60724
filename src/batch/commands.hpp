// The commands of torve-batch: the computing procedures under names of a command line.
#pragma once

#include <cstddef>
#include <span>

#include "base/enum_flags.hpp"
#include "batch/request.hpp"

namespace torve {

struct Command {
  const char* name;
  const char* parameters;  // as shown to the user; those in brackets may be left out
  const char* summary;
  std::size_t least_words;
  std::size_t most_words;
  Options options;
  /// Runs the command on its words, as many as allowed. Returns an ExitStatus (status.hpp);
  /// exit_usage without having done anything if a word is no number where one is needed, or selects
  /// nothing. What went wrong otherwise has been said on standard error.
  int (*run)(const Request& request);
};

/// All commands, in the order of the help text.
[[nodiscard]] std::span<const Command> all_commands();

}  // namespace torve
