// Going back to a diagram that was kept.
#pragma once

#include <span>

#include "diagram/model/kept_diagram.hpp"

namespace torve {

/// Makes the diagram what was kept: figures are told apart by their serial numbers. Those that are
/// not placed yet stay, at the top. The canvas follows; property menus of figures that go are
/// closed.
void restore_diagram(std::span<const KeptFigure* const> kept);
void restore_diagram(const KeptDiagram& kept);

}  // namespace torve
