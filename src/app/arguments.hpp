// The command line of the workbench, read before anything is opened.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace torve {

/// What the user named: signals (.res) and spectra (.spe) for the panes, a diagram (.vob).
struct StartFiles {
  std::vector<std::string> panes;  // three at most
  std::string diagram;             // or none
  int scale = 0;                   // for ask_for_scale
};

/// Reads the words behind the program's name. Nothing if there is no window to be opened: then the
/// help, the version or what is wrong has been printed, and `*status` is that of the process: 0, 1
/// for wrong usage, 2 if standard output does not take it.
[[nodiscard]] std::optional<StartFiles> read_arguments(std::span<char* const> words, int* status);

}  // namespace torve
