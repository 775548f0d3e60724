// The command that does without a window what a line of a tool does.
#pragma once

#include <initializer_list>
#include <string>

#include "app/plot/pane_view.hpp"

namespace torve {

/// "torve-batch" and the words, each as a shell has to be given it.
[[nodiscard]] std::string batch_line(std::initializer_list<std::string> words);

/// The one that draws a view as pane 0 .. 2 does, into the file `output`.
[[nodiscard]] std::string batch_plot_line(const PaneView& view, int pane,
                                          const std::string& output);

/// A number as a command takes it: the shortest text that means it.
[[nodiscard]] std::string batch_number(double value);

/// "plot1.gif" and so on: what a line that draws into pane 0 .. 2 has no name for.
[[nodiscard]] std::string picture_name(int pane);

}  // namespace torve
