// A figure as a file: torve-figure draws it, this process writes it.
#pragma once

#include <string>
#include <string_view>

#include "base/outcome.hpp"
#include "figure/request/figure_request.hpp"

namespace torve {

/// The name under which an input is what `make_figure` is given in memory.
inline constexpr const char* figure_input_in_memory = "/dev/fd/0";

/// Has the program beside this one draw the figure and writes it to `output`, which stays as it was
/// when the figure does not come about. Waits for it. The program is run by its path, without a
/// shell, and sees no file of this process but `memory`, the bytes of the input of that name.
Outcome make_figure(FigureRequest request, const std::string& output, std::string_view memory = {});

}  // namespace torve
